// Printf formats as they stand in the decoders, checked against their values and taken apart by the compiler.
//
// Known conversions: %u %X %d %lu %f %s, with an optional zero flag, width and precision (%0.4X, %2.2u). Anything else
// that begins with '%', such as "%0.2/", is not a conversion: it prints as it stands and takes no value.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "core/bytes.hpp"

namespace wirelines {

constexpr uint32_t kMaxText = 128;  // bytes of a line's text, without its terminator

// A text that shows as "(text)", or as nothing when it is empty.
struct Parens {
  std::string_view text;
};
constexpr Parens parens(std::string_view text) {
  return {text};
}

// One value for a conversion. Texts end at their first zero byte.
struct Value {
  union {
    uint64_t number;
    double real;
    const char* text;
  };
  uint32_t length = 0;
  bool in_parens = false;

  template <std::integral T>
  constexpr Value(T v) : number(static_cast<uint32_t>(v)) {}
  constexpr Value(double v) : real(v) {}
  constexpr Value(std::string_view v) : text(v.data()), length(static_cast<uint32_t>(v.size())) {}
  constexpr Value(const char* v) : Value(std::string_view(v)) {}
  constexpr Value(Parens v) : Value(v.text) { in_parens = true; }
  Value(Bytes v) : Value(v.text()) {}
};

template <typename T>
concept TextLike = std::convertible_to<T, std::string_view> || std::same_as<std::remove_cvref_t<T>, Parens> ||
    std::same_as<std::remove_cvref_t<T>, Bytes>;
template <typename T>
concept Number = std::integral<std::remove_cvref_t<T>> && sizeof(T) <= 4;

namespace format_detail {

enum class Kind : uint8_t { kNone, kUnsigned, kSigned, kHex, kReal, kText };

struct Piece {
  uint8_t literal = 0;  // bytes that print as they stand before the conversion
  uint8_t skip = 0;     // bytes of the conversion itself
  Kind kind = Kind::kNone;
  uint8_t digits = 0;  // least number of digits
};

constexpr bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// The conversion that `text` begins with, or kind kNone.
constexpr Piece conversion(std::string_view text) {
  std::size_t i = 1;
  uint32_t width = 0;
  uint32_t precision = 0;
  bool zero = false;
  if (i < text.size() && text[i] == '0') {
    zero = true;
    ++i;
  }
  for (; i < text.size() && is_digit(text[i]); ++i) width = width * 10 + static_cast<uint32_t>(text[i] - '0');
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && is_digit(text[i]); ++i) {
      precision = precision * 10 + static_cast<uint32_t>(text[i] - '0');
    }
  }
  if (i < text.size() && text[i] == 'l') ++i;
  if (i >= text.size()) return {};
  // A width above the precision would ask for blanks, which no line has.
  if (width > precision && !zero) return {};
  Piece piece;
  piece.skip = static_cast<uint8_t>(i + 1);
  piece.digits = static_cast<uint8_t>(width > precision ? width : precision);
  switch (text[i]) {
    case 'u': piece.kind = Kind::kUnsigned; break;
    case 'd': piece.kind = Kind::kSigned; break;
    case 'X': piece.kind = Kind::kHex; break;
    case 'f': piece.kind = Kind::kReal; break;
    case 's': piece.kind = Kind::kText; break;
    default: return {};
  }
  return piece;
}

// Bytes that a conversion can take; texts are counted when they are known.
constexpr uint32_t longest(const Piece& piece) {
  switch (piece.kind) {
    case Kind::kUnsigned: return piece.digits > 10 ? piece.digits : 10;
    case Kind::kSigned: return piece.digits > 10 ? piece.digits + 1U : 11;
    case Kind::kHex: return piece.digits > 8 ? piece.digits : 8;
    case Kind::kReal: return kMaxText + 1;
    case Kind::kText:
    case Kind::kNone: break;
  }
  return 0;
}

