// Bytes as they stand in a line.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

#include "core/bytes.hpp"
#include "core/format.hpp"
#include "core/hexdigits.hpp"

namespace wirelines {

// Two upper-case hexadecimal digits a byte, without separators, for as many bytes as one line has room for.
class HexText {
 public:
  explicit HexText(Bytes data) {
    const uint32_t count = std::min(data.readable(), kMaxText / 2);
    for (uint32_t i = 0; i < count; ++i, length_ += 2) {
      std::memcpy(text_ + length_, kHexPairs[data.u8(i)].data(), 2);
    }
  }
  [[nodiscard]] std::string_view view() const { return {text_, length_}; }

 private:
  char text_[kMaxText];
  uint32_t length_ = 0;
};

}  // namespace wirelines
