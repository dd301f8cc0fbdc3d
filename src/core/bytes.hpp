// The view through which every decoder reads a frame. The rules about bounds live here and nowhere else.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace wirelines {

using std::int32_t;
using std::int64_t;
using std::uint16_t;
using std::uint32_t;
using std::uint64_t;
using std::uint8_t;

// A view knows two lengths. size() is the length handed on by the layer below: it decides minimum lengths and what a
// layer hands on in turn, and it can be negative, when a header claims more than there is. captured() counts the bytes
// from here to the end of the capture: a read inside it gives the byte as it is, even past size(); a read past it
// gives zero.
class Bytes {
 public:
  constexpr Bytes() = default;

  // What a host hands in: the capture ends with the data.
  constexpr Bytes(const uint8_t* data, int32_t length)
      : data_(data), captured_(data != nullptr && length > 0 ? static_cast<uint32_t>(length) : 0), size_(length) {}

  [[nodiscard]] constexpr int32_t size() const { return size_; }
  [[nodiscard]] constexpr uint32_t captured() const { return captured_; }

  // True when the byte at `offset` was captured.
  [[nodiscard]] constexpr bool has(uint32_t offset) const { return offset < captured_; }

  [[nodiscard]] constexpr uint8_t u8(uint32_t offset) const { return offset < captured_ ? data_[offset] : uint8_t{0}; }
  // One look at the bounds where all bytes are there, as nearly always.
  [[nodiscard]] constexpr uint16_t be16(uint32_t offset) const {
    if (uint64_t{offset} + 2 <= captured_) [[likely]] {
      return static_cast<uint16_t>(data_[offset] << 8 | data_[offset + 1]);
    }
    return static_cast<uint16_t>(u8(offset) << 8);
  }
  [[nodiscard]] constexpr uint32_t be32(uint32_t offset) const {
    return static_cast<uint32_t>(be16(offset)) << 16 | be16(offset + 2);
  }
  [[nodiscard]] constexpr uint16_t le16(uint32_t offset) const {
    return static_cast<uint16_t>(u8(offset + 1) << 8 | u8(offset));
  }
  [[nodiscard]] constexpr uint32_t le32(uint32_t offset) const {
    return static_cast<uint32_t>(le16(offset + 2)) << 16 | le16(offset);
  }
  [[nodiscard]] constexpr uint64_t le64(uint32_t offset) const {
    return static_cast<uint64_t>(le32(offset + 4)) << 32 | le32(offset);
  }

  // What is handed on from `offset`: the rest of the length, cut to the captured bytes. Negative when `offset` lies
  // past the length handed on.
  [[nodiscard]] constexpr Bytes from(uint32_t offset) const {
    return part(offset, static_cast<int64_t>(size_) - static_cast<int64_t>(offset));
  }

  // `length` bytes from `offset`, cut to the captured bytes but not to the length handed on. A negative length stays.
  [[nodiscard]] constexpr Bytes sub(uint32_t offset, int32_t length) const { return part(offset, length); }

  // The same bytes with another length, cut to the captured ones.
  [[nodiscard]] constexpr Bytes first(int32_t length) const { return part(0, length); }

  // How many captured bytes lie before this view, and the view that begins `n` of them earlier and is longer by as
  // many.
  [[nodiscard]] constexpr uint32_t before() const { return before_; }
  [[nodiscard]] constexpr Bytes back(uint32_t n) const {
    n = std::min(n, before_);
    Bytes result = *this;
    result.data_ -= n;
    result.before_ -= n;
    result.captured_ += n;
    result.size_ = static_cast<int32_t>(std::min(static_cast<int64_t>(size_) + n, int64_t{INT32_MAX}));
    return result;
  }

  // The captured bytes among the first size(), for copying, summing and comparing in bulk.
  [[nodiscard]] constexpr const uint8_t* data() const { return data_; }
  [[nodiscard]] constexpr uint32_t readable() const {
    return size_ <= 0 ? 0 : std::min(static_cast<uint32_t>(size_), captured_);
  }

  // The readable bytes as text; a formatted text ends at its first zero byte.
  [[nodiscard]] std::string_view text() const { return {reinterpret_cast<const char*>(data_), readable()}; }

 private:
  [[nodiscard]] constexpr Bytes part(uint32_t offset, int64_t length) const {
    Bytes result;
    const uint32_t skipped = std::min(offset, captured_);
    result.data_ = data_ + skipped;
    result.before_ = before_ + skipped;
    result.captured_ = captured_ - skipped;
    const auto cut = std::min(length, static_cast<int64_t>(result.captured_));
    result.size_ = static_cast<int32_t>(std::max(cut, static_cast<int64_t>(INT32_MIN)));
    return result;
  }

  const uint8_t* data_ = nullptr;
  uint32_t before_ = 0;
  uint32_t captured_ = 0;
  int32_t size_ = 0;
};

}  // namespace wirelines
