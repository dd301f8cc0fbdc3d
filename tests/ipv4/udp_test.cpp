#include <gtest/gtest.h>

#include "ipv4/carriers.hpp"

namespace wirelines::test {

namespace {

const Case kMessages[] = {
    {"checksum right, payload odd", "0400 1F90 000B 2BAE 'abc'",
     "65535 65535 0-0 0,0 ||\n"
     "49 0 0-7 6,3 |--- UDP Header [1024] --> [8080] ------------------------------------------|\n"
     "112 1 0-1 6,3 |[Source Port] 1024 |\n"
     "112 1 2-3 6,3 |[Destination Port] 8080 |\n"
     "112 1 4-5 6,3 |[Data Length] 11 (0x000B) byte(s)|\n"
     "112 1 6-7 6,3 |[Checksum] 0x2BAE (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-10 1,10 |---[Data] 3 (0x0003) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-10 1,10 |0000  61 62 63 20  0  0  0  0                            abc|\n"},
    {"checksum wrong, the length field unused", "0202 C350 0100 1234 00",
     "65535 65535 0-0 0,0 ||\n"
     "49 0 0-7 6,3 |--- UDP Header [514] --> [50000] ------------------------------------------|\n"
     "112 1 0-1 6,3 |[Source Port] 514 (SYSLOG)|\n"
     "112 1 2-3 6,3 |[Destination Port] 50000 |\n"
     "112 1 4-5 6,3 |[Data Length] 256 (0x0100) byte(s)|\n"
     "112 1 6-7 6,3 |[Checksum] 0x1234 (NG)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-8 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-8 1,10 |0000  00 20  0  0  0  0  0  0                            .|\n"},
    {"no checksum", "C350 00A2 0008 0000",
     "65535 65535 0-0 0,0 ||\n"
     "49 0 0-7 6,3 |--- UDP Header [50000] --> [162] ------------------------------------------|\n"
     "112 1 0-1 6,3 |[Source Port] 50000 |\n"
     "112 1 2-3 6,3 |[Destination Port] 162 (SNMPTRAP)|\n"
     "112 1 4-5 6,3 |[Data Length] 8 (0x0008) byte(s)|\n"
     "112 1 6-7 6,3 |[Checksum] None|\n"},
    {"one byte too short", "0400 1F90 000B 12",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-6 1,10 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-6 1,10 |0000  04 00 1F 90 00 0B 12 20                            .......|\n"},
};
LINE_CASES(Udp, over_ipv4(UdpAnalyze, kUdp, false), kMessages)

const Case kFragments[] = {
    {"no verdict while fragments are missing", "0400 1F90 0400 0000",
     "65535 65535 0-0 0,0 ||\n"
     "49 0 0-7 6,3 |--- UDP Header [1024] --> [8080] ------------------------------------------|\n"
     "112 1 0-1 6,3 |[Source Port] 1024 |\n"
     "112 1 2-3 6,3 |[Destination Port] 8080 |\n"
     "112 1 4-5 6,3 |[Data Length] 1024 (0x0400) byte(s)|\n"
     "112 1 6-7 6,3 |[Checksum] 0x0000|\n"},
};
LINE_CASES(UdpFragment, over_ipv4(UdpAnalyze, kUdp, true), kFragments)

const Case kOverIp6[] = {
    {"over IPv6", "0400 1F90 0009 3FD7 41",
     "65535 65535 0-0 0,0 ||\n"
     "49 0 0-7 6,3 |--- UDP Header [1024] --> [8080] ------------------------------------------|\n"
     "112 1 0-1 6,3 |[Source Port] 1024 |\n"
     "112 1 2-3 6,3 |[Destination Port] 8080 |\n"
     "112 1 4-5 6,3 |[Data Length] 9 (0x0009) byte(s)|\n"
     "112 1 6-7 6,3 |[Checksum] 0x3FD7 (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-8 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-8 1,10 |0000  41 20  0  0  0  0  0  0                            A|\n"},
    {"over IPv6 without a checksum", "0400 1F90 0008 0000",
     "65535 65535 0-0 0,0 ||\n"
     "49 0 0-7 6,3 |--- UDP Header [1024] --> [8080] ------------------------------------------|\n"
     "112 1 0-1 6,3 |[Source Port] 1024 |\n"
     "112 1 2-3 6,3 |[Destination Port] 8080 |\n"
     "112 1 4-5 6,3 |[Data Length] 8 (0x0008) byte(s)|\n"
     "112 1 6-7 6,3 |[Checksum] None|\n"},
};
LINE_CASES(UdpOverIp6, over_ipv6(UdpAnalyze, kUdp), kOverIp6)

// A payload that every application takes for its own, so that the second title tells who got it.
TEST(UdpApplications, TheOrderDecides) {
  const struct {
    uint16_t source, destination;
    const char* title;
  } cases[] = {
      {1024, 67, "|--- BOOTP Packet -"},
      {137, 68, "|--- BOOTP Packet -"},
      {67, 2000, "|---[Data] "},
      {1024, 137, "|--- NetBIOS Name Service -"},
      {137, 53, "|--- NetBIOS Name Service -"},
      {1024, 53, "|--- DNS Message -"},
      {53, 138, "|--- DNS Message -"},
      {1024, 138, "|--- NetBIOS Datagram Service "},
      {138, 520, "|--- NetBIOS Datagram Service "},
      {520, 520, "|--- RIP Packet "},
      {1024, 520, "|---[Data] "},
      {520, 1024, "|---[Data] "},
      {1024, 123, "|--- NTP Message -"},
      {123, 520, "|--- NTP Message -"},
      {123, 161, "|--- NTP Message -"},
      {1024, 161, "|--- SNMP "},
      {161, 69, "|--- SNMP "},
      {1024, 162, "|---[Data] "},
      {1024, 69, "|--- TFTP Packet -"},
      {69, 1024, "|--- TFTP Packet -"},
  };
  for (const auto& c : cases) {
    auto bytes = bytes_of(
        "0000 0000 0000 0000"
        "3026 020100 0406 'public' A019 020101 020100 020100 300E 300C 0608 2B06010201010100 0500");
    bytes.resize(700);
    bytes[0] = static_cast<uint8_t>(c.source >> 8);
    bytes[1] = static_cast<uint8_t>(c.source);
    bytes[2] = static_cast<uint8_t>(c.destination >> 8);
    bytes[3] = static_cast<uint8_t>(c.destination);
    const auto found =
        decode_and_dump(over_ipv4(UdpAnalyze, kUdp, false), Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    const auto second_title = found.find("|---", found.find("|---") + 1);
    ASSERT_NE(second_title, std::string::npos) << found;
    EXPECT_EQ(found.find(c.title), second_title) << c.source << " to " << c.destination << '\n' << found;
  }
}

}  // namespace

}  // namespace wirelines::test
