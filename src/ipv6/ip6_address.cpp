#include "ipv6/ip6_address.hpp"

#include <bit>

namespace wirelines {

namespace {

constexpr uint32_t kGroups = 8;

char* append_hex(char* out, uint32_t group) {
  const auto digits = (static_cast<uint32_t>(std::bit_width(group)) + 3) / 4;
  for (uint32_t i = digits; i-- > 0;) *out++ = "0123456789ABCDEF"[group >> (4 * i) & 15];
  return out;
}

}  // namespace

TextBuffer FormatIp6Addr(Bytes address) {
  return TextBuffer("%X:%X:%X:%X:%X:%X:%X:%X", address.be16(0), address.be16(2), address.be16(4), address.be16(6),
                    address.be16(8), address.be16(10), address.be16(12), address.be16(14));
}

TextBuffer FormatIp6AddrSimple(Bytes address) {
  return TextBuffer("%0.4X:%0.4X:%0.4X:%0.4X", address.be16(8), address.be16(10), address.be16(12), address.be16(14));
}

// Kept: the first run of zero groups is compressed even when it is a single one or not the longest, and an address
// that begins with it has one colon there: the address ::1 reads ":1".
TextBuffer FormatIp6AddrSimple2(Bytes address) {
  TextBuffer text("");
  char* out = text.bytes;
  bool started = false;
  bool compressed = false;
  bool zeros = false;
  for (uint32_t i = 0; i < kGroups; ++i) {
    const uint32_t group = address.be16(2 * i);
    if (group == 0) {
      if (compressed || !zeros) *out++ = ':';
      if (compressed) *out++ = '0';
      zeros = true;
    } else {
      compressed = zeros;
      if (started) *out++ = ':';
      started = true;
      out = append_hex(out, group);
    }
  }
  if (!compressed && address.be16(14) == 0) *out++ = ':';
  *out = 0;
  text.length = static_cast<uint32_t>(out - text.bytes);
  return text;
}

}  // namespace wirelines
