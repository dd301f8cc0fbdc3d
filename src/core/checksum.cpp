// Sums of words, taken many at a time in the machine's byte order: swapping the bytes of every word swaps those of
// their one's-complement sum, so that one swap at the end is enough.
#include "core/checksum.hpp"

#include <algorithm>
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

// The sum modulo 2^64 - 1, and so modulo 2^16 - 1; 0 only when every byte is 0.
uint64_t wide_sum(const uint8_t* p, uint32_t n) {
  // Eight sums of 32-bit words, none of which can overflow in 2^32 bytes: no carry is looked at in the long loop.
  uint64_t lanes[8] = {};
  for (; n >= 32; n -= 32, p += 32) {
    for (std::size_t i = 0; i < 8; ++i) lanes[i] += word_at<uint32_t>(p + 4 * i);
  }
  uint64_t sum = 0;
  for (const uint64_t lane : lanes) sum = add(sum, lane);
  for (; n >= 8; n -= 8, p += 8) sum = add(sum, word_at<uint64_t>(p));
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

uint16_t complement(uint64_t sum) {
  sum = (sum >> 32) + (sum & 0xFFFFFFFF);
  sum = (sum >> 32) + (sum & 0xFFFFFFFF);
  sum = (sum >> 16) + (sum & 0xFFFF);
  sum = (sum >> 16) + (sum & 0xFFFF);
  const auto folded = static_cast<uint16_t>(~sum);
  if constexpr (std::endian::native == std::endian::big) return folded;
  return static_cast<uint16_t>(folded << 8 | folded >> 8);
}

}  // namespace

PseudoHeader IpPsuadoHeder(Bytes header) {
  PseudoHeader pseudo;
  pseudo.length = 12;
  for (uint32_t i = 0; i < 8; ++i) pseudo.bytes[i] = header.u8(12 + i);
  pseudo.bytes[9] = header.u8(9);
  const uint32_t length = header.be16(2) - (header.u8(0) & 15U) * 4;
  pseudo.bytes[10] = static_cast<uint8_t>(length >> 8);
  pseudo.bytes[11] = static_cast<uint8_t>(length);
  return pseudo;
}

PseudoHeader Ip6PseudoHeader(Bytes header) {
  PseudoHeader pseudo;
  pseudo.length = 40;
  const Bytes addresses = header.sub(8, 32);
  std::copy_n(addresses.data(), addresses.readable(), pseudo.bytes.begin());
  return pseudo;
}

void PseudoHeader::set_upper_layer(uint32_t upper_length, uint8_t protocol) {
  for (uint32_t i = 0; i < 4; ++i) bytes[32 + i] = static_cast<uint8_t>(upper_length >> (24 - 8 * i));
  bytes[39] = protocol;
}

uint16_t IpCheckSum(Bytes data) {
  return complement(wide_sum(data.data(), data.readable()));
}

uint16_t CulUdpChksum(Bytes message, Bytes pseudo_header) {
  return complement(
      add(wide_sum(pseudo_header.data(), pseudo_header.readable()), wide_sum(message.data(), message.readable())));
}

}  // namespace wirelines
