// A frame from its first byte: the frame header, then the data link, then the network layer that its type names.
#include "core/datalink.hpp"

#include "core/calendar.hpp"
#include "core/datablock.hpp"
#include "core/nicknames.hpp"
#include "core/printers.hpp"
#include "core/protocol_names.hpp"
#include "core/section.hpp"
#include "ipv4/arp.hpp"
#include "ipv4/ipv4.hpp"
#include "ipv6/ipv6.hpp"
#include "netware/ipx.hpp"
#include "netware/netbios_frames.hpp"
#include "pppoe/pppoe.hpp"

namespace wirelines {

namespace {

constexpr Layer kFrame = layer(10, 2, 9);
constexpr Layer kDataLink = layer(12, 4, 9);

constexpr uint32_t kEthernetHeader = 14;
constexpr uint32_t kLlcHeader = 17;
constexpr uint32_t kLlcInformationHeader = 18;  // I format: two control bytes
constexpr uint32_t kSnapHeader = 22;

constexpr uint8_t kControlUI = 3;

// DSAP and SSAP.
constexpr uint16_t kSapsIp = 0x0606;
constexpr uint16_t kSapsIpx = 0xE0E0;
constexpr uint16_t kSapsNetBios = 0xF0F0;

constexpr uint32_t kLeastSeconds = 0x100000;  // above it, the time word counts seconds since 1970

void time_line(Section& s, uint32_t time_word0, uint32_t time_word1) {
  constexpr Range kNoBytes = at(0xFFFFFFFF);
  if (time_word0 > kLeastSeconds) {
    const std::tm* const t = local_time(time_word0);
    if (t == nullptr) return;
    s.line(kNoBytes, "[Time] %0.2u/%0.2u/%u %0.2u:%0.2u:%0.2u.%0.6u", t->tm_mon + 1, t->tm_mday, t->tm_year + 1900,
           t->tm_hour, t->tm_min, t->tm_sec, time_word1);
    return;
  }
  // Kept: the one word gives the date as a day number and the time of day in milliseconds.
  const Date date = date_of_day(time_word1);
  s.line(at(0), "[Time] %0.2u/%0.2u/%u %0.2u:%0.2u:%0.2u.%0.3u", date.month, date.day, date.year + 1996,
         time_word1 / 3600000 % 24, time_word1 % 3600000 / 60000, time_word1 % 60000 / 1000, time_word1 % 1000);
}

// Hands on by EtherType. The one place where a network layer of Ethernet II and SNAP is registered.
void dispatch_type(LineList& list, uint16_t type, Bytes payload) {
  switch (type) {
    case 0x0800: IpAnalyze(list, payload); break;
    case 0x0806:
    case 0x8035: ArpAnalyze(list, payload); break;
    case 0x8137: IpxAnalyze(list, payload); break;
    case 0x86DD: Ip6Analyze(list, payload); break;
    case 0x8863: PPPoEDiscoveryAnalyze(list, payload); break;
    case 0x8864: PPPSessionAnalyze(list, payload); break;
    default: remainder(list, payload); break;
  }
}

void raw_8023_lines(LineList& list, Bytes frame) {
  Section s(list, kDataLink, Section::Mark::kNoResult);
  s.title(at(12, 13), "Data Link [IEEE802.3]");
  s.line(at(12, 13), "[Frame Type] IEEE802.3");
  DspFrameLength(list, frame.be16(12), s.field(at(12, 13)));
  if (!s || frame.size() < static_cast<int32_t>(kEthernetHeader)) return;

  advance(kEthernetHeader);
  IpxAnalyze(list, frame.from(kEthernetHeader));  // whose first bytes, 0xFFFF, made the frame a raw one
}

void llc_lines(LineList& list, Bytes frame) {
  const uint8_t dsap = frame.u8(14);
  const uint8_t ssap = frame.u8(15);
  const uint8_t control = frame.u8(16);

  Section s(list, kDataLink, Section::Mark::kNoResult);
  s.title(at(12, 16), "Data Link [IEEE802.2(LLC)]");
  s.line(at(12, 16), "[Frame Type] IEEE802.2(LLC)");
  DspFrameLength(list, frame.be16(12), s.field(at(12, 13)));

  std::string_view name = SapPairToName(dsap, ssap);
  Nickname nickname;
  if (name.empty()) {
    const TextBuffer dsap_text("%0.2X", dsap);
    const TextBuffer ssap_text("%0.2X", ssap);
    nickname = sap_nickname(dsap_text.bytes, ssap_text.bytes);
    name = nickname;
  }
  if (control != kControlUI && control % 2 != 0) name = "";  // an S or U format carries nothing to be named
  s.line(at(14, 16), "[LLC] [DSAP] 0x%0.2X [SSAP] 0x%0.2X [Control] 0x%0.2X %s", dsap, ssap, control, parens(name));
  if (!s || frame.size() < static_cast<int32_t>(kLlcHeader)) return;

  const uint16_t saps = frame.be16(14);
  if (control % 2 == 0 && saps == kSapsNetBios) {
    advance(kLlcInformationHeader);
    return NetBiosSessionFrameAnalyze(list, frame.from(kLlcInformationHeader));
  }
  advance(kLlcHeader);
  const Bytes payload = frame.from(kLlcHeader);
  if (control != kControlUI) return remainder(list, payload);
  switch (saps) {
    case kSapsIp: IpAnalyze(list, payload); break;
    case kSapsIpx: IpxAnalyze(list, payload); break;
    case kSapsNetBios: NetBiosNameFrameAnalyze(list, payload); break;
    default: remainder(list, payload); break;
  }
}

void snap_lines(LineList& list, Bytes frame) {
  const uint16_t type = frame.be16(20);

  Section s(list, kDataLink, Section::Mark::kNoResult);
  s.title(at(12, 21), "Data Link [IEEE802.2(SNAP)]");
  s.line(at(12, 21), "[Frame Type] IEEE802.2(SNAP)");
  s.line(at(17, 19), "[Organaization Code] 0x%0.2X 0x%0.2X 0x%0.2X", frame.u8(17), frame.u8(18), frame.u8(19));
  s.line(at(20, 21), "[Protocol Type] 0x%0.4X %s", type, Parens(TypeName(type)));
  if (!s || frame.size() < static_cast<int32_t>(kSnapHeader)) return;

  advance(kSnapHeader);
  dispatch_type(list, type, frame.from(kSnapHeader));
}

void ethernet_ii_lines(LineList& list, Bytes frame) {
  const uint16_t type = frame.be16(12);

  Section s(list, kDataLink, Section::Mark::kNoResult);
  s.title(at(12, 13), "Data Link [Ethernet_II]");
  s.line(at(12, 13), "[Frame Type] Ethernet_II");
  s.line(at(12, 13), "[Protocol Type] 0x%0.4X %s", type, Parens(TypeName(type)));
  if (!s || frame.size() < static_cast<int32_t>(kEthernetHeader)) return;

  advance(kEthernetHeader);
  dispatch_type(list, type, frame.from(kEthernetHeader));
}

}  // namespace

FrameKind CheckFrameType(const Bytes& frame) {
  if (frame.be16(12) > 1500) return FrameKind::kEthernetII;
  const uint8_t dsap = frame.u8(14);
  const uint8_t ssap = frame.u8(15);
  const uint8_t control = frame.u8(16);
  if (dsap == 0xFF && ssap == dsap && control != kControlUI) return FrameKind::kRaw8023;
  if (control == kControlUI) return dsap == 0xAA && ssap == dsap ? FrameKind::kSnap : FrameKind::kLlc;
  return control % 2 != 0 ? FrameKind::kLlcSU : FrameKind::kLlc;
}

bool GetProtocolType(Bytes frame, uint16_t& type) {
  if (frame.be16(12) > 1500) {
    type = frame.be16(12);
  } else if (frame.u8(16) != kControlUI) {
    type = frame.be16(14);
  } else if (frame.be16(14) == 0xAAAA) {
    type = frame.be16(20);
  } else {
    return false;
  }
  return true;
}

uint32_t FrameAnalyze(LineList& list, Bytes frame, uint32_t time_word0, uint32_t time_word1, uint32_t charset_mode) {
  state().reset(charset_mode);

  Section s(list, kFrame, Section::Mark::kInside);
  s.title(at(0, 11), "MAC [%0.2X%0.2X%0.2X%0.2X%0.2X%0.2X] --> [%0.2X%0.2X%0.2X%0.2X%0.2X%0.2X]", frame.u8(6),
          frame.u8(7), frame.u8(8), frame.u8(9), frame.u8(10), frame.u8(11), frame.u8(0), frame.u8(1), frame.u8(2),
          frame.u8(3), frame.u8(4), frame.u8(5));
  time_line(s, time_word0, time_word1);
  s.value(at(0), "[Length] %u (0x%0.4X) byte(s)", static_cast<uint32_t>(frame.size()));
  const TextBuffer destination = mac_text(frame.sub(0, 6));
  const TextBuffer source = mac_text(frame.sub(6, 6));
  s.line(at(0, 5), "[Destination Address] %s %s", destination.view(), parens(station_nickname(destination.bytes)));
  s.line(at(6, 11), "[Source Address] %s %s", source.view(), parens(station_nickname(source.bytes)));
  if (!s) return 0;

  switch (CheckFrameType(frame)) {
    case FrameKind::kRaw8023: raw_8023_lines(list, frame); break;
    case FrameKind::kLlc:
    case FrameKind::kLlcSU: llc_lines(list, frame); break;
    case FrameKind::kSnap: snap_lines(list, frame); break;
    case FrameKind::kEthernetII: ethernet_ii_lines(list, frame); break;
  }
  return state().topLineIndex;
}

}  // namespace wirelines
