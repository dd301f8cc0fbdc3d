// The one renderer of line texts.
#include "core/format.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>

#include "core/codepage932.hpp"
#include "core/hexdigits.hpp"

namespace wirelines {

namespace {

using format_detail::Kind;
using format_detail::Piece;

// "00" to "99".
constexpr auto kDecimalPairs = [] {
  std::array<TwoDigits, 100> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[i] = {static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10)};
  }
  return pairs;
}();

// Short copies in two overlapping moves: most literals and names have 4 to 32 bytes, where a call costs more.
void copy_short(char* to, const char* from, uint32_t n) {
  if (n >= 16) {
    if (n > 32) {
      std::memcpy(to, from, n);
      return;
    }
    char head[16];
    char tail[16];
    std::memcpy(head, from, 16);
    std::memcpy(tail, from + n - 16, 16);
    std::memcpy(to, head, 16);
    std::memcpy(to + n - 16, tail, 16);
  } else if (n >= 8) {
    char head[8];
    char tail[8];
    std::memcpy(head, from, 8);
    std::memcpy(tail, from + n - 8, 8);
    std::memcpy(to, head, 8);
    std::memcpy(to + n - 8, tail, 8);
  } else if (n >= 4) {
    char head[4];
    char tail[4];
    std::memcpy(head, from, 4);
    std::memcpy(tail, from + n - 4, 4);
    std::memcpy(to, head, 4);
    std::memcpy(to + n - 4, tail, 4);
  } else {
    for (uint32_t i = 0; i < n; ++i) to[i] = from[i];
  }
}

constexpr uint32_t kMostDigits = 32;  // of a number, whatever its precision asks for

uint32_t decimal_digits(uint32_t v) {
  if (v < 10000) return v < 100 ? (v < 10 ? 1 : 2) : (v < 1000 ? 3 : 4);
  if (v < 1000000) return v < 100000 ? 5 : 6;
  if (v < 100000000) return v < 10000000 ? 7 : 8;
  return v < 1000000000 ? 9 : 10;
}

char* put_number(char* to, const Piece& piece, uint32_t v) {
  if (piece.kind == Kind::kHex) return put_hex(to, v, piece.digits);
  return piece.kind == Kind::kSigned ? put_signed(to, v, piece.digits) : put_decimal(to, v, piece.digits);
}

std::string_view up_to_zero(std::string_view text) {
  if (text.empty()) return {};
  const void* const zero = std::memchr(text.data(), 0, text.size());
  return zero == nullptr ? text
                         : text.substr(0, static_cast<std::size_t>(static_cast<const char*>(zero) - text.data()));
}

// Most numbers of a format and its literals leave room for what its texts need; then nothing has to be checked. A line
// that may be too long goes through here.
class CarefulWriter {
 public:
  explicit CarefulWriter(char* out) : out_(out) {}

  void put(std::string_view text) {
    const std::size_t n = std::min(text.size(), std::size_t{kMaxText + 1 - length_});
    if (n != 0) std::memcpy(out_ + length_, text.data(), n);
    length_ += static_cast<uint32_t>(n);
  }

  // One byte more than a line holds is kept till here: it tells whether the cut divides a double-byte character.
  uint32_t finish() {
    length_ = cut_length({out_, length_}, kMaxText);
    out_[length_] = 0;
    return length_;
  }

 private:
  char* out_;
  uint32_t length_ = 0;
};

uint32_t render_carefully(char* out, const FormatPieces& format, const Value* values, uint32_t step) {
  CarefulWriter writer(out);
  const char* text = format.text;
  for (uint32_t i = 0; i < format.count; ++i, values += step) {
    const Piece piece = format.pieces[i];
    writer.put({text, piece.literal});
    text += piece.literal + piece.skip;
    if (piece.kind == Kind::kText) {
      const auto shown = up_to_zero({values->text, values->length});
      const bool parentheses = values->in_parens && !shown.empty();
      if (parentheses) writer.put("(");
      writer.put(shown);
      if (parentheses) writer.put(")");
    } else if (piece.kind == Kind::kReal) {
      char digits[400];
      const auto result = std::to_chars(digits, digits + sizeof digits, values->real, std::chars_format::fixed, 6);
      writer.put({digits, result.ptr});
    } else {
      char digits[kMostDigits + 1];
      writer.put({digits, put_number(digits, piece, static_cast<uint32_t>(values->number))});
    }
  }
  writer.put({text, format.tail});
  return writer.finish();
}

}  // namespace

