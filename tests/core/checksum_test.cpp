#include "core/checksum.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <vector>

#include "support/cases.hpp"
#include "wirelines.h"

namespace wirelines::test {

namespace {

// The definition, word by word.
uint32_t slow_checksum(std::vector<uint8_t> bytes) {
  if (bytes.size() % 2 != 0) bytes.push_back(0);
  uint32_t sum = 0;
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    sum += static_cast<uint32_t>(bytes[i] << 8 | bytes[i + 1]);
    sum = (sum & 0xFFFF) + (sum >> 16);
  }
  return ~sum & 0xFFFF;
}

TEST(Checksum, AsDefinedAtEveryLengthAndAlignment) {
  std::mt19937 random(7);
  for (uint32_t length = 0; length < 300; ++length) {
    for (uint32_t skip = 0; skip < 9; ++skip) {
      // A heap block of exactly the bytes; every third one saturated, so that carries run through.
      const auto block = std::make_unique<uint8_t[]>(skip + length);
      for (uint32_t i = 0; i < skip + length; ++i) block[i] = length % 3 == 0 ? 0xFF : static_cast<uint8_t>(random());
      const uint8_t* const data = block.get() + skip;
      const std::vector<uint8_t> message(data, data + length);
      ASSERT_EQ(::IpCheckSum(data, static_cast<int32_t>(length)), slow_checksum(message)) << length << " at " << skip;

      uint8_t pseudo[40];
      for (uint8_t& byte : pseudo) byte = static_cast<uint8_t>(random());
      const uint32_t pseudo_length = length % 2 == 0 ? 12 : 40;
      std::vector<uint8_t> whole(pseudo, pseudo + pseudo_length);
      whole.insert(whole.end(), message.begin(), message.end());
      ASSERT_EQ(::CulUdpChksum(data, static_cast<int32_t>(length), pseudo, static_cast<int32_t>(pseudo_length)),
                slow_checksum(whole))
          << length << " at " << skip;
    }
  }
}

TEST(Checksum, ManyCarriesAndNothingToSum) {
  const std::vector<uint8_t> ones(70001, 0xFF);
  EXPECT_EQ(::IpCheckSum(ones.data(), 70000), 0U);
  EXPECT_EQ(::IpCheckSum(ones.data(), 70001), 0x00FFU);
  const std::vector<uint8_t> zeros(64, 0);
  EXPECT_EQ(::IpCheckSum(zeros.data(), 64), 0xFFFFU);
  EXPECT_EQ(::IpCheckSum(nullptr, 0), 0xFFFFU);
  EXPECT_EQ(::IpCheckSum(ones.data(), -1), 0xFFFFU);
  EXPECT_EQ(::CulUdpChksum(nullptr, 0, ones.data(), 12), 0U);
}

TEST(Checksum, PseudoHeader) {
  const auto header = bytes_of("46 00 0120 0000 0000 40 11 0000 C0000201 C6336402");
  std::vector<uint8_t> pseudo(12, 0xEE);
  ::IpPsuadoHeder(header.data(), pseudo.data());
  EXPECT_EQ(pseudo, bytes_of("C0000201 C6336402 00 11 0108"));

  const auto too_short = bytes_of("4F 00 0010 0000 0000 40 06 0000 C0000201 C6336402");
  ::IpPsuadoHeder(too_short.data(), pseudo.data());
  EXPECT_EQ(pseudo, bytes_of("C0000201 C6336402 00 06 FFD4"));
}

}  // namespace

}  // namespace wirelines::test
