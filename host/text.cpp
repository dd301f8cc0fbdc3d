#include "text.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace wirelines::host {

namespace {

constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";  // U+FFFD

constexpr bool plain(unsigned char byte) {
  return byte >= 0x20 && byte < 0x7F;
}

constexpr bool lead(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

constexpr std::size_t kWord = sizeof(std::uint64_t);

std::uint64_t word_at(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, kWord);
  return word;
}

// The high bit of each byte that is not plain, and perhaps of bytes behind the first of them: the high bit is set when
// a byte is above 0x7E or set already, and in the last term when it is below 0x20; a borrow into the next byte can only
// come from a byte that is found anyway.
constexpr std::uint64_t unplain_bytes(std::uint64_t word) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  return ((word + kOnes) | word | (word - 0x20 * kOnes)) & (0x80 * kOnes);
}

bool plain_word(const char* bytes) {
  return unplain_bytes(word_at(bytes)) == 0;
}

template <typename Sink>
void append_picture(Sink& out, unsigned char control) {
  const char picture[] = {'\xE2', '\x90', static_cast<char>(0x80 + (control == 0x7F ? 0x21 : control))};
  out.append(std::string_view(picture, sizeof picture));
}

// What a conversion must not let through: C1 controls (U+0080 to U+009F) and anything below them.
bool control(std::string_view utf8) {
  const auto first = static_cast<unsigned char>(utf8[0]);
  return utf8.size() == 1 ? !plain(first) : first == 0xC2 && static_cast<unsigned char>(utf8[1]) < 0xA0;
}

}  // namespace

// Eight bytes at a time, the last eight perhaps for the second time: nearly all lines are plain, and every line comes
// this way.
bool is_plain(std::string_view bytes) {
  if (bytes.size() < kWord) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return plain(static_cast<unsigned char>(c)); });
  }
  const char* const last = bytes.data() + bytes.size() - kWord;
  for (const char* p = bytes.data(); p < last; p += kWord) {
    if (!plain_word(p)) return false;
  }
  return plain_word(last);
}

// A line has room for 129 bytes, so whole words up to its 128th can be read wherever it ends.
char* copy_plain_line(char* to, const char* text) {
  static_assert(std::endian::native == std::endian::little);
  constexpr std::size_t kLongest = 128;
  for (std::size_t i = 0; i < kLongest; i += kWord) {
    const std::uint64_t word = word_at(text + i);
    std::memcpy(to + i, &word, kWord);
    const std::uint64_t found = unplain_bytes(word);
    if (found == 0) continue;
    const std::size_t first = i + static_cast<std::size_t>(std::countr_zero(found)) / 8;
    return text[first] == 0 ? to + first : nullptr;
  }
  return to + kLongest;
}

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
    if (plain(byte)) {
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
    const std::string_view character(utf8.data(), utf8.size() - to_left);
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
