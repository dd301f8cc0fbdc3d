// The user's own names in the lines of IPv4, its transports and ARP.
#include <gtest/gtest.h>

#include "support/cases.hpp"
#include "vek4003.h"

namespace wirelines::test {

namespace {

class Nicknames : public testing::Test {
 protected:
  void SetUp() override {
    EXPECT_EQ(NickNameAdd(NICKNAME_STATION, "001122334455", "gate"), nullptr);
    EXPECT_EQ(NickNameAdd(NICKNAME_IP, "192.0.2.1", "printer"), nullptr);
    EXPECT_EQ(NickNameAdd(NICKNAME_PORT, "80", "intranet"), nullptr);
    EXPECT_EQ(NickNameAdd(NICKNAME_TYPE, "1234", "lamps"), nullptr);
    EXPECT_EQ(NickNameAdd(NICKNAME_TYPE, "0800", "never asked for"), nullptr);
  }
  void TearDown() override { NickNameClear(); }

  static void expect_lines(const char* frame, std::initializer_list<const char*> lines) {
    const auto bytes = bytes_of(frame);
    const auto found = decode_and_dump(decode_frame, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    for (const char* line : lines) {
      EXPECT_NE(found.find(line), std::string::npos) << line << "\nnot in\n" << found;
    }
  }
};

TEST_F(Nicknames, TcpOverIpv4) {
  expect_lines(
      "001122334455 66778899AABB 0800 45 00 0028 0000 0000 40 06 0000 C0000201 C6336402"
      "0050 0050 00000000 00000000 5000 0000 0000 0000",
      {"|[Destination Address] 001122334455 (gate)|\n", "|[Protocol Type] 0x0800 (IP)|\n",
       "|[Destination Address] 192.0.2.1 (printer)|\n", "|[Source Address] 198.51.100.2 |\n",
       "|[Source Port] 80 (intranet)|\n", "|[Destination Port] 80 (intranet)|\n"});
}

TEST_F(Nicknames, Redirect) {
  expect_lines(
      "001122334455 66778899AABB 0800 45 00 001C 0000 0000 40 01 0000 C6336402 C0000201"
      "05 00 0000 C0000201",
      {"|[Source Address] 192.0.2.1 (printer)|\n", "|[Router IP Address] 192.0.2.1 (printer)|\n"});
}

TEST_F(Nicknames, Arp) {
  expect_lines(
      "FFFFFFFFFFFF 001122334455 0806 0001 1234 06 04 0001 001122334455 C0000201 000000000000 C0000201",
      {"|[Protocol Type] 0x0806 (ARP)|\n", "|[Protocol Type] 0x1234 (lamps)|\n",
       "|[Sender Hardware Address] 001122334455 (gate)|\n", "|[Sender Protocol Address] 192.0.2.1 (printer)|\n",
       "|[Target Hardware Address] 000000000000 |\n", "|[Target Protocol Address] 192.0.2.1 (printer)|\n"});
}

}  // namespace

}  // namespace wirelines::test
