// Code page 932 (Shift-JIS), the code page of every line text.
#pragma once

#include "core/bytes.hpp"

namespace wirelines {

constexpr bool is_lead_byte(char c) {
  const auto b = static_cast<uint8_t>(c);
  return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
}
constexpr bool is_trail_byte(char c) {
  const auto b = static_cast<uint8_t>(c);
  return b >= 0x40 && b <= 0xFC && b != 0x7F;
}

// The Shift-JIS code of a 7-bit JIS X 0208 code; 0 when either byte lies outside 0x21 to 0x7E.
uint16_t jis_to_sjis(uint16_t jis);

// The code of one UTF-16 unit: below 0x100 a single byte, otherwise lead byte x 256 + trail byte. A unit without a
// character in the code page, and each half of a surrogate pair, gives '?'.
uint16_t utf16_to_codepage932(uint16_t unit);

}  // namespace wirelines
