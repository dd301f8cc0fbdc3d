// Printf formats as they stand in the decoders, checked against their values and taken apart by the compiler.
//
// Known conversions: %u %X %d %lu %f %s, with an optional zero flag, width and precision (%0.4X, %2.2u). Anything else
// that begins with '%', such as "%0.2/", is not a conversion: it prints as it stands and takes no value.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "core/bytes.hpp"
#include "core/hexdigits.hpp"

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
  static constexpr uint32_t kMaxNumbers = 3;

  FormatPieces pieces;

  template <std::size_t N>
  consteval NumberFormat(const char (&format)[N]) : pieces(std::string_view(format, N - 1)) {
    if (pieces.count == 0 || pieces.count > kMaxNumbers) format_detail::format_takes_more_or_fewer_values();
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

// What a conversion writes; each returns its end.
char* put_decimal(char* to, uint32_t v, uint32_t digits);
char* put_signed(char* to, uint32_t v, uint32_t digits);
char* put_hex(char* to, uint32_t v, uint32_t digits);

// Texts up to their first zero byte; null, with nothing written, when that takes more than `room`.
char* put_text(char* to, std::string_view text, uint32_t room);
char* put_parens(char* to, std::string_view text, uint32_t room);

// 0 to 255 in decimal. Writes four bytes, of which the last are behind its end.
inline char* put_byte(char* to, uint8_t v) {
  struct Digits {
    char text[4];  // the digits, and how many
  };
  static constexpr auto kDigits = [] {
    std::array<Digits, 256> all{};
    for (uint32_t i = 0; i < 256; ++i) {
      char* digit = all[i].text;
      if (i >= 100) *digit++ = static_cast<char>('0' + i / 100);
      if (i >= 10) *digit++ = static_cast<char>('0' + i / 10 % 10);
      *digit++ = static_cast<char>('0' + i % 10);
      all[i].text[3] = static_cast<char>(digit - all[i].text);
    }
    return all;
  }();
  std::memcpy(to, kDigits[v].text, 4);
  return to + kDigits[v].text[3];
}

namespace format_detail {

// Writes a format whose pieces the compiler knows: of each call below there remain a few stores of constant bytes, and
// a call for the number or the text.
class Writer {
 public:
  Writer(char* out, const FormatPieces& format) : to_(out), text_(format.text), room_(kMaxText - format.longest) {}

  [[gnu::always_inline]] void literal(uint32_t size) {
    std::memcpy(to_, text_, size);
    to_ += size;
    text_ += size;
  }

  // False when there is no room.
  template <Number T>
  [[gnu::always_inline]] bool conversion(const Piece& piece, const T& value) {
    literal(piece.literal);
    text_ += piece.skip;
    const auto v = static_cast<uint32_t>(value);
    if (piece.kind == Kind::kHex && piece.digits == 2 * sizeof(T) && sizeof(T) <= 2) {
      for (uint32_t shift = 8 * sizeof(T); shift > 0; to_ += 2) {
        shift -= 8;
        std::memcpy(to_, kHexPairs[v >> shift & 255].data(), 2);
      }
    } else if (piece.kind == Kind::kHex) {
      to_ = put_hex(to_, v, piece.digits);
    } else if (std::same_as<T, uint8_t> && piece.digits <= 1) {
      to_ = put_byte(to_, static_cast<uint8_t>(v));
    } else if (piece.kind == Kind::kSigned) {
      to_ = put_signed(to_, v, piece.digits);
    } else {
      to_ = put_decimal(to_, v, piece.digits);
    }
    return true;
  }
  template <TextLike T>
  [[gnu::always_inline]] bool conversion(const Piece& piece, const T& value) {
    literal(piece.literal);
    text_ += piece.skip;
    char* const end = put(value);
    room_ -= static_cast<uint32_t>(end - to_);
    to_ = end;
    return end != nullptr;
  }

  static bool conversion(const Piece& /*piece*/, double /*value*/) { return false; }  // has no bound: for render()

  [[gnu::always_inline]] char* finish(uint32_t tail) {
    literal(tail);
    *to_ = 0;
    return to_;
  }

 private:
  [[nodiscard]] char* put(Parens value) const { return put_parens(to_, value.text, room_); }
  [[nodiscard]] char* put(Bytes value) const { return put_text(to_, value.text(), room_); }
  [[nodiscard]] char* put(std::string_view value) const { return put_text(to_, value, room_); }

  char* to_;
  const char* text_;
  uint32_t room_;  // for texts
};

// Whether the format is a constant where this stands, and one that Writer can take.
[[gnu::always_inline]] inline bool written_out(const FormatPieces& format) {
  return __builtin_constant_p(format.longest) != 0 && format.longest <= kMaxText;
}

}  // namespace format_detail

// render() for a format and values that stand where the call stands.
template <typename... Args>
[[gnu::always_inline]] inline uint32_t render_here(char* out, const FormatPieces& format, const Args&... args) {
  if (format_detail::written_out(format)) {
    format_detail::Writer writer(out, format);
    std::size_t i = 0;
    if ((true && ... && writer.conversion(format.pieces[i++], args))) [[likely]] {
      return static_cast<uint32_t>(writer.finish(format.tail) - out);
    }
  }
  const FormatPieces pieces = format;  // a copy, so that above the compiler need not think of it as changeable
  const Value values[] = {Value(args)..., Value(0)};
  return render(out, pieces, values, 1);
}

// The same for a number that every conversion shows.
[[gnu::always_inline]] inline uint32_t render_number(char* out, const NumberFormat& format, uint32_t v) {
  if (format_detail::written_out(format.pieces)) {
    format_detail::Writer writer(out, format.pieces);
    const auto conversion = [&](uint32_t i) __attribute__((always_inline)) {
      if (i < format.pieces.count) writer.conversion(format.pieces.pieces[i], v);
    };
    conversion(0);
    conversion(1);
    conversion(2);
    return static_cast<uint32_t>(writer.finish(format.pieces.tail) - out);
  }
  const FormatPieces pieces = format.pieces;
  const Value value(v);
  return render(out, pieces, &value, 0);
}

// Small texts that are not lines: what fits in a buffer of at least kMaxText + 1 bytes.
struct TextBuffer {
  char bytes[kMaxText + 1];
  uint32_t length;

  template <typename... Args>
  explicit TextBuffer(Format<std::type_identity_t<Args>...> format, const Args&... args)
      : length(render_here(bytes, format.pieces, args...)) {}
  [[nodiscard]] std::string_view view() const { return {bytes, length}; }
  operator std::string_view() const { return view(); }
};

}  // namespace wirelines
