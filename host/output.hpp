// Standard output behind one fixed buffer: nothing is allocated and nothing formatted by a library on the way of a
// line.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace wirelines::host {

class Output {
 public:
  explicit Output(int fd) : fd_(fd) {}
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void append(std::string_view text) {
    if (text.size() > room()) {
      append_in_parts(text);
      return;
    }
    std::memcpy(next_, text.data(), text.size());
    next_ += text.size();
  }

  void append(char c) {
    if (room() == 0) flush();
    *next_++ = c;
  }

  void blanks(std::size_t count) {
    while (count-- > 0) append(' ');
  }

  // Room for `size` bytes, at most the buffer's: written to by the caller, who then tells where it ended.
  char* reserve(std::size_t size) {
    if (room() < size) flush();
    return next_;
  }
  void commit(char* end) { next_ = end; }

  void number(std::uint64_t value) {
    if (room() < 20) flush();  // the longest: 18446744073709551615
    next_ = std::to_chars(next_, next_ + 20, value).ptr;
  }

  // `value` with zeros in front to `width` digits; at most 10.
  void number(std::uint64_t value, int width) {
    for (std::uint64_t limit = 10; width > 1; width--, limit *= 10) {
      if (value < limit) append('0');
    }
    number(value);
  }

  // `value` with blanks in front to `width` columns.
  void right(std::uint64_t value, std::size_t width) {
    std::array<char, 20> digits;  // not initialised either
    const auto size = static_cast<std::size_t>(std::to_chars(digits.begin(), digits.end(), value).ptr - digits.data());
    if (size < width) blanks(width - size);
    append({digits.data(), size});
  }

  // Writes what is buffered. After the first failed write everything is dropped: the work can go on or stop, and
  // error() tells.
  void flush();

  // The errno of the write that failed, or 0.
  [[nodiscard]] int error() const { return error_; }

 private:
  [[nodiscard]] std::size_t room() const { return static_cast<std::size_t>(buffer_.data() + buffer_.size() - next_); }
  void append_in_parts(std::string_view text);

  int fd_;
  int error_ = 0;
  std::array<char, 65536> buffer_;  // not initialised: only what lies before next_ is ever read
  char* next_ = buffer_.data();
};

}  // namespace wirelines::host