char* put_decimal(char* to, uint32_t v, uint32_t digits) {
  if (v < 100 && digits <= 1) {
    if (v < 10) {
      *to = static_cast<char>('0' + v);
      return to + 1;
    }
    std::memcpy(to, kDecimalPairs[v].data(), 2);
    return to + 2;
  }
  char* const end = to + std::max(decimal_digits(v), std::min(digits, kMostDigits));
  char* p = end;
  for (; v >= 100; v /= 100) {
    p -= 2;
    std::memcpy(p, kDecimalPairs[v % 100].data(), 2);
  }
  if (v >= 10) {
    p -= 2;
    std::memcpy(p, kDecimalPairs[v].data(), 2);
  } else {
    *--p = static_cast<char>('0' + v);
  }
  while (p > to) *--p = '0';
  return end;
}

char* put_hex(char* to, uint32_t v, uint32_t digits) {
  if (digits == 4 && v <= 0xFFFF) {
    std::memcpy(to, kHexPairs[v >> 8].data(), 2);
    std::memcpy(to + 2, kHexPairs[v & 255].data(), 2);
    return to + 4;
  }
  const auto needed = static_cast<uint32_t>(std::bit_width(v | 1) + 3) / 4;
  char* const end = to + std::max(needed, std::min(digits, kMostDigits));
  char* p = end;
  for (; p - to >= 2; v >>= 8) {
    p -= 2;
    std::memcpy(p, kHexPairs[v & 255].data(), 2);
  }
  if (p > to) *to = kHexPairs[v & 15][1];
  return end;
}

char* put_signed(char* to, uint32_t v, uint32_t digits) {
  if (static_cast<int32_t>(v) < 0) {
    *to++ = '-';
    v = 0U - v;
  }
  return put_decimal(to, v, digits);
}

char* put_text(char* to, std::string_view text, uint32_t room) {
  const auto shown = up_to_zero(text);
  const auto n = static_cast<uint32_t>(shown.size());
  if (n > room) return nullptr;
  copy_short(to, shown.data(), n);
  return to + n;
}

char* put_parens(char* to, std::string_view text, uint32_t room) {
  const auto shown = up_to_zero(text);
  if (shown.empty()) return to;
  const auto n = static_cast<uint32_t>(shown.size());
  if (n + 2 > room) return nullptr;
  *to = '(';
  copy_short(to + 1, shown.data(), n);
  to[n + 1] = ')';
  return to + n + 2;
}

uint32_t render(char* out, const FormatPieces& format, const Value* values, uint32_t step) {
  if (format.longest > kMaxText) return render_carefully(out, format, values, step);
  uint32_t room = kMaxText - format.longest;  // for texts
  const char* text = format.text;
  const Value* value = values;
  char* to = out;
  for (const Piece *piece = format.pieces, *const last = piece + format.count; piece != last; ++piece, value += step) {
    copy_short(to, text, piece->literal);
    to += piece->literal;
    text += piece->literal + piece->skip;
    if (piece->kind == Kind::kUnsigned) {
      to = put_decimal(to, static_cast<uint32_t>(value->number), piece->digits);
    } else if (piece->kind == Kind::kText) {
      const std::string_view shown(value->text, value->length);
      char* const end = value->in_parens ? put_parens(to, shown, room) : put_text(to, shown, room);
      if (end == nullptr) return render_carefully(out, format, values, step);
      room -= static_cast<uint32_t>(end - to);
      to = end;
    } else {
      to = put_number(to, *piece, static_cast<uint32_t>(value->number));
    }
  }
  copy_short(to, text, format.tail);
  to += format.tail;
  *to = 0;
  return static_cast<uint32_t>(to - out);
}

uint32_t cut_length(std::string_view text, uint32_t room) {
  if (text.size() <= room) return static_cast<uint32_t>(text.size());
  uint32_t i = 0;
  while (i < room) {
    const bool pair = i + 1 < text.size() && is_lead_byte(text[i]) && is_trail_byte(text[i + 1]);
    if (pair && i + 2 > room) break;
    i += pair ? 2 : 1;
  }
  return i;
}

}  // namespace wirelines
