// Frames as text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wirelines::host {

// Hex digits, grouped at will; "x20" behind a byte stands for twenty of it.
inline std::vector<std::uint8_t> bytes_of(const std::string& text) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == ' ') {
      i++;
    } else if (text[i] == 'x') {
      std::size_t digits = 0;
      const auto count = std::stoul(text.substr(i + 1), &digits);
      bytes.insert(bytes.end(), count - 1, bytes.back());
      i += 1 + digits;
    } else {
      bytes.push_back(static_cast<std::uint8_t>(std::stoul(text.substr(i, 2), nullptr, 16)));
      i += 2;
    }
  }
  return bytes;
}

}  // namespace wirelines::host
