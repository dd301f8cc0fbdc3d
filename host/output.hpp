// What is put out, behind one buffer: nothing is allocated and nothing formatted by a library on the way of a line.
#pragma once

#include <algorithm>
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
    copy(next_, text);
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
  void number(std::uint64_t value, int width) { Piece(*this, 20).number(value, width); }

  // Several texts and numbers for which room is asked once: where the next one goes can stay in a register meanwhile.
  class Piece {
   public:
    Piece(Output& out, std::size_t room) : out_(out), next_(out.reserve(room)) {}
    ~Piece() { out_.commit(next_); }
    Piece(const Piece&) = delete;
    Piece& operator=(const Piece&) = delete;

    void append(char c) { *next_++ = c; }
    void append(std::string_view text) {
      copy(next_, text);
      next_ += text.size();
    }

    // Texts and numbers in a column: with up to 16 blanks to `width`, for which there must be room in any case.
    void left(std::string_view text, std::size_t width) {
      copy(next_, text);
      std::memset(next_ + text.size(), ' ', kShort);
      next_ += std::max(text.size(), width);
    }
    void right(std::uint64_t value, std::size_t width) {
      std::memset(next_, ' ', kShort);
      auto begin = width;
      for (auto rest = value; begin == width || rest != 0; rest /= 10) {
        if (begin == 0) return number(value);
        next_[--begin] = static_cast<char>('0' + rest % 10);
      }
      next_ += width;
    }

    void number(std::uint64_t value) { next_ = std::to_chars(next_, next_ + 20, value).ptr; }
    void number(std::uint64_t value, int width) {
      auto rest = value;
      for (int i = width; i-- > 0; rest /= 10) next_[i] = static_cast<char>('0' + rest % 10);
      if (rest != 0) return number(value);
      next_ += width;
    }

   private:
    Output& out_;
    char* next_;
  };

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
  static constexpr std::size_t kShort = 16;
  static constexpr int kMemory = -1;

  // Most texts are a few bytes, for which the call of a library would cost more than the copy.
  static void copy(char* to, std::string_view text) {
    if (text.size() > kShort) {
      std::memcpy(to, text.data(), text.size());
    } else if (text.size() >= 8) {
      copy_ends<8>(to, text);
    } else if (text.size() >= 4) {
      copy_ends<4>(to, text);
    } else {
      for (std::size_t i = 0; i < text.size(); i++) to[i] = text[i];
    }
  }
  // Of a text of up to twice that size: the pieces overlap.
  template <std::size_t kPiece>
  static void copy_ends(char* to, std::string_view text) {
    const std::size_t last = text.size() - kPiece;
    std::memcpy(to, text.data(), kPiece);
    std::memcpy(to + last, text.data() + last, kPiece);
  }

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
