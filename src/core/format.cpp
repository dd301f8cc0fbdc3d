// The one renderer of line texts.
#include "core/format.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "core/codepage932.hpp"

namespace wirelines {

namespace {

using format_detail::Kind;
using format_detail::Piece;

// "00" to "FF" and "00" to "99", two characters each.
constexpr auto kHexPairs = [] {
  std::array<char, 512> pairs{};
  for (std::size_t i = 0; i < 256; ++i) {
    pairs[2 * i] = "0123456789ABCDEF"[i >> 4];
    pairs[2 * i + 1] = "0123456789ABCDEF"[i & 15];
  }
  return pairs;
}();
constexpr auto kDecimalPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
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

// Collects a text of at most kMaxText bytes, and one byte more: what follows the cut tells whether it divides a
// double-byte character.
class Writer {
 public:
  explicit Writer(char* out) : out_(out) {}

  void put(const char* text, uint32_t n) {
    const uint32_t room = kMaxText - length_;
    if (n <= room) [[likely]] {
      copy_short(out_ + length_, text, n);
      length_ += n;
      return;
    }
    if (over_) return;
    std::memcpy(out_ + length_, text, room);
    length_ = kMaxText;
    next_ = text[room];
    over_ = true;
  }

  void put(char c) { put(&c, 1); }

  void put_text(const Value& value) {
    uint32_t n = value.length;
    if (const void* zero = n != 0 ? std::memchr(value.text, 0, n) : nullptr) {
      n = static_cast<uint32_t>(static_cast<const char*>(zero) - value.text);
    }
    if (!value.in_parens) return put(value.text, n);
    if (n == 0) return;
    put('(');
    put(value.text, n);
    put(')');
  }

  void put_decimal(uint32_t v, uint32_t digits) {
    char text[40];
    char* const end = text + sizeof text;
    char* p = end;
    while (v >= 100) {
      p -= 2;
      std::memcpy(p, &kDecimalPairs[2 * (v % 100)], 2);
      v /= 100;
    }
    if (v >= 10) {
      p -= 2;
      std::memcpy(p, &kDecimalPairs[2 * v], 2);
    } else {
      *--p = static_cast<char>('0' + v);
    }
    finish_number(p, end, digits);
  }

  void put_hex(uint32_t v, uint32_t digits) {
    char text[40];
    char* const end = text + sizeof text;
    char* p = end;
    do {
      p -= 2;
      std::memcpy(p, &kHexPairs[2 * (v & 255)], 2);
      v >>= 8;
    } while (v != 0);
    if (*p == '0' && p + 1 < end) ++p;
    finish_number(p, end, digits);
  }

  void put_real(double v) {
    char text[400];
    const auto result = std::to_chars(text, text + sizeof text, v, std::chars_format::fixed, 6);
    put(text, static_cast<uint32_t>(result.ptr - text));
  }

  uint32_t finish() {
    if (over_) {
      out_[kMaxText] = next_;
      length_ = cut_length({out_, kMaxText + 1}, kMaxText);
    }
    out_[length_] = 0;
    return length_;
  }

 private:
  void finish_number(char* p, char* end, uint32_t digits) {
    const auto least = std::min(digits, 32U);
    while (static_cast<uint32_t>(end - p) < least) *--p = '0';
    put(p, static_cast<uint32_t>(end - p));
  }

  char* out_;
  uint32_t length_ = 0;
  bool over_ = false;
  char next_ = 0;
};

}  // namespace

uint32_t render(char* out, const FormatPieces& format, const Value* values, uint32_t step) {
  Writer writer(out);
  const char* text = format.text;
  for (uint32_t i = 0; i < format.count; ++i, values += step) {
    const Piece piece = format.pieces[i];
    writer.put(text, piece.literal);
    text += piece.literal + piece.skip;
    switch (piece.kind) {
      case Kind::kUnsigned: writer.put_decimal(static_cast<uint32_t>(values->number), piece.digits); break;
      case Kind::kHex: writer.put_hex(static_cast<uint32_t>(values->number), piece.digits); break;
      case Kind::kSigned: {
        const auto v = static_cast<uint32_t>(values->number);
        const bool negative = static_cast<int32_t>(v) < 0;
        if (negative) writer.put('-');
        writer.put_decimal(negative ? 0U - v : v, piece.digits);
        break;
      }
      case Kind::kReal: writer.put_real(values->real); break;
      case Kind::kText: writer.put_text(*values); break;
      case Kind::kNone: break;
    }
  }
  writer.put(text, format.tail);
  return writer.finish();
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
