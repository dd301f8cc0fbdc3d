// PPP over Ethernet (RFC 2516): a 6-byte header, then tags in the discovery stage, or in the session stage the PPP
// protocol and its packet. Called for EtherTypes 0x8863 and 0x8864.
#include "pppoe/pppoe.hpp"

#include <algorithm>

#include "core/datablock.hpp"
#include "core/names.hpp"
#include "core/section.hpp"
#include "ipv4/ipv4.hpp"
#include "pppoe/ppp.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(14, 6, 9);
constexpr int32_t kHeader = 6;
constexpr int32_t kSessionHeader = 8;  // with the PPP protocol
constexpr int32_t kTagHeader = 4;

constexpr uint8_t kSessionStage = 0x00;

constexpr auto kCodes = names(
    {
        {0x09, "PADI"},
        {0x07, "PADO"},
        {0x19, "PADR"},
        {0x65, "PADS"},
        {0xA7, "PADT"},
        {kSessionStage, "Session Stage"},
    },
    "Unknown");
static_assert(kCodes.distinct());

constexpr auto kProtocols = names({
    {kPppIp, "IP"},
    {kPppIpcp, "IPCP"},
    {kPppLcp, "LCP"},
    {kPppPap, "PAP"},
    {kPppChap, "CHAP"},
});
static_assert(kProtocols.distinct());

constexpr auto kTags = names(
    {
        {0x0000, "End-Of-List"},
        {0x0101, "Service-Name"},
        {0x0102, "AC-Name"},
        {0x0103, "Host-Uniq"},
        {0x0104, "AC-Cookie"},
        {0x0105, "Vendor-Specific"},
        {0x0110, "Relay-Session-Id"},
        {0x0201, "Service-Name-Error"},
        {0x0202, "AC-System-Error"},
        {0x0203, "Generic-Error"},
    },
    "Unknown");
static_assert(kTags.distinct());

// Kept: End-Of-List is a tag like any other; what follows it is shown as tags too.
void tag_lines(Section& s, Bytes tags) {
  uint32_t number = 0;
  for (int32_t pos = 0; s && tags.size() - pos >= kTagHeader;) {
    const auto p = static_cast<uint32_t>(pos);
    const uint16_t type = tags.be16(p);
    const uint16_t length = tags.be16(p + 2);
    if (tags.size() - pos < length + kTagHeader) return;

    s.line(at(p, p + length + 3), "--- Tag %u -------------------------------", ++number);
    s.line(at(p, p + 1), "[Type] 0x%0.4X (%s)", type, kTags(type));
    s.line(at(p + 2, p + 3), "[Length] %u byte(s)", length);
    if (length != 0) {
      const Range value = at(p + 4, p + length + 3);
      s.heading(value, "[Tag] %u byte(s)", length);
      hex_dump(s.list(), tags.sub(p + 4, length), s.attributes(kLayer.field, 2, value));
    }
    pos += length + kTagHeader;
  }
}

void ppp_lines(Section& s, Bytes data) {
  // Kept: a protocol number compressed to one byte (RFC 1661, section 6.5) is not told from one of two.
  const uint16_t protocol = data.be16(6);
  s.line(at(6, 7), "[PPP Protocol] 0x%0.4X %s", protocol, parens(kProtocols(protocol)));
  if (!s) return;

  advance(kSessionHeader);
  // Not cut to the length field: what pads the frame is handed on too.
  const Bytes packet = data.from(kSessionHeader);
  switch (protocol) {
    case kPppIp: IpAnalyze(s.list(), packet); break;
    case kPppLcp: LcpAnalyze(s.list(), packet); break;
    case kPppChap: ChapAnalyze(s.list(), packet); break;
    case kPppIpcp: IpcpAnalyze(s.list(), packet); break;
    case kPppPap: PapAnalyze(s.list(), packet); break;
    default: remainder(s.list(), packet); break;
  }
}

// The code decides what follows the header, whichever EtherType brought it here.
void header_lines(Section& s, Bytes data) {
  const uint8_t code = data.u8(1);
  const uint16_t length = data.be16(4);
  s.line(at(0), "[Ver] %u", data.u8(0) >> 4);
  s.line(at(0), "[Type] %u", data.u8(0) & 15);
  s.line(at(1), "[Code] 0x%0.2X (%s)", code, kCodes(code));
  s.line(at(2, 3), "[Session ID] 0x%0.4X", data.be16(2));
  s.value(at(4, 5), "[Length] %u(0x%0.4X) byte(s)", length);
  if (code == kSessionStage) {
    if (data.size() >= kSessionHeader) ppp_lines(s, data);
    return;
  }
  advance(kHeader);
  tag_lines(s, data.sub(kHeader, std::min<int32_t>(data.size() - kHeader, length)));
}

}  // namespace

std::string_view PPPSessionToName(uint8_t code) {
  return kCodes(code);
}

std::string_view PppProtocolToName(uint16_t protocol) {
  return kProtocols(protocol);
}

void PPPoEDiscoveryAnalyze(LineList& list, Bytes data) {
  if (data.size() < kHeader) return remainder(list, data);

  Section s(list, kLayer);
  s.title(at(0, data.be16(4) + 5U), "PPPoE Discovery Header (%s)", kCodes(data.u8(1)));
  header_lines(s, data);
}

void PPPSessionAnalyze(LineList& list, Bytes data) {
  if (data.size() < kSessionHeader) return remainder(list, data);

  Section s(list, kLayer);
  s.title(at(0, 7), "PPP Session Header");
  header_lines(s, data);
}

}  // namespace wirelines
