// The exported functions: each takes the plain C arguments, builds the view and calls the inside.
#include <algorithm>
#include <atomic>
#include <cstring>

#include "core/calendar.hpp"
#include "core/checksum.hpp"
#include "core/classifier.hpp"
#include "core/datablock.hpp"
#include "core/datalink.hpp"
#include "core/labelled.hpp"
#include "core/lines.hpp"
#include "core/protocol_names.hpp"
#include "ipv4/arp.hpp"
#include "ipv4/ipv4.hpp"
#include "ipv6/icmpv6.hpp"
#include "ipv6/ip6_address.hpp"
#include "ipv6/ipv6.hpp"
#include "netware/ipx.hpp"
#include "pppoe/pppoe.hpp"
#include "wirelines.h"

namespace {

using wirelines::Bytes;

std::atomic<uint32_t> analyze_info[5];

wirelines::DecodeState& fresh_state() {
  wirelines::DecodeState& s = wirelines::state();
  s.begin();
  return s;
}

void copy_text(char* out, const wirelines::TextBuffer& text) {
  std::memcpy(out, text.bytes, text.length + 1);
}

// What AddString would have returned, or 0 when there was no buffer to give it.
int32_t append_result(uint32_t lines_before, bool made) {
  return made || wirelines::state().lineCount == lines_before ? 0 : 1;
}

}  // namespace

int32_t LineListSetAtGrow(LineList* list, int32_t index, void* element) {
  return wirelines::list_set(*list, index, element) ? 0 : 1;
}

int32_t LineListSetSize(LineList* list, int32_t newSize, int32_t growBy) {
  return wirelines::list_resize(*list, newSize, growBy) ? 0 : 1;
}

char* GetLineBuf() {
  fresh_state();
  return wirelines::take_line();
}

int32_t AddString(LineList* list, char* text, uint32_t protocolCode, uint32_t level, uint32_t startOffset,
                  uint32_t endOffset, uint32_t styleIndex, uint32_t styleGroup) {
  fresh_state();
  return wirelines::append_line(*list, text, {protocolCode, level, startOffset, endOffset, styleIndex, styleGroup}) ? 0
                                                                                                                    : 1;
}

void DelDspBuffer(LineList* list) {
  wirelines::list_free_lines(*list);
}

int32_t NewLine(LineList* list) {
  const uint32_t before = fresh_state().lineCount;
  return append_result(before, wirelines::add_blank(*list));
}

int32_t DspTitle(LineList* list, const char* text, uint32_t protocolCode, uint32_t level, uint32_t startOffset,
                 uint32_t endOffset, uint32_t styleIndex, uint32_t styleGroup) {
  const uint32_t before = fresh_state().lineCount;
  return append_result(
      before, wirelines::add_title(*list, text, {protocolCode, level, startOffset, endOffset, styleIndex, styleGroup}));
}

const char* AddParenthesis(const char* s) {
  if (*s == 0) return s;
  auto& buffer = wirelines::state().parenthesis;
  const std::size_t length = std::min(std::strlen(s), sizeof buffer - 3);
  buffer[0] = '(';
  std::memmove(buffer + 1, s, length);
  buffer[1 + length] = ')';
  buffer[2 + length] = 0;
  return buffer;
}

int32_t DspTitleString(LineList* list, const char* label, const char* string, int32_t maxBytes, uint32_t protocolCode,
                       uint32_t level, uint32_t startOffset, uint32_t styleIndex, uint32_t styleGroup) {
  fresh_state();
  return wirelines::DspTitleString(*list, label, Bytes(reinterpret_cast<const uint8_t*>(string), maxBytes), maxBytes,
                                   {protocolCode, level, startOffset, startOffset, styleIndex, styleGroup});
}

void SetAnalyzeInfo(const uint32_t info[5]) {
  std::copy_n(info, 5, analyze_info);
}

void GetAnalyzeInfo(uint32_t info[5]) {
  std::copy_n(analyze_info, 5, info);
}

uint32_t AnalyzeOutput(LineList* list, const uint8_t* frame, int32_t length, uint32_t timeWord0, uint32_t timeWord1,
                       uint32_t charSetMode) {
  return wirelines::FrameAnalyze(*list, Bytes(frame, length), timeWord0, timeWord1, charSetMode);
}

uint32_t HexOutput(LineList* list, const uint8_t* data, int32_t length, uint32_t charSetMode) {
  wirelines::state().reset(charSetMode);
  wirelines::hex_dump(*list, Bytes(data, length), {});
  return wirelines::state().topLineIndex;
}

void HexDump(LineList* list, const uint8_t* data, int32_t length, uint32_t protocolCode, uint32_t level,
             uint32_t startOffset, uint32_t endOffset, uint32_t styleIndex, uint32_t styleGroup) {
  fresh_state();
  wirelines::hex_dump(*list, Bytes(data, length),
                      {protocolCode, level, startOffset, endOffset, styleIndex, styleGroup});
}

void UnKnownProtocol(LineList* list, const uint8_t* data, int32_t length) {
  fresh_state();
  wirelines::remainder(*list, Bytes(data, length));
}

int32_t CheckFrameType(const uint8_t* frame, uint8_t* ssapOut, uint8_t* dsapOut) {
  const auto kind = wirelines::CheckFrameType(Bytes(frame, 17));
  if (kind != wirelines::FrameKind::kEthernetII) {
    *ssapOut = frame[15];
    *dsapOut = frame[14];
  }
  return static_cast<int32_t>(kind);
}