template <typename T>
constexpr bool accepts(Kind kind) {
  switch (kind) {
    case Kind::kUnsigned:
    case Kind::kHex:
    case Kind::kSigned: return Number<T>;
    case Kind::kReal: return std::same_as<std::remove_cvref_t<T>, double>;
    case Kind::kText: return TextLike<T>;
    case Kind::kNone: break;
  }
  return false;
}

// Not constexpr on purpose: reaching one of these makes the format an error when it is compiled, and names the reason.
inline void format_takes_more_or_fewer_values() {}
inline void format_and_value_are_of_different_kinds() {}
inline void format_is_too_long() {}

}  // namespace format_detail

// A format taken apart.
struct FormatPieces {
  static constexpr uint32_t kMaxConversions = 13;

  const char* text = nullptr;
  uint32_t longest = 0;  // bytes that literals and numbers can take together; a format with %f has no bound
  uint8_t count = 0;     // conversions
  uint8_t tail = 0;      // bytes after the last conversion
  format_detail::Piece pieces[kMaxConversions] = {};

  constexpr FormatPieces() = default;
  explicit constexpr FormatPieces(std::string_view format) : text(format.data()) {
    if (format.size() > 120) format_detail::format_is_too_long();
    std::size_t literal = 0;
    for (std::size_t i = 0; i < format.size();) {
      const auto piece = format[i] == '%' ? format_detail::conversion(format.substr(i)) : format_detail::Piece{};
      if (piece.kind == format_detail::Kind::kNone) {
        ++literal;
        ++i;
        continue;
      }
      if (count == kMaxConversions) format_detail::format_is_too_long();
      longest += static_cast<uint32_t>(literal) + format_detail::longest(piece);
      pieces[count] = piece;
      pieces[count].literal = static_cast<uint8_t>(literal);
      ++count;
      i += piece.skip;
      literal = 0;
    }
    tail = static_cast<uint8_t>(literal);
    longest += tail;
  }
};

// A format whose conversions take Args in order. (The pieces are a member because clang 14 cannot compile a consteval
// constructor of a class that has a base.)
template <typename... Args>
struct Format {
  FormatPieces pieces;

  template <std::size_t N>
  consteval Format(const char (&format)[N]) : pieces(std::string_view(format, N - 1)) {
    if (pieces.count != sizeof...(Args)) format_detail::format_takes_more_or_fewer_values();
    std::size_t i = 0;
    const bool same_kinds = (true && ... && format_detail::accepts<Args>(pieces.pieces[i++].kind));
    if (!same_kinds) format_detail::format_and_value_are_of_different_kinds();
  }
};

// A format that gives one number to each of its conversions.
struct NumberFormat {
  FormatPieces pieces;

  template <std::size_t N>
  consteval NumberFormat(const char (&format)[N]) : pieces(std::string_view(format, N - 1)) {
    if (pieces.count == 0) format_detail::format_takes_more_or_fewer_values();
    for (uint32_t i = 0; i < pieces.count; ++i) {
      if (!format_detail::accepts<uint32_t>(pieces.pieces[i].kind)) {
        format_detail::format_and_value_are_of_different_kinds();
      }
    }
  }
};

// Renders into `out`, which has room for kMaxText bytes and a terminator, and returns the length. Conversion i takes
// values[i * step]. A text that is longer is cut, never inside a double-byte character.
uint32_t render(char* out, const FormatPieces& format, const Value* values, uint32_t step);

// Where to cut `text` so that at most `room` bytes stay and no double-byte character of code page 932 is divided.
uint32_t cut_length(std::string_view text, uint32_t room);

// Small texts that are not lines: what fits in a buffer of at least kMaxText + 1 bytes.
struct TextBuffer {
  char bytes[kMaxText + 1];
  uint32_t length = 0;

  template <typename... Args>
  explicit TextBuffer(Format<std::type_identity_t<Args>...> format, const Args&... args) {
    const Value values[] = {Value(args)..., Value(0)};
    length = render(bytes, format.pieces, values, 1);
  }
  [[nodiscard]] std::string_view view() const { return {bytes, length}; }
  operator std::string_view() const { return view(); }
};

}  // namespace wirelines
