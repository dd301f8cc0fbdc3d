// The way through one SMB command block: word count, that many 16-bit words, byte count, that many bytes. All fields
// are little-endian.
#pragma once

#include <span>

#include "core/section.hpp"

namespace wirelines::smb {

constexpr Layer kCommand = layer(55, 3, 2);
constexpr uint32_t kHeaderSize = 32;
constexpr uint32_t kAndXSize = 4;  // the next command, a reserved byte, and the offset of the next block

// The 0 or 1 of one bit, shown with `format` below the field.
struct BitRow {
  uint8_t bit;
  NumberFormat format;
};

// A bit whose two states have texts of their own.
struct BitTextRow {
  uint8_t bit;
  std::string_view set;
  std::string_view clear;
};

// The bit lines of a field, one a row.
void bit_lines(Section& s, Range range, std::span<const BitRow> rows, uint32_t v);
void bit_lines(Section& s, Range range, std::span<const BitTextRow> rows, uint32_t v);

// A cursor through a block. It takes fields one after another; what it then shows is over the bytes taken last. Fields
// stand at fixed offsets from the block's first byte, whatever the word count says; the byte area behind them runs to
// the end of the message, whatever the byte count says.
class Fields {
 public:
  // `block` is a part of the message that begins at `header`, and the section's frame offset is that of the block.
  Fields(Section& section, Bytes header, Bytes block, std::string_view title)
      : section_(&section), header_(header), block_(block), title_(title) {}

  // The title, then the word count line. A block of less than `minimum` bytes is a hex dump instead, and false.
  bool begin(int32_t minimum);
  [[nodiscard]] bool too_short() const { return too_short_; }

  [[nodiscard]] uint8_t words() const { return block_.u8(0); }
  [[nodiscard]] Bytes block() const { return block_; }
  [[nodiscard]] int32_t size() const { return block_.size(); }
  [[nodiscard]] uint32_t length() const;  // of the block as its two counts tell, cut to the end; 0 below 3 bytes
  [[nodiscard]] Section& section() const { return *section_; }
  explicit operator bool() const { return static_cast<bool>(*section_); }

  [[nodiscard]] uint32_t offset() const { return offset_; }
  void seek(uint32_t offset) { offset_ = offset; }
  void skip(uint32_t bytes) { offset_ += bytes; }

  // Taking a field.
  uint8_t u8() { return block_.u8(take(1)); }
  uint16_t le16() { return block_.le16(take(2)); }
  uint32_t le32() { return block_.le32(take(4)); }
  uint64_t le64() { return block_.le64(take(8)); }
  [[nodiscard]] Range last() const { return last_; }

  // Taking a field and showing its number in every conversion.
  [[gnu::always_inline]] uint8_t u8(NumberFormat format) { return shown(format, u8()); }
  [[gnu::always_inline]] uint16_t le16(NumberFormat format) { return shown(format, le16()); }
  [[gnu::always_inline]] uint32_t le32(NumberFormat format) { return shown(format, le32()); }

  // Showing what was taken last.
  template <typename... Args>
  [[gnu::always_inline]] void line(Format<std::type_identity_t<Args>...> format, const Args&... args) {
    section_->line(last_, format, args...);
  }
  template <typename... Args>
  [[gnu::always_inline]] void heading(Format<std::type_identity_t<Args>...> format, const Args&... args) {
    section_->heading(last_, format, args...);
  }
  template <typename... Args>
  [[gnu::always_inline]] void detail(Format<std::type_identity_t<Args>...> format, const Args&... args) {
    section_->detail(last_, format, args...);
  }

  // Taking a field and showing it as a heading with its bits below.
  template <typename Row, std::size_t N>
  [[gnu::always_inline]] uint8_t flags8(NumberFormat format, const Row (&rows)[N]) {
    return flagged(format, rows, u8());
  }
  template <typename Row, std::size_t N>
  [[gnu::always_inline]] uint16_t flags16(NumberFormat format, const Row (&rows)[N]) {
    return flagged(format, rows, le16());
  }
  template <typename Row, std::size_t N>
  [[gnu::always_inline]] uint32_t flags32(NumberFormat format, const Row (&rows)[N]) {
    return flagged(format, rows, le32());
  }

  // ---- The byte area ----

  // Whether a field begins before the end. Once one does not, no later one is shown either.
  bool more();

  // A string, single-byte or UTF-16 as the message's flags2 say, with its terminator. An aligned UTF-16 string begins
  // at an even offset of the message.
  void string(std::string_view label, bool aligned = true);
  void single_byte_string(std::string_view label);

  // The next `length` bytes, cut to the end; taken.
  Bytes area(uint32_t length);
  void hex_lines(Bytes bytes);  // of the bytes taken last
  void data_lines(Bytes bytes);

  // ---- Places counted from the header ----

  [[nodiscard]] Bytes header() const { return header_; }
  // Where the block begins; negative when a chain led to a place in front of the header.
  [[nodiscard]] int64_t position() const {
    return static_cast<int64_t>(block_.before()) - static_cast<int64_t>(header_.before());
  }

 private:
  uint32_t take(uint32_t bytes) {
    last_ = at(offset_, offset_ + bytes - 1);
    offset_ += bytes;
    return last_.first;
  }
  template <typename T>
  [[gnu::always_inline]] T shown(NumberFormat format, T v) {
    section_->value(last_, format, v);
    return v;
  }
  template <typename T, typename Row, std::size_t N>
  [[gnu::always_inline]] T flagged(NumberFormat format, const Row (&rows)[N], T v) {
    section_->heading_value(last_, format, v);
    bit_lines(*section_, last_, std::span<const Row>(rows), v);
    return v;
  }
  [[nodiscard]] uint32_t left() const { return static_cast<uint32_t>(block_.size()) - offset_; }
  void utf16_string(std::string_view label);

  Section* section_;
  Bytes header_;
  Bytes block_;
  std::string_view title_;
  uint32_t offset_ = 0;
  Range last_{};
  bool too_short_ = false;
  bool area_ended_ = false;
};

// The word and byte parameters of a block that has no decoder of its own; the cursor ends behind the block.
void DspSmbParameters(Fields& f);

}  // namespace wirelines::smb
