// What is put out, behind one buffer: nothing is allocated and nothing formatted by a library on the way of a line.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace wirelines::host {

class Output {
 public:
  // To a file or pipe, which gets the text whenever the buffer is full.
  explicit Output(int fd) : fd_(fd) {}
  // To memory: the buffer grows, and text() is what was put out since clear().
  Output() = default;
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
    if (room() == 0) make_room(1);
    *next_++ = c;
  }

  void blanks(std::size_t count) {
    char* const to = reserve(count);
    std::memset(to, ' ', count);
    commit(to + count);
  }

  // Room for `size` bytes, at most 65536: written to by the caller, who then tells where it ended.
  char* reserve(std::size_t size) {
    if (room() < size) make_room(size);
    return next_;
  }
  void commit(char* end) { next_ = end; }

  void number(std::uint64_t value) {
    if (room() < 20) make_room(20);  // the longest: 18446744073709551615
    next_ = std::to_chars(next_, next_ + 20, value).ptr;
  }

  // `value` with zeros in front to `width` digits; at most 20.
  void number(std::uint64_t value, int width) {
    char* const to = reserve(20);
    auto rest = value;
    for (int i = width; i-- > 0; rest /= 10) to[i] = static_cast<char>('0' + rest % 10);
    if (rest != 0) return number(value);
    commit(to + width);
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

  // Writes the text of another output behind that, without another copy of it.
  void append(const Output& other);

  [[nodiscard]] std::string_view text() const {
    return {buffer_.get(), static_cast<std::size_t>(next_ - buffer_.get())};
  }
  void clear() { next_ = buffer_.get(); }

  // The errno of the write that failed, or 0.
  [[nodiscard]] int error() const { return error_; }

 private:
  static constexpr std::size_t kBuffer = 65536;
  static constexpr int kMemory = -1;

  [[nodiscard]] std::size_t room() const { return static_cast<std::size_t>(buffer_.get() + size_ - next_); }
  void make_room(std::size_t size);
  void append_in_parts(std::string_view text);
  void write_all(std::string_view text);

  int fd_ = kMemory;
  int error_ = 0;
  std::size_t size_ = kBuffer;
  std::unique_ptr<char[]> buffer_ = std::make_unique_for_overwrite<char[]>(kBuffer);
  char* next_ = buffer_.get();
};

}  // namespace wirelines::host
