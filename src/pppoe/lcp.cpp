// PPP Link Control Protocol (RFC 1661, section 5; Identification and Time Remaining: RFC 1570).
#include "core/labelled.hpp"
#include "core/names.hpp"
#include "core/section.hpp"
#include "pppoe/ppp.hpp"
#include "pppoe/ppp_packet.hpp"
#include "pppoe/pppoe.hpp"

namespace wirelines {

namespace {

constexpr int32_t kLeast = 16;  // bytes that a packet must have to be shown

constexpr auto kOptions = names(
    {
        {1, "Maximum Receive Unit"},
        {2, "Async Control Character Map"},
        {3, "Authentication Protocol"},
        {4, "Quality Protocol"},
        {5, "Magic Number"},
        {7, "Protocol Field Compression"},
        {8, "Address/Control Field Compression"},
        {9, "FCS Alternatives"},
        {10, "Self-Describing Pad"},
        {11, "Numbered Mode"},
        {13, "Callback"},
        {15, "Compound Frames"},
        {17, "MRRU"},
        // Kept: the name of type 18 lacks its first letter.
        {18, "ultilink Short Sequence Number Header"},
        {19, "Multilink Endpoint Discriminator"},
        {21, "DCE Identifier"},
        {22, "Multilink Plus Procedure"},
        {23, "Link Discriminator"},
        {24, "LCP Authentication"},
        {25, "Consistent Overhead Byte Stuffing"},
        {26, "Prefix Elision"},
        {27, "Multilink header format"},
        {28, "Internationalization"},
        {29, "Simple Data Link"},
        {30, "PPP Muxing"},
    },
    "Unknown");
static_assert(kOptions.distinct());

// Kept: two protocols are named SPAP, the older and the newer number.
constexpr auto kAuthentications = names(
    {
        {kPppPap, "PAP"},
        {kPppChap, "CHAP"},
        {0xC227, "EAP"},
        {0xC027, "SPAP"},
        {0xC123, "SPAP"},
    },
    "Unknown");
static_assert(kAuthentications.distinct());

constexpr auto kAlgorithms = names(
    {
        {5, "MD5"},
        {128, "MS-CHAPv1"},
        {129, "MS-CHAPv2"},
    },
    "Unknown");
static_assert(kAlgorithms.distinct());

// Kept: a value is read in its usual place whatever length the option states.
void value_lines(Section& s, const PppOption& o) {
  const Bytes b = o.bytes;
  switch (o.type) {
    case 1: s.line(o.range(2, 3), "[%s] %u(0x%0.4X) byte(s)", o.name, b.be16(2), b.be16(2)); break;
    case 2: s.line(o.range(2, 5), "[%s] 0x%0.4X", o.name, b.be32(2)); break;
    case 3: {
      const uint16_t protocol = b.be16(2);
      s.line(o.range(2, 3), "[%s] 0x%0.4X (%s)", o.name, protocol, kAuthentications(protocol));
      if (protocol == kPppChap && o.length == 5) {
        s.line(o.range(4, 4), "[Algorithm] %u (%s)", b.u8(4), kAlgorithms(b.u8(4)));
      }
      break;
    }
    case 5: s.line(o.range(2, 5), "[%s] %0.2X,%0.2X,%0.2X,%0.2X", o.name, b.u8(2), b.u8(3), b.u8(4), b.u8(5)); break;
    default: break;
  }
}

void magic_number_line(Section& s, Bytes body) {
  s.line(at(0, 3), "[Magic Number] %0.2X,%0.2X,%0.2X,%0.2X", body.u8(0), body.u8(1), body.u8(2), body.u8(3));
}

}  // namespace

void LcpAnalyze(LineList& list, Bytes data) {
  // Kept: a shorter packet is not shown at all, not even as data.
  if (data.size() < kLeast) return;

  const uint8_t code = data.u8(0);

  Section s(list, kPppLayer);
  // Kept: the range ends six bytes behind the packet.
  s.title(at(0, data.be16(2) + 5U), "LCP Header (%s)", PppCodeToName(code));
  packet_lines(s, data, PppCodeToName(code));

  advance(kPppHeader);
  const Bytes body = data.sub(kPppHeader, packet_size(data) - kPppHeader);
  switch (code) {
    case 1:
    case 2:
    case 3:
    case 4: option_lines(s, body, kOptions, value_lines); break;
    case 5:
    case 6:
    // Kept: all that is there, also what lies behind the packet's own length.
    case 7: packet_block(s, 0, data.from(kPppHeader)); break;
    case 8:
      if (body.size() < 2) break;
      s.line(at(0, 1), "[Protocol] 0x%0.4X %s", body.be16(0), parens(PppProtocolToName(body.be16(0))));
      packet_block(s, 2, body.from(2));
      break;
    case 9:
    case 10:
    case 11:
      if (body.size() < 4) break;
      magic_number_line(s, body);
      packet_block(s, 4, body.from(4));
      break;
    case 12:
    case 13:
      if (body.size() < 4) break;
      magic_number_line(s, body);
      DspTitleString(list, "[Message] ", body.from(4), body.size() - 4, s.field(at(4)));
      break;
    default: break;
  }
}

}  // namespace wirelines
