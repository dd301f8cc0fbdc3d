#include "core/datalink.hpp"

#include <gtest/gtest.h>

#include "core/nicknames.hpp"
#include "support/cases.hpp"
#include "vek4003.h"

namespace wirelines::test {

namespace {

#define MAC_LINES(length)                                                                         \
  "10 0 0-11 2,9 |--- MAC [0A0B0C0D0E0F] --> [030405060708] ---------------------------------|\n" \
  "73 1 4294967295-4294967295 2,9 |[Time] 11/14/2023 22:13:20.123456|\n"                          \
  "73 1 0-0 2,9 |[Length] " length                                                                \
  " byte(s)|\n"                                                                                   \
  "73 1 0-5 2,9 |[Destination Address] 030405060708 |\n"                                          \
  "73 1 6-11 2,9 |[Source Address] 0A0B0C0D0E0F |\n"                                              \
  "65535 65535 0-0 0,0 ||\n"
#define MACS "030405060708 0A0B0C0D0E0F "

const Case kFrames[] = {
    {"Ethernet II, a type without decoder", MACS "6003 4142",
     MAC_LINES(
         "16 (0x0010)") "12 0 12-13 4,9 |--- Data Link [Ethernet_II] -----------------------------------------------|\n"
                        "75 1 12-13 4,9 |[Frame Type] Ethernet_II|\n"
                        "75 1 12-13 4,9 |[Protocol Type] 0x6003 (DECnet)|\n"
                        "65535 65535 0-0 0,0 ||\n"
                        "0 0 14-15 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
                        "63 1 14-15 1,10 |0000  41 42 20  0  0  0  0  0                            AB|\n"},
    {"Ethernet II, type 0x8138: named, but a data block; 1501 is a type", MACS "8138",
     MAC_LINES(
         "14 (0x000E)") "12 0 12-13 4,9 |--- Data Link [Ethernet_II] -----------------------------------------------|\n"
                        "75 1 12-13 4,9 |[Frame Type] Ethernet_II|\n"
                        "75 1 12-13 4,9 |[Protocol Type] 0x8138 (IPX)|\n"},
    {"an unknown type has no name", MACS "05DD",
     MAC_LINES(
         "14 (0x000E)") "12 0 12-13 4,9 |--- Data Link [Ethernet_II] -----------------------------------------------|\n"
                        "75 1 12-13 4,9 |[Frame Type] Ethernet_II|\n"
                        "75 1 12-13 4,9 |[Protocol Type] 0x05DD |\n"},
    {"1500 is a length", MACS "05DC 8080 03",
     MAC_LINES(
         "17 (0x0011)") "12 0 12-16 4,9 |--- Data Link [IEEE802.2(LLC)] --------------------------------------------|\n"
                        "75 1 12-16 4,9 |[Frame Type] IEEE802.2(LLC)|\n"
                        "75 1 12-13 4,9 |[Frame Length] 1500 (0x05DC) byte(s)|\n"
                        "75 1 14-16 4,9 |[LLC] [DSAP] 0x80 [SSAP] 0x80 [Control] 0x03 (XNS)|\n"},
    {"LLC of 16 bytes: no payload, the control byte reads zero", MACS "0002 F0F0",
     MAC_LINES(
         "16 (0x0010)") "12 0 12-16 4,9 |--- Data Link [IEEE802.2(LLC)] --------------------------------------------|\n"
                        "75 1 12-16 4,9 |[Frame Type] IEEE802.2(LLC)|\n"
                        "75 1 12-13 4,9 |[Frame Length] 2 (0x0002) byte(s)|\n"
                        "75 1 14-16 4,9 |[LLC] [DSAP] 0xF0 [SSAP] 0xF0 [Control] 0x00 (NetBIOS)|\n"},
    {"LLC, S format: no name; the payload begins behind one control byte", MACS "0004 F0F0 01 0A",
     MAC_LINES(
         "18 (0x0012)") "12 0 12-16 4,9 |--- Data Link [IEEE802.2(LLC)] --------------------------------------------|\n"
                        "75 1 12-16 4,9 |[Frame Type] IEEE802.2(LLC)|\n"
                        "75 1 12-13 4,9 |[Frame Length] 4 (0x0004) byte(s)|\n"
                        "75 1 14-16 4,9 |[LLC] [DSAP] 0xF0 [SSAP] 0xF0 [Control] 0x01 |\n"
                        "65535 65535 0-0 0,0 ||\n"
                        "0 0 17-17 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
                        "63 1 17-17 1,10 |0000  0A 20  0  0  0  0  0  0                            .|\n"},
    {"0xFF/0xFF with control 3 is LLC", MACS "0004 FFFF 03 41",
     MAC_LINES(
         "18 (0x0012)") "12 0 12-16 4,9 |--- Data Link [IEEE802.2(LLC)] --------------------------------------------|\n"
                        "75 1 12-16 4,9 |[Frame Type] IEEE802.2(LLC)|\n"
                        "75 1 12-13 4,9 |[Frame Length] 4 (0x0004) byte(s)|\n"
                        "75 1 14-16 4,9 |[LLC] [DSAP] 0xFF [SSAP] 0xFF [Control] 0x03 |\n"
                        "65535 65535 0-0 0,0 ||\n"
                        "0 0 17-17 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
                        "63 1 17-17 1,10 |0000  41 20  0  0  0  0  0  0                            A|\n"},
    {"SNAP with an unknown type", MACS "0008 AAAA03 00000C 2000",
     MAC_LINES(
         "22 (0x0016)") "12 0 12-21 4,9 |--- Data Link [IEEE802.2(SNAP)] -------------------------------------------|\n"
                        "75 1 12-21 4,9 |[Frame Type] IEEE802.2(SNAP)|\n"
                        "75 1 17-19 4,9 |[Organaization Code] 0x00 0x00 0x0C|\n"
                        "75 1 20-21 4,9 |[Protocol Type] 0x2000 |\n"},
    {"SNAP payload", MACS "0009 AAAA03 000000 809B 41",
     MAC_LINES(
         "23 (0x0017)") "12 0 12-21 4,9 |--- Data Link [IEEE802.2(SNAP)] -------------------------------------------|\n"
                        "75 1 12-21 4,9 |[Frame Type] IEEE802.2(SNAP)|\n"
                        "75 1 17-19 4,9 |[Organaization Code] 0x00 0x00 0x00|\n"
                        "75 1 20-21 4,9 |[Protocol Type] 0x809B (AppleTalk)|\n"
                        "65535 65535 0-0 0,0 ||\n"
                        "0 0 22-22 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
                        "63 1 22-22 1,10 |0000  41 20  0  0  0  0  0  0                            A|\n"},
};
LINE_CASES(DataLink, decode_frame, kFrames)

TEST(DataLink, AFrameOfNoBytesShowsItsHeaderAsZeros) {
  const auto lines = decode_and_dump(decode_frame, Bytes(nullptr, 0));
  EXPECT_NE(lines.find("MAC [000000000000] --> [000000000000]"), std::string::npos);
  EXPECT_NE(lines.find("[LLC] [DSAP] 0x00 [SSAP] 0x00 [Control] 0x00 |"), std::string::npos);
}

TEST(DataLink, KeptTimeOfTheDayNumberEncoding) {
  const auto time_of = [](uint32_t word0, uint32_t word1) {
    LineList list{};
    const uint8_t frame[14] = {};
    AnalyzeOutput(&list, frame, 14, word0, word1, 0);
    const auto lines = dump(list);
    DelDspBuffer(&list);
    const auto begin = lines.find('\n') + 1;
    return lines.substr(begin, lines.find('\n', begin) - begin);
  };
  EXPECT_EQ(time_of(0, 365), "73 1 0-0 2,9 |[Time] 01/01/1998 00:00:00.365|");
  EXPECT_EQ(time_of(0x100000, 90061001), "73 1 0-0 2,9 |[Time] 08/25/248575 01:01:01.001|");
  EXPECT_EQ(time_of(0x100001, 7), "73 1 4294967295-4294967295 2,9 |[Time] 01/13/1970 03:16:17.000007|");
}

TEST(DataLink, NicknamesOfStationsSapsAndTypes) {
  NickNameAdd(NICKNAME_STATION, "030405060708", "server");
  NickNameAdd(NICKNAME_SAP, "4242", "spanning tree");
  NickNameAdd(NICKNAME_TYPE, "88CC", "LLDP");
  NickNameAdd(NICKNAME_TYPE, "6003", "not asked for");
  const auto lines_of = [](const char* hex) {
    const auto bytes = bytes_of(hex);
    return decode_and_dump(decode_frame, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  };
  EXPECT_NE(lines_of(MACS "0003 4242 03").find("[Destination Address] 030405060708 (server)"), std::string::npos);
  EXPECT_NE(lines_of(MACS "0003 4242 03").find("[Control] 0x03 (spanning tree)"), std::string::npos);
  EXPECT_NE(lines_of(MACS "88CC").find("[Protocol Type] 0x88CC (LLDP)"), std::string::npos);
  EXPECT_NE(lines_of(MACS "6003").find("[Protocol Type] 0x6003 (DECnet)"), std::string::npos);
  NickNameClear();
}

TEST(DataLink, FrameKindsAndProtocolTypes) {
  struct {
    const char* from_type;  // bytes 12 on
    int32_t kind;
    int32_t has_type;
    uint16_t type;
  } const cases[] = {
      {"0800 0000 00 000000 0000", WIRELINES_ETHERNET_II, 1, 0x0800},
      {"05DC FFFF 00 000000 0000", WIRELINES_RAW_802_3, 1, 0xFFFF},
      {"0010 FFFF 03 000000 0000", WIRELINES_LLC, 0, 0},
      {"0010 AAAA 03 000000 86DD", WIRELINES_SNAP, 1, 0x86DD},
      {"0010 AAAA 7F 000000 86DD", WIRELINES_LLC_S_U, 1, 0xAAAA},
      {"0010 AAAB 03 000000 86DD", WIRELINES_LLC, 0, 0},
      {"0010 F0F0 02 000000 0000", WIRELINES_LLC, 1, 0xF0F0},
      {"0010 F0F1 01 000000 0000", WIRELINES_LLC_S_U, 1, 0xF0F1},
  };
  for (const auto& c : cases) {
    auto frame = bytes_of(std::string(MACS) + c.from_type);
    uint8_t ssap = 0x77;
    uint8_t dsap = 0x77;
    uint16_t type = 0x7777;
    EXPECT_EQ(::CheckFrameType(frame.data(), &ssap, &dsap), c.kind) << c.from_type;
    EXPECT_EQ(dsap, c.kind == WIRELINES_ETHERNET_II ? 0x77 : frame[14]) << c.from_type;
    EXPECT_EQ(ssap, c.kind == WIRELINES_ETHERNET_II ? 0x77 : frame[15]) << c.from_type;
    EXPECT_EQ(::GetProtocolType(frame.data(), &type), c.has_type) << c.from_type;
    EXPECT_EQ(type, c.has_type != 0 ? c.type : 0x7777) << c.from_type;
  }
}

}  // namespace

}  // namespace wirelines::test
