#include "core/protocol_names.hpp"

#include <gtest/gtest.h>

#include <cstring>

#include "vek4003.h"
#include "wirelines.h"

namespace wirelines::test {

namespace {

TEST(ProtocolNames, FirstLastAndUnknown) {
  EXPECT_STREQ(::IpProtocolToName(0), "Hop-by-Hop Options");
  EXPECT_STREQ(::IpProtocolToName(4), "");
  EXPECT_STREQ(::IpProtocolToName(6), "TCP");
  EXPECT_STREQ(::IpProtocolToName(50), "Encapsulationg Security Payload");
  EXPECT_STREQ(::IpProtocolToName(89), "OSPF");
  EXPECT_STREQ(::IpProtocolToName(255), "");

  EXPECT_STREQ(::NwPacketToName(1), "RIP");
  EXPECT_STREQ(::NwPacketToName(4), "IPX");
  EXPECT_STREQ(::NwPacketToName(20), "IPX Broadcast");
  EXPECT_STREQ(::NwPacketToName(255), "");

  EXPECT_STREQ(::NwSocketToName(0x0451), "NCP");
  EXPECT_STREQ(::NwSocketToName(0x0553), "NetBIOS");
  EXPECT_STREQ(::NwSocketToName(0x9001), "NLSP");
  EXPECT_STREQ(::NwSocketToName(0xFFFF), "");

  EXPECT_STREQ(::IcmpTypeInfoToName(0), "Echo Reply");
  EXPECT_STREQ(::IcmpTypeInfoToName(10), "Router Selection");
  EXPECT_STREQ(::IcmpTypeInfoToName(18), "Address Mask Reply");
  EXPECT_STREQ(::IcmpTypeInfoToName(255), "");
}

struct PortCase {
  uint16_t port;
  uint8_t protocol;
  const char* name;
};

TEST(PortNames, TableThenTransport) {
  const PortCase cases[] = {
      {0, kTcp, ""},
      {1, kTcp, "TCPMUX"},
      {57, kUdp, "TERMINAL ACCESS"},
      {63, kTcp, "WHOIS++"},
      {67, kTcp, "BOOTPS/DHCP"},
      {80, kUdp, "WWW"},
      {888, kTcp, "ACCESSBUILDER/CDDBP"},
      {1000, 0, "OCK"},
      {1720, kTcp, "H.323"},
      {1799, kTcp, ""},
      {1800, kTcp, ""},
      {65535, kUdp, ""},
      {100, kTcp, "NEWACCT"},
      {100, kUdp, ""},
      {164, kTcp, "CMIP-AGENT"},
      {164, kUdp, "SMIP-AGENT"},
      {520, kTcp, "EFS"},
      {520, kUdp, "ROUTER"},
      {520, kIcmp, ""},
      {998, kUdp, "PUPARP"},
      {8058, kTcp, "H.245"},
      {8058, kUdp, ""},
  };
  for (const PortCase& c : cases) EXPECT_STREQ(::PortToName(c.port, c.protocol), c.name) << c.port;
  int named = 0;
  for (uint16_t port = 0; port < 1800; ++port) named += ::PortToName(port, 0)[0] != 0;
  EXPECT_EQ(named, 590);
}

TEST(PortNames, ANicknameWins) {
  const char* const longest = "a name as long as a port's may be..";
  ASSERT_EQ(std::strlen(longest), 35U);
  EXPECT_EQ(NickNameAdd(NICKNAME_PORT, "80", "intranet"), nullptr);
  EXPECT_EQ(NickNameAdd(NICKNAME_PORT, "50000", longest), nullptr);
  EXPECT_STREQ(::PortToName(80, kTcp), "intranet");
  EXPECT_STREQ(::PortToName(50000, 0), longest);
  EXPECT_STREQ(::PortToName(81, kTcp), "HOSTS2-NS");
  NickNameClear();
  EXPECT_STREQ(::PortToName(80, kTcp), "WWW");
}

}  // namespace

}  // namespace wirelines::test
