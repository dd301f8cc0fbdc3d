#include "text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "plain.hpp"

namespace wirelines::host {

namespace {

constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";  // U+FFFD

constexpr bool lead(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

template <typename Sink>
void append_picture(Sink& out, unsigned char control) {
  const char picture[] = {'\xE2', '\x90', static_cast<char>(0x80 + (control == 0x7F ? 0x21 : control))};
  out.append(std::string_view(picture, sizeof picture));
}

// What a conversion must not let through: C1 controls (U+0080 to U+009F) and anything below them.
bool control(std::string_view utf8) {
  const auto first = static_cast<unsigned char>(utf8[0]);
  return utf8.size() == 1 ? !is_plain(first) : first == 0xC2 && static_cast<unsigned char>(utf8[1]) < 0xA0;
}

}  // namespace

// A system without this conversion gives a converter that refuses every character; it may be closed all the same.
Text::Text() : converter_(iconv_open("UTF-8", "CP932")) {}

Text::~Text() {
  iconv_close(converter_);
}

void Text::append(Output& out, std::string_view bytes) {
  convert(out, bytes);
}

void Text::append(std::string& out, std::string_view bytes) {
  convert(out, bytes);
}

template <typename Sink>
void Text::convert(Sink& out, std::string_view bytes) {
  if (is_plain(bytes)) {
    out.append(bytes);
    return;
  }
  while (!bytes.empty()) {
    const auto byte = static_cast<unsigned char>(bytes[0]);
    std::size_t used = 1;
    if (is_plain(byte)) {
      out.append(bytes.substr(0, 1));
    } else if (byte < 0x80) {
      append_picture(out, byte);
    } else {
      used = append_one(out, bytes);
    }
    bytes.remove_prefix(used);
  }
}

// One character that is not ASCII; returns the bytes it took. A lead byte whose pair is no character is bad alone: the
// byte behind it is looked at again, so that a broken pair hides nothing.
template <typename Sink>
std::size_t Text::append_one(Sink& out, std::string_view bytes) {
  const std::size_t size = lead(static_cast<unsigned char>(bytes[0])) ? 2 : 1;
  if (size <= bytes.size()) {
    std::array<char, 2> in{bytes[0], size == 2 ? bytes[1] : '\0'};
    std::array<char, 8> utf8{};
    char* from = in.data();
    char* to = utf8.data();
    std::size_t from_left = size;
    std::size_t to_left = utf8.size();
    const auto result = iconv(converter_, &from, &from_left, &to, &to_left);
    const std::string_view character(utf8.data(), utf8.size() - std::min(to_left, utf8.size()));
    if (result != static_cast<std::size_t>(-1) && !character.empty() && !control(character)) {
      out.append(character);
      return size;
    }
    iconv(converter_, nullptr, nullptr, nullptr, nullptr);
  }
  out.append(kNoCharacter);
  return 1;
}

std::size_t Text::append_character(Output& out, std::string_view bytes) {
  return append_one(out, bytes);
}

std::string line_bytes(std::string_view utf8) {
  if (is_plain(utf8)) return std::string(utf8);
  std::string input(utf8);
  std::string result(utf8.size(), '\0');  // no character takes more bytes than in UTF-8
  char* from = input.data();
  char* to = result.data();
  std::size_t from_left = input.size();
  std::size_t to_left = result.size();
  // iconv says the same of a character that the target lacks and of bytes that are none, so it is asked twice.
  const auto failed = static_cast<std::size_t>(-1);
  iconv_t checker = iconv_open("UTF-8", "UTF-8");
  const bool valid = iconv(checker, &from, &from_left, &to, &to_left) != failed;
  iconv_close(checker);
  if (!valid) return input;

  from = input.data();
  to = result.data();
  from_left = input.size();
  to_left = result.size();
  iconv_t converter = iconv_open("CP932", "UTF-8");
  while (from_left > 0 && iconv(converter, &from, &from_left, &to, &to_left) == failed && to_left > 0) {
    do {  // past the character that is lacking
      from++;
      from_left--;
    } while (from_left > 0 && (static_cast<unsigned char>(*from) & 0xC0) == 0x80);
    *to++ = '?';
    to_left--;
  }
  iconv_close(converter);
  result.resize(result.size() - to_left);
  return result;
}

}  // namespace wirelines::host
