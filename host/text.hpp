// From the bytes of a line to text that a terminal may see.
#pragma once

#include <iconv.h>

#include <string>
#include <string_view>

#include "output.hpp"

namespace wirelines::host {

// Writes code page 932 bytes as UTF-8. No control character ever gets through: a control byte (below 0x20, 0x7F) is
// shown by its picture, U+2400 to U+2421, so that it can still be told from others; a byte that is no character
// (0x80 and the rest of what code page 932 leaves free) as U+FFFD.
class Text {
 public:
  Text();
  ~Text();
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;

  void append(Output& out, std::string_view bytes);
  void append(std::string& out, std::string_view bytes);

  // Writes the one character that `bytes`, the first of them above 0x7F, begin with; returns how many it took.
  std::size_t append_character(Output& out, std::string_view bytes);

 private:
  template <typename Sink>
  void convert(Sink& out, std::string_view bytes);
  template <typename Sink>
  std::size_t append_one(Sink& out, std::string_view bytes);

  iconv_t converter_;
};

// UTF-8 as the bytes of a line: '?' stands for a character that code page 932 lacks, and text that is not UTF-8 is
// taken for line bytes already.
std::string line_bytes(std::string_view utf8);

}  // namespace wirelines::host
