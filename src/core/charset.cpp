// The text column of hex lines.
#include "core/charset.hpp"

#include <array>

#include "core/codepage932.hpp"
#include "wirelines.h"

namespace wirelines {

namespace {

constexpr bool is_printable(uint8_t b) {
  return b >= 0x20 && b <= 0x7E;
}

// Kept: 0x6A shows as '^', and 0x50 and 0x5F, which other tables give '&' and '^', as a full stop.
constexpr auto kEbcdic = [] {
  std::array<uint8_t, 256> table{};
  table.fill('.');
  const auto run = [&table](uint32_t code, std::string_view characters) {
    for (const char c : characters) table[code++] = static_cast<uint8_t>(c);
  };
  run(0x40, " ");
  run(0x4C, "<(+|");
  run(0x5A, "!$*);");
  run(0x60, "-/");
  run(0x6A, "^,%_>?");
  run(0x7A, ":#@'=\"");
  run(0x81, "abcdefghi");
  run(0x91, "jklmnopqr");
  run(0xA1, "~stuvwxyz");
  run(0xC1, "ABCDEFGHI");
  run(0xD1, "JKLMNOPQR");
  run(0xE2, "STUVWXYZ");
  run(0xF0, "0123456789");
  return table;
}();

inline void keep_ascii(uint8_t* bytes, uint32_t n) {
  for (uint32_t i = 0; i < n; ++i) bytes[i] = is_printable(bytes[i]) ? bytes[i] : uint8_t{'.'};
}

// Bytes that make no Shift-JIS character become full stops.
void keep_sjis(uint8_t* bytes, uint32_t n) {
  const auto single = [](uint8_t b) { return is_printable(b) || (b >= 0xA1 && b <= 0xDF); };
  for (uint32_t i = 0; i < n; ++i) {
    if (single(bytes[i])) continue;
    if (!is_lead_byte(static_cast<char>(bytes[i])) || i + 1 == n) {
      bytes[i] = '.';
      continue;
    }
    if (!is_trail_byte(static_cast<char>(bytes[i + 1]))) {
      bytes[i] = '.';
      if (!single(bytes[i + 1])) bytes[i + 1] = '.';
    }
    ++i;
  }
}

void put_pair(uint8_t* pair, uint16_t code) {
  pair[0] = static_cast<uint8_t>(code >> 8);
  pair[1] = static_cast<uint8_t>(code);
}

constexpr uint16_t kTwoStops = '.' << 8 | '.';

uint16_t from_jis(uint32_t code) {
  const uint16_t sjis = jis_to_sjis(static_cast<uint16_t>(code));
  return sjis != 0 ? sjis : kTwoStops;
}

}  // namespace

std::string_view charset_label(uint32_t mode) {
  constexpr std::string_view kLabels[] = {" ASCII ", " SJIS ", " JIS ", " Unicode ", " EUC ", " EBCDIC "};
  return mode < std::size(kLabels) ? kLabels[mode] : std::string_view("");
}

void render_charset(uint8_t* bytes, uint32_t n, uint32_t mode) {
  switch (mode) {
    case WIRELINES_ASCII:
      // Whole lines are many, and of a length that the compiler knows they are done in a few wide steps.
      if (n == 16) return keep_ascii(bytes, 16);
      return keep_ascii(bytes, n);
    case WIRELINES_SJIS: break;
    case WIRELINES_JIS:
      for (uint32_t i = 0; i + 1 < n; i += 2) put_pair(bytes + i, from_jis(uint32_t{bytes[i]} << 8 | bytes[i + 1]));
      break;
    case WIRELINES_UNICODE:
      for (uint32_t i = 0; i + 1 < n; i += 2) {
        const uint16_t code = utf16_to_codepage932(static_cast<uint16_t>(bytes[i + 1] << 8 | bytes[i]));
        // A single byte stands in front, with a zero behind it.
        put_pair(bytes + i, code > 0xFF ? code : static_cast<uint16_t>(code << 8));
      }
      break;
    case WIRELINES_EUC:
      for (uint32_t i = 0; i + 1 < n; i += 2) {
        if (bytes[i] < 0xA1 || bytes[i + 1] < 0xA1) continue;
        put_pair(bytes + i, from_jis((uint32_t{bytes[i]} << 8 | bytes[i + 1]) - 0x8080));
      }
      break;
    case WIRELINES_EBCDIC:
      for (uint32_t i = 0; i < n; ++i) bytes[i] = kEbcdic[bytes[i]];
      return;
    default: return;
  }
  keep_sjis(bytes, n);
}

}  // namespace wirelines
