// Sums of words, taken many at a time in the machine's byte order: swapping the bytes of every word swaps those of
// their one's-complement sum, so that one swap at the end is enough.
#include "core/checksum.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace wirelines {

namespace {

template <typename Word>
Word word_at(const uint8_t* p) {
  Word word;
  std::memcpy(&word, p, sizeof word);
  return word;
}

uint64_t add(uint64_t a, uint64_t b) {
  const uint64_t sum = a + b;
  return sum + (sum < b ? 1 : 0);
}

using Words [[gnu::vector_size(16)]] = uint64_t;

// Sums of whole words and of their upper halves. The whole may overflow; without the upper halves it does not, which
// gives the sum of the lower ones back. So no carry is looked at on the way.
struct Sums {
  Words whole{};
  Words upper{};

  [[gnu::always_inline]] void add_words(Words words) {
    whole += words;
    upper += words >> 32;
  }
  [[nodiscard]] uint64_t folded() const {
    const uint64_t halves = upper[0] + upper[1];
    return add(whole[0] + whole[1] - (halves << 32), halves << 32 | halves >> 32);
  }
};

// Fewer than 16 bytes.
uint64_t short_sum(const uint8_t* p, uint32_t n) {
  uint64_t sum = 0;
  if ((n & 8) != 0) {
    sum = word_at<uint64_t>(p);
    p += 8;
  }
  if ((n & 4) != 0) {
    sum = add(sum, word_at<uint32_t>(p));
    p += 4;
  }
  if ((n & 2) != 0) {
    sum = add(sum, word_at<uint16_t>(p));
    p += 2;
  }
  if ((n & 1) != 0) {
    const uint8_t last[2] = {*p, 0};
    sum = add(sum, word_at<uint16_t>(last));
  }
  return sum;
}

// The sum modulo 2^64 - 1, and so modulo 2^16 - 1; 0 only when every byte is 0.
uint64_t wide_sum(const uint8_t* p, uint32_t n) {
  constexpr std::ptrdiff_t kStep = sizeof(Words);
  if (n < kStep) return short_sum(p, n);
  const uint8_t* const end = p + n;
  Sums sums;
  for (; end - p >= 2 * kStep; p += 2 * kStep) {
    sums.add_words(word_at<Words>(p));
    sums.add_words(word_at<Words>(p + kStep));
  }
  if (end - p >= kStep) sums.add_words(word_at<Words>(p));
  // What is left, in one step with bytes before it that do not count. An odd number of bytes stands on the wrong side
  // of their words.
  static constexpr auto kMasks = [] {
    std::array<uint8_t, 2 * kStep> masks{};
    std::fill(masks.begin() + kStep, masks.end(), uint8_t{0xFF});
    return masks;
  }();
  Sums last;
  last.add_words(word_at<Words>(end - kStep) & word_at<Words>(kMasks.data() + n % kStep));
  return add(sums.folded(), std::rotr(last.folded(), (n & 1) != 0 ? 8 : 0));
}

uint16_t complement(uint64_t sum) {
  sum = (sum >> 32) + (sum & 0xFFFFFFFF);
  sum = (sum >> 32) + (sum & 0xFFFFFFFF);
  sum = (sum >> 16) + (sum & 0xFFFF);
  sum = (sum >> 16) + (sum & 0xFFFF);
  const auto folded = static_cast<uint16_t>(~sum);
  if constexpr (std::endian::native == std::endian::big) return folded;
  return static_cast<uint16_t>(folded << 8 | folded >> 8);
}

uint64_t wide_sum(const Bytes& data) {
  return wide_sum(data.data(), data.readable());
}

uint64_t wide_sum(const PseudoHeader& pseudo_header) {
  const uint64_t numbers = uint64_t{pseudo_header.upper_length} + pseudo_header.protocol;
  return add(wide_sum(pseudo_header.addresses), std::endian::native == std::endian::big ? numbers : numbers << 8);
}

}  // namespace

PseudoHeader IpPsuadoHeder(const Bytes& header) {
  return {header.sub(12, 8), (header.be16(2) - (header.u8(0) & 15U) * 4) & 0xFFFF, header.u8(9)};
}

PseudoHeader Ip6PseudoHeader(const Bytes& header) {
  return {header.sub(8, 32)};
}

uint16_t IpCheckSum(const Bytes& data) {
  return complement(wide_sum(data));
}

uint16_t IpCheckSum(const PseudoHeader& pseudo_header) {
  return complement(wide_sum(pseudo_header));
}

uint16_t CulUdpChksum(const Bytes& message, Bytes pseudo_header) {
  return complement(add(wide_sum(pseudo_header), wide_sum(message)));
}

uint16_t CulUdpChksum(const Bytes& message, const PseudoHeader& pseudo_header) {
  return complement(add(wide_sum(pseudo_header), wide_sum(message)));
}

}  // namespace wirelines
