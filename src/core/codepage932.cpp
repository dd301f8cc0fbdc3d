// Conversions to code page 932.
#include "core/codepage932.hpp"

namespace wirelines {

namespace {

// 65,536 codes by UTF-16 unit, written by make_codepage932 when the library is built.
constexpr uint16_t kFromUtf16[65536] = {
#include "codepage932_table.inc"
};

}  // namespace

uint16_t jis_to_sjis(uint16_t jis) {
  auto high = static_cast<uint32_t>(jis >> 8);
  auto low = static_cast<uint32_t>(jis & 0xFF);
  if (high < 0x21 || high > 0x7E || low < 0x21 || low > 0x7E) return 0;
  // Two rows of 94 share one lead byte; trail bytes leave out 0x7F, lead bytes 0xA0 to 0xDF.
  if (high % 2 == 1) {
    low += low < 0x60 ? 0x1F : 0x20;
  } else {
    low += 0x7E;
  }
  high = (high - 0x21) / 2 + 0x81;
  if (high > 0x9F) high += 0x40;
  return static_cast<uint16_t>(high << 8 | low);
}

uint16_t utf16_to_codepage932(uint16_t unit) {
  return kFromUtf16[unit];
}

}  // namespace wirelines
