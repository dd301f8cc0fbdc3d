// The cursor, strings and areas of SMB command blocks.
#include "smb/smb_fields.hpp"

#include <algorithm>
#include <cstring>

#include "core/codepage932.hpp"
#include "core/labelled.hpp"

namespace wirelines::smb {

namespace {

constexpr uint16_t kUnicodeStrings = 0x8000;  // of flags2

// What fits in a line of a UTF-16 string in code page 932, and two bytes more, so that the line's cut finds a divided
// character.
struct LineText {
  char bytes[kMaxText + 4];
  uint32_t length = 0;

  void add(uint16_t unit) {
    if (length > kMaxText) return;
    const uint16_t code = utf16_to_codepage932(unit);
    if (code > 0xFF) bytes[length++] = static_cast<char>(code >> 8);
    bytes[length++] = static_cast<char>(code & 0xFF);
  }
};

}  // namespace

void bit_lines(Section& s, Range range, std::span<const BitRow> rows, uint32_t v) {
  for (const BitRow& row : rows) s.detail_value(range, row.format, v >> row.bit & 1);
}

void bit_lines(Section& s, Range range, std::span<const BitTextRow> rows, uint32_t v) {
  for (const BitTextRow& row : rows) s.detail(range, "    %s", (v >> row.bit & 1) != 0 ? row.set : row.clear);
}

bool Fields::begin(int32_t minimum) {
  section_->title(at(0, length() - 1), "%s", title_);
  if (block_.size() < minimum) {
    too_short_ = true;
    last_ = at(0, static_cast<uint32_t>(block_.size()) - 1);
    hex_dump(section_->list(), block_, section_->field(last_));
    return false;
  }
  u8("[Word Count] %u (0x%0.2X) word(s)");
  return true;
}

uint32_t Fields::length() const {
  if (block_.size() < 3) return 0;
  const uint32_t words = block_.u8(0) * 2U;
  return std::min(3 + words + block_.le16(1 + words), static_cast<uint32_t>(block_.size()));
}

bool Fields::more() {
  if (static_cast<int64_t>(offset_) >= block_.size()) area_ended_ = true;
  return !area_ended_;
}

void Fields::string(std::string_view label, bool aligned) {
  if ((header_.le16(10) & kUnicodeStrings) == 0) return single_byte_string(label);
  if (!more()) return;
  const uint32_t unaligned = offset_;
  if (aligned) offset_ += static_cast<uint32_t>(position() + offset_) & 1;
  if (more()) {
    utf16_string(label);
  } else {
    offset_ = unaligned;  // the byte to skip was the last one
  }
}

void Fields::single_byte_string(std::string_view label) {
  if (!more()) return;
  const auto length = DspTitleString(section_->list(), label, block_.from(offset_), static_cast<int32_t>(left()),
                                     section_->field(at(offset_)));
  take(std::min(static_cast<uint32_t>(length) + 1, left()));
}

void Fields::utf16_string(std::string_view label) {
  const Bytes text = block_.from(offset_);
  const uint32_t limit = left();
  LineText shown;
  uint32_t q = 0;
  for (; q + 1 < limit && text.le16(q) != 0; q += 2) shown.add(text.le16(q));
  take(std::min(q + 2, limit));
  line("%s%s", label, std::string_view(shown.bytes, shown.length));
}

Bytes Fields::area(uint32_t length) {
  const uint32_t room = more() ? left() : 0;
  const uint32_t cut = std::min(length, room);
  return block_.sub(take(cut), static_cast<int32_t>(cut));
}

void Fields::hex_lines(Bytes bytes) {
  hex_dump(section_->list(), bytes, section_->attributes(kCommand.field, 2, last_));
}

void Fields::data_lines(Bytes bytes) {
  data_block(section_->list(), bytes, section_->field(last_).start);
}

void DspSmbParameters(Fields& f) {
  const Bytes block = f.block();
  const uint32_t count = f.words();
  f.seek(1);
  if (count != 0) f.section().heading(at(1, 2 * count), "[Word Parameters]");
  for (uint32_t shown = 0; shown < count && f.more();) {
    const uint32_t first = f.offset();
    char text[8 * 7];
    uint32_t length = 0;
    for (uint32_t i = 0; i < 8 && shown < count && f.more(); ++i, ++shown) {
      const TextBuffer word("0x%0.4X ", f.le16());
      std::memcpy(text + length, word.bytes, word.length);
      length += word.length;
    }
    f.section().detail(at(first, f.offset() - 1), "%s", std::string_view(text, length));
  }

  // Kept: a block that ends inside its byte count shows it all the same.
  if (f.size() >= static_cast<int32_t>(2 * count + 2)) {
    f.seek(2 * count + 1);
    const uint16_t bytes = f.le16("[Byte Count] %u (0x%0.4X) byte(s)");
    const int32_t shown = std::min<int32_t>(bytes, f.size() - static_cast<int32_t>(2 * count + 3));
    const Range range = at(f.offset(), f.offset() + static_cast<uint32_t>(shown) - 1);
    if (bytes != 0) f.section().heading(range, "[Byte Parameters]");
    hex_dump(f.section().list(), block.sub(f.offset(), shown), f.section().attributes(kCommand.field, 2, range));
  }
  f.seek(f.length());
}

}  // namespace wirelines::smb
