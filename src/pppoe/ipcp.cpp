// PPP Internet Protocol Control Protocol (RFC 1332; name servers: RFC 1877).
#include "core/names.hpp"
#include "core/nicknames.hpp"
#include "core/section.hpp"
#include "pppoe/ppp.hpp"
#include "pppoe/ppp_packet.hpp"

namespace wirelines {

namespace {

constexpr uint8_t kLastCode = 7;

constexpr auto kOptions = names(
    {
        {1, "IP Addresses"},
        {2, "IP Compression Protocol"},
        {3, "IP Address"},
        {4, "Mobile IPv4"},
        // In half-width katakana: primary DNS, primary NBNS, secondary DNS, secondary NBNS address.
        {129,
         "\xCC\xDF\xD7\xB2\xCF\xD8"
         "DNS\xB1\xC4\xDE\xDA\xBD"},
        {130, "\xCC\xDF\xD7\xB2\xCF\xD8NBNS\xB1\xC4\xDE\xDA\xBD"},
        {131,
         "\xBE\xB6\xDD\xC0\xDE\xD8"
         "DNS\xB1\xC4\xDE\xDA\xBD"},
        {132, "\xBE\xB6\xDD\xC0\xDE\xD8NBNS\xB1\xC4\xDE\xDA\xBD"},
    },
    "Unknown");
static_assert(kOptions.distinct());

constexpr auto kCompressions = names({{0x002D, "Van Jacobson Compression"}}, "Unknown");
constexpr auto kMaxSlots = names({{4, "MAX"}, {16, "MIN"}});
constexpr auto kCompressedSlots = names({{0, "UNCOMPRESSED_TCP"}, {1, "COMPRESSED_TCP"}}, "Unknown");
static_assert(kMaxSlots.distinct() && kCompressedSlots.distinct());

// Kept: a value is read in its usual place whatever length the option states.
void value_lines(Section& s, const PppOption& o) {
  const Bytes b = o.bytes;
  switch (o.type) {
    case 1: {
      const TextBuffer source = ip_text(b.sub(2, 4));
      const TextBuffer destination = ip_text(b.sub(6, 4));
      s.line(o.range(2, 5), "[Source Address] %s %s", source.view(), parens(ip_nickname(source.bytes)));
      s.line(o.range(6, 9), "[Destination Address] %s %s", destination.view(), parens(ip_nickname(destination.bytes)));
      break;
    }
    case 2:
      // Kept: the slots are read as two bytes each, where stations send one (RFC 1332, section 4).
      s.line(o.range(2, 3), "[IP Compression Protocol] 0x%0.4X (%s)", b.be16(2), kCompressions(b.be16(2)));
      s.line(o.range(4, 5), "[Max Slot ID] %u %s", b.be16(4), parens(kMaxSlots(b.be16(4))));
      s.line(o.range(6, 7), "[Compressed Slot ID] %u %s", b.be16(6), parens(kCompressedSlots(b.be16(6))));
      break;
    case 3:
    case 129:
    case 130:
    case 131:
    case 132: s.line(o.range(2, 5), "[IP Address] %u.%u.%u.%u", b.u8(2), b.u8(3), b.u8(4), b.u8(5)); break;
    default: break;
  }
}

}  // namespace

void IpcpAnalyze(LineList& list, Bytes data) {
  if (data.size() < kPppHeader) return;

  const uint8_t code = data.u8(0);
  const std::string_view code_name = PppCodeToName(code <= kLastCode ? code : uint8_t{0});

  Section s(list, kPppLayer);
  s.title(at(0, data.be16(2) - 1U), "IPCP Header (%s)", code_name);
  packet_lines(s, data, code_name);

  advance(kPppHeader);
  // Kept: whatever the code, all that is there is taken for options, also behind the packet's own length.
  option_lines(s, data.from(kPppHeader), kOptions, value_lines);
}

}  // namespace wirelines
