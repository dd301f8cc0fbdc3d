// Printable ASCII: what nearly all lines consist of, so that every line is first tried as such.
#pragma once

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace wirelines::host {

constexpr bool is_plain(unsigned char byte) {
  return byte >= 0x20 && byte < 0x7F;
}

// As many bytes as are looked at together.
#ifdef __SSE2__
class Chunk {
 public:
  static constexpr std::size_t kSize = 16;

  explicit Chunk(const char* from) : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))) {}
  void store(char* to) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes_); }

  // A bit for each byte that is not plain; bytes in front of the first.
  [[nodiscard]] std::uint32_t unplain() const {
    // Moved by this much, the plain bytes are the smallest signed ones.
    using Unsigned [[gnu::vector_size(kSize)]] = unsigned char;
    const auto moved = reinterpret_cast<__m128i>(reinterpret_cast<Unsigned>(bytes_) + 0x60);
    return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpgt_epi8(moved, _mm_set1_epi8(0x7E + 0x60 - 0x100))));
  }
  // Likewise for each byte that is this one.
  [[nodiscard]] std::uint32_t equal(char c) const {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(c))));
  }
  static std::size_t first(std::uint32_t unplain) { return static_cast<std::size_t>(std::countr_zero(unplain)); }

 private:
  __m128i bytes_;
};
#else
class Chunk {
 public:
  static constexpr std::size_t kSize = 8;

  explicit Chunk(const char* from) { std::memcpy(&bytes_, from, kSize); }
  void store(char* to) const { std::memcpy(to, &bytes_, kSize); }

  // The high bit of each byte that is not plain; bytes in front of the first. A high bit is set when the byte is above
  // 0x7E or had it set already, and in the last term when it is below 0x20; a borrow into the next byte can only come
  // from a byte that is found anyway.
  [[nodiscard]] std::uint64_t unplain() const {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    return ((bytes_ + kOnes) | bytes_ | (bytes_ - 0x20 * kOnes)) & (0x80 * kOnes);
  }
  [[nodiscard]] std::uint64_t equal(char c) const {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    const auto zero_where_equal = bytes_ ^ static_cast<unsigned char>(c) * kOnes;
    return (zero_where_equal - kOnes) & ~zero_where_equal & (0x80 * kOnes);
  }
  static std::size_t first(std::uint64_t unplain) { return static_cast<std::size_t>(std::countr_zero(unplain)) / 8; }

 private:
  std::uint64_t bytes_;
};
#endif

// Whether every byte is printable ASCII. A chunk at a time, the last bytes perhaps for the second time.
inline bool is_plain(std::string_view bytes) {
  if (bytes.size() < Chunk::kSize) {
    return std::all_of(bytes.begin(), bytes.end(), [](char c) { return is_plain(static_cast<unsigned char>(c)); });
  }
  const char* const last = bytes.data() + bytes.size() - Chunk::kSize;
  for (const char* p = bytes.data(); p < last; p += Chunk::kSize) {
    if (Chunk(p).unplain() != 0) return false;
  }
  return Chunk(last).unplain() == 0;
}

// A line's text in one go, when it is plain: copies it to `to`, which has room for kLineRoom bytes, and returns the end
// of the copy; null when a byte is not printable ASCII, or one of `Special`. A line has room for 129 bytes, so whole
// chunks up to its 128th can be read wherever it ends.
constexpr std::size_t kLineRoom = 128;
template <char... Special>
char* copy_plain_line(char* to, const char* text) {
  for (std::size_t i = 0; i < kLineRoom; i += Chunk::kSize) {
    const Chunk chunk(text + i);
    chunk.store(to + i);
    const auto unplain = (chunk.unplain() | ... | chunk.equal(Special));
    if (unplain == 0) continue;
    const std::size_t end = i + Chunk::first(unplain);
    return text[end] == 0 ? to + end : nullptr;
  }
  return to + kLineRoom;
}

}  // namespace wirelines::host
