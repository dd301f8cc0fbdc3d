// PPP Challenge Handshake Authentication Protocol (RFC 1994).
#include <algorithm>

#include "core/labelled.hpp"
#include "core/names.hpp"
#include "core/section.hpp"
#include "pppoe/ppp.hpp"
#include "pppoe/ppp_packet.hpp"

namespace wirelines {

namespace {

constexpr int32_t kValue = 5;  // where the value begins, behind its length

constexpr auto kCodes = names(
    {
        {1, "Challenge"},
        {2, "Response"},
        {3, "Success"},
        {4, "Failure"},
    },
    "Unknown");
static_assert(kCodes.distinct());

// A value behind its length byte, and the name of who sent it.
void value_lines(Section& s, Bytes data, int32_t size) {
  const uint8_t value_size = data.u8(4);
  s.line(at(4), "[Value Size] %u byte(s)", value_size);
  // Kept: the value may go on behind the packet's own length.
  packet_block(s, kValue, data.sub(kValue, std::min<int32_t>(value_size, data.size() - kValue)));

  const uint32_t name = kValue + uint32_t{value_size};
  DspTitleString(s.list(), "[Name] ", data.from(name), size - kValue - value_size, s.field(at(name)));
}

}  // namespace

void ChapAnalyze(LineList& list, Bytes data) {
  if (data.size() < kPppHeader) return;

  const uint8_t code = data.u8(0);
  const int32_t size = packet_size(data);

  Section s(list, kPppLayer);
  s.title(at(0, data.be16(2) - 1U), "CHAP Header (%s)", kCodes(code));
  packet_lines(s, data, kCodes(code));
  if (!s) return;

  switch (code) {
    case 1:
    case 2:
      if (size >= kValue) value_lines(s, data, size);
      break;
    case 3:
    case 4: packet_block(s, kPppHeader, data.sub(kPppHeader, size - kPppHeader)); break;
    default: break;
  }
}

}  // namespace wirelines
