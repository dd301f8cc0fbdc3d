// Data blocks and hex dumps.
#include "core/datablock.hpp"

#include <algorithm>
#include <array>
#include <cstring>

#include "core/charset.hpp"
#include "core/hexdigits.hpp"

namespace wirelines {

namespace {

constexpr uint32_t kRule = 75;
constexpr uint32_t kLabelColumn = 62;  // of the character set in a heading
constexpr uint32_t kHexLine = 57;      // width of a hex line before its text
constexpr uint32_t kHexColumns[] = {6, 9, 12, 15, 18, 21, 24, 27, 32, 35, 38, 41, 44, 47, 50, 53};

constexpr auto kColumns = [] {
  std::array<char, kHexLine> columns{};
  columns.fill(' ');
  columns[30] = '-';
  return columns;
}();

// One hex line; `chunk` holds n bytes and blanks behind them.
void format_hex_line(char* line, uint32_t offset, const uint8_t* chunk, uint32_t n, uint32_t mode) {
  // A longer offset moves the columns behind it.
  char* const columns = put_hex(line, offset, 4) - 4;
  std::memcpy(columns + 4, kColumns.data() + 4, kHexLine - 4);
  for (uint32_t i = 0; i < 16; ++i) std::memcpy(columns + kHexColumns[i], kHexPairs[chunk[i]].data(), 2);
  // Kept: the pairs to blank are counted in steps of three columns also across the separator, so that a line of 7
  // bytes or less loses its hyphen and shows parts of the fill bytes' "20".
  for (uint32_t i = 0; i < 16 - n; ++i) columns[53 - 3 * i] = columns[54 - 3 * i] = ' ';

  char* const text = columns + kHexLine;
  std::memcpy(text, chunk, 16);
  render_charset(reinterpret_cast<uint8_t*>(text), n, mode);
  text[n] = 0;
}

}  // namespace

void hex_dump(LineList& list, Bytes data, const LineAttributes& attributes) {
  const uint32_t length = data.readable();
  const uint32_t mode = state().charSetMode;
  for (uint32_t k = 0; k < length; k += 16) {
    const uint32_t n = std::min(16U, length - k);
    DisplayLine* const line = new_line(list);
    if (line == nullptr) return;
    set_attributes(*line, attributes);
    line->startOffset = attributes.start == 0 ? 0 : attributes.start + k;
    line->endOffset = attributes.end == 0 ? 0 : attributes.start + k + n - 1;
    uint8_t chunk[16];
    if (n == 16) {
      std::memcpy(chunk, data.data() + k, 16);
    } else {
      std::memset(chunk, ' ', sizeof chunk);
      std::memcpy(chunk, data.data() + k, n);
    }
    format_hex_line(line->text, k, chunk, n, mode);
  }
}

void data_block(LineList& list, Bytes data, uint32_t start, const BlockLook& look) {
  if (data.size() < 1) return;
  const auto length = static_cast<uint32_t>(data.size());
  add_blank(list);

  DisplayLine* const heading = new_line(list);
  if (heading == nullptr) return;
  LineAttributes attributes = {look.heading_code,  look.heading_level, start,
                               start + length - 1, look.styleIndex,    look.styleGroup};
  set_attributes(*heading, attributes);
  char* const text = heading->text;
  std::memset(text, '-', kRule);
  text[kRule] = 0;
  const TextBuffer count("%s %u (0x%0.4X) byte(s) ", look.label, length, length);
  std::memcpy(text + 3, count.bytes, count.length);
  const std::string_view label = charset_label(state().charSetMode);
  std::memcpy(text + kLabelColumn, label.data(), label.size());

  attributes.code = look.hex_code;
  attributes.level = look.hex_level;
  hex_dump(list, data, attributes);
}

}  // namespace wirelines