int32_t GetProtocolType(const uint8_t* frame, uint16_t* typeOut) {
  return wirelines::GetProtocolType(Bytes(frame, 22), *typeOut) ? 1 : 0;
}

const char* TypeToProtocolName(uint16_t etherType) {
  return wirelines::TypeToProtocolName(etherType).data();
}

void IpAnalyze(LineList* list, const uint8_t* data, int32_t length) {
  fresh_state();
  wirelines::IpAnalyze(*list, Bytes(data, length));
}

void ArpAnalyze(LineList* list, const uint8_t* data, int32_t length) {
  fresh_state();
  wirelines::ArpAnalyze(*list, Bytes(data, length));
}

void Ip6Analyze(LineList* list, const uint8_t* data, int32_t length) {
  fresh_state();
  wirelines::Ip6Analyze(*list, Bytes(data, length));
}

void FormatIp6Addr(char* out, const uint8_t* address) {
  copy_text(out, wirelines::FormatIp6Addr(Bytes(address, 16)));
}

void FormatIp6AddrSimple(char* out, const uint8_t* address) {
  copy_text(out, wirelines::FormatIp6AddrSimple(Bytes(address, 16)));
}

int32_t FormatIp6AddrSimple2(char* out, const uint8_t* address) {
  copy_text(out, wirelines::FormatIp6AddrSimple2(Bytes(address, 16)));
  return 0;
}

uint32_t IpCheckSum(const uint8_t* data, int32_t length) {
  return wirelines::IpCheckSum(Bytes(data, length));
}

uint32_t CulUdpChksum(const uint8_t* message, int32_t length, const uint8_t* pseudoHeader, int32_t pseudoLength) {
  return wirelines::CulUdpChksum(Bytes(message, length), Bytes(pseudoHeader, pseudoLength));
}

void IpPsuadoHeder(const uint8_t* header, uint8_t* pseudoOut) {
  const auto pseudo = wirelines::IpPsuadoHeder(Bytes(header, 20));
  for (uint32_t i = 0; i < 8; ++i) pseudoOut[i] = pseudo.addresses.u8(i);
  pseudoOut[8] = 0;
  pseudoOut[9] = pseudo.protocol;
  pseudoOut[10] = static_cast<uint8_t>(pseudo.upper_length >> 8);
  pseudoOut[11] = static_cast<uint8_t>(pseudo.upper_length);
}

void CheckPacket(const uint8_t* frame, int32_t length, PacketSummary* summary) {
  wirelines::CheckPacket(Bytes(frame, length), *summary);
}

void CheckIp(const uint8_t* header, int32_t length, PacketSummary* summary) {
  wirelines::CheckIp(Bytes(header, length), *summary);
}

void CheckIpV6(const uint8_t* header, int32_t length, PacketSummary* summary) {
  wirelines::CheckIpV6(Bytes(header, length), *summary);
}

void CheckIpx(const uint8_t* header, int32_t length, PacketSummary* summary) {
  wirelines::CheckIpx(Bytes(header, length), *summary);
}

void CheckPppSession(const uint8_t* header, int32_t length, PacketSummary* summary) {
  wirelines::CheckPppSession(Bytes(header, length), *summary);
}

const char* IpProtocolToName(uint8_t protocol) {
  return wirelines::IpProtocolToName(protocol).data();
}

const char* PortToName(uint16_t port, uint8_t protocol) {
  return wirelines::PortToName(port, protocol).data();
}

const char* NwPacketToName(uint8_t packetType) {
  return wirelines::NwPacketToName(packetType).data();
}

const char* NwSocketToName(uint16_t socket) {
  return wirelines::NwSocketToName(socket).data();
}

const char* IcmpTypeInfoToName(uint8_t type) {
  return wirelines::IcmpTypeInfoToName(type).data();
}

void IpxAnalyze(LineList* list, const uint8_t* data, int32_t length) {
  fresh_state();
  wirelines::IpxAnalyze(*list, Bytes(data, length));
}

const char* IcmpV6TypeInfoToName(uint8_t type) {
  return wirelines::IcmpV6TypeInfoToName(type).data();
}

void PPPoEDiscoveryAnalyze(LineList* list, const uint8_t* data, int32_t length) {
  fresh_state();
  wirelines::PPPoEDiscoveryAnalyze(*list, Bytes(data, length));
}

void PPPSessionAnalyze(LineList* list, const uint8_t* data, int32_t length) {
  fresh_state();
  wirelines::PPPSessionAnalyze(*list, Bytes(data, length));
}

const char* PPPSessionToName(uint8_t code) {
  return wirelines::PPPSessionToName(code).data();
}

void gdate_daytodmy(uint32_t dayNumber, uint32_t* yearOut, uint32_t* monthOut, uint32_t* dayOut) {
  const wirelines::Date date = wirelines::date_of_day(dayNumber);
  if (yearOut != nullptr) *yearOut = date.year;
  if (monthOut != nullptr) *monthOut = date.month;
  if (dayOut != nullptr) *dayOut = date.day;
}

uint32_t gdate_dmytoday(uint32_t year, uint32_t month, uint32_t day) {
  return wirelines::day_of_date({year, month, day});
}

uint32_t gdate_monthdays(uint32_t month, uint32_t year) {
  return wirelines::days_of_month(month, year);
}

uint32_t gdate_weekday(uint32_t dayNumber) {
  return wirelines::weekday_of_day(dayNumber);
}

const char* wirelines_version() {
  return WIRELINES_VERSION;
}
