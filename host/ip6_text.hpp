// IPv6 addresses as text, as inet_ntop has them, which formats each of their words.
#pragma once

#include <arpa/inet.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wirelines::host {

class Ip6Text {
 public:
  explicit Ip6Text(const std::uint8_t* address) {
    // Zeros in front may be those of an IPv4 address in IPv6, which looks different.
    if (address[0] == 0 && address[1] == 0) {
      size_ = std::string_view(inet_ntop(AF_INET6, address, text_.data(), INET6_ADDRSTRLEN)).size();
    } else {
      put(address);
    }
  }
  [[nodiscard]] std::string_view view() const { return {text_.data(), size_}; }

 private:
  // The words of the address, the first of its longest runs of two and more zero words left out.
  void put(const std::uint8_t* address) {
    const auto word = [address](std::size_t i) {
      return static_cast<unsigned>(address[2 * i] << 8 | address[2 * i + 1]);
    };
    std::size_t gap = 8;
    std::size_t gap_size = 1;
    for (std::size_t i = 0, run = 0; i < 8; i++) {
      run = word(i) == 0 ? run + 1 : 0;
      if (run <= gap_size) continue;
      gap_size = run;
      gap = i + 1 - run;
    }
    char* to = text_.data();
    for (std::size_t i = 0; i < 8; i++) {
      if (i == gap) {
        *to++ = ':';
        i += gap_size;
        if (i == 8) *to++ = ':';
      }
      if (i == 8) break;
      if (i > 0) *to++ = ':';
      to = std::to_chars(to, to + 4, word(i), 16).ptr;
    }
    size_ = static_cast<std::size_t>(to - text_.data());
  }

  std::array<char, INET6_ADDRSTRLEN> text_;
  std::size_t size_ = 0;
};

}  // namespace wirelines::host
