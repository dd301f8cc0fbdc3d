// Two hexadecimal digits for each byte.
#pragma once

#include <array>
#include <cstddef>

namespace wirelines {

using TwoDigits = std::array<char, 2>;

inline constexpr auto kHexPairs = [] {
  std::array<TwoDigits, 256> pairs{};
  for (std::size_t i = 0; i < 256; ++i) pairs[i] = {"0123456789ABCDEF"[i >> 4], "0123456789ABCDEF"[i & 15]};
  return pairs;
}();

}  // namespace wirelines
