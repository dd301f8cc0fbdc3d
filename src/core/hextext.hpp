// Bytes as they stand in a line.
#pragma once

#include <algorithm>
#include <string_view>

#include "core/bytes.hpp"
#include "core/format.hpp"

namespace wirelines {

// Two upper-case hexadecimal digits a byte, without separators, for as many bytes as one line has room for.
class HexText {
 public:
  explicit HexText(Bytes data) {
    const uint32_t count = std::min(data.readable(), kMaxText / 2);
    for (uint32_t i = 0; i < count; ++i) {
      text_[length_++] = "0123456789ABCDEF"[data.u8(i) >> 4];
      text_[length_++] = "0123456789ABCDEF"[data.u8(i) & 15];
    }
  }
  [[nodiscard]] std::string_view view() const { return {text_, length_}; }

 private:
  char text_[kMaxText];
  uint32_t length_ = 0;
};

}  // namespace wirelines
