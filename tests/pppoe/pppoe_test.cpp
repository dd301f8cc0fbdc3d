#include "pppoe/pppoe.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kDiscovery[] = {
    {"PADI: what pads the frame is no tag", "11 09 0000 0004 0101 0000 0103 0000",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-9 6,9 |--- PPPoE Discovery Header (PADI) -----------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x09 (PADI)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0000|\n"
     "77 1 4-5 6,9 |[Length] 4(0x0004) byte(s)|\n"
     "77 1 6-9 6,9 |--- Tag 1 -------------------------------|\n"
     "77 1 6-7 6,9 |[Type] 0x0101 (Service-Name)|\n"
     "77 1 8-9 6,9 |[Length] 0 byte(s)|\n"},
    {"PADO", "11 07 0000 002A 0101 0003 'isp' 0102 0002 'ac' 0103 0004 01020304 0104 0011 'seventeen letters'",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-47 6,9 |--- PPPoE Discovery Header (PADO) -----------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x07 (PADO)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0000|\n"
     "77 1 4-5 6,9 |[Length] 42(0x002A) byte(s)|\n"
     "77 1 6-12 6,9 |--- Tag 1 -------------------------------|\n"
     "77 1 6-7 6,9 |[Type] 0x0101 (Service-Name)|\n"
     "77 1 8-9 6,9 |[Length] 3 byte(s)|\n"
     "14 1 10-12 6,9 |[Tag] 3 byte(s)|\n"
     "77 2 10-12 6,9 |0000  69 73 70 20  0  0  0  0                            isp|\n"
     "77 1 13-18 6,9 |--- Tag 2 -------------------------------|\n"
     "77 1 13-14 6,9 |[Type] 0x0102 (AC-Name)|\n"
     "77 1 15-16 6,9 |[Length] 2 byte(s)|\n"
     "14 1 17-18 6,9 |[Tag] 2 byte(s)|\n"
     "77 2 17-18 6,9 |0000  61 63 20  0  0  0  0  0                            ac|\n"
     "77 1 19-26 6,9 |--- Tag 3 -------------------------------|\n"
     "77 1 19-20 6,9 |[Type] 0x0103 (Host-Uniq)|\n"
     "77 1 21-22 6,9 |[Length] 4 byte(s)|\n"
     "14 1 23-26 6,9 |[Tag] 4 byte(s)|\n"
     "77 2 23-26 6,9 |0000  01 02 03 04 20  0  0  0                            ....|\n"
     "77 1 27-47 6,9 |--- Tag 4 -------------------------------|\n"
     "77 1 27-28 6,9 |[Type] 0x0104 (AC-Cookie)|\n"
     "77 1 29-30 6,9 |[Length] 17 byte(s)|\n"
     "14 1 31-47 6,9 |[Tag] 17 byte(s)|\n"
     "77 2 31-46 6,9 |0000  73 65 76 65 6E 74 65 65 - 6E 20 6C 65 74 74 65 72  seventeen letter|\n"
     "77 2 47-47 6,9 |0010  73 20  0  0  0  0  0  0                            s|\n"},
    {"Kept: End-Of-List does not end the list", "11 65 1234 0008 0000 0000 0101 0000",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-13 6,9 |--- PPPoE Discovery Header (PADS) -----------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x65 (PADS)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x1234|\n"
     "77 1 4-5 6,9 |[Length] 8(0x0008) byte(s)|\n"
     "77 1 6-9 6,9 |--- Tag 1 -------------------------------|\n"
     "77 1 6-7 6,9 |[Type] 0x0000 (End-Of-List)|\n"
     "77 1 8-9 6,9 |[Length] 0 byte(s)|\n"
     "77 1 10-13 6,9 |--- Tag 2 -------------------------------|\n"
     "77 1 10-11 6,9 |[Type] 0x0101 (Service-Name)|\n"
     "77 1 12-13 6,9 |[Length] 0 byte(s)|\n"},
    {"PADT without tags, other versions", "2F A7 1234 0000",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-5 6,9 |--- PPPoE Discovery Header (PADT) -----------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 2|\n"
     "77 1 0-0 6,9 |[Type] 15|\n"
     "77 1 1-1 6,9 |[Code] 0xA7 (PADT)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x1234|\n"
     "77 1 4-5 6,9 |[Length] 0(0x0000) byte(s)|\n"},
    {"unknown code; the tag states one byte more than there is", "11 08 0000 0005 0101 0002 4142",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-10 6,9 |--- PPPoE Discovery Header (Unknown) --------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x08 (Unknown)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0000|\n"
     "77 1 4-5 6,9 |[Length] 5(0x0005) byte(s)|\n"},
    {"the header states more than there is: whole tags only", "11 09 0000 05D8 0101 0000 0102 0003 4142",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-1501 6,9 |--- PPPoE Discovery Header (PADI) -----------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x09 (PADI)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0000|\n"
     "77 1 4-5 6,9 |[Length] 1496(0x05D8) byte(s)|\n"
     "77 1 6-9 6,9 |--- Tag 1 -------------------------------|\n"
     "77 1 6-7 6,9 |[Type] 0x0101 (Service-Name)|\n"
     "77 1 8-9 6,9 |[Length] 0 byte(s)|\n"},
    {"session code without protocol", "11 00 0001 0002 C0",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPPoE Discovery Header (Session Stage) --------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0001|\n"
     "77 1 4-5 6,9 |[Length] 2(0x0002) byte(s)|\n"},
    {"session code", "11 00 0001 0002 0057",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPPoE Discovery Header (Session Stage) --------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0001|\n"
     "77 1 4-5 6,9 |[Length] 2(0x0002) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0x0057 |\n"},
    {"one byte too short", "11 09 0000 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-4 1,10 |---[Data] 5 (0x0005) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-4 1,10 |0000  11 09 00 00 00 20  0  0                            .....|\n"},
};
LINE_CASES(PppoeDiscovery, PPPoEDiscoveryAnalyze, kDiscovery)

const Case kSession[] = {
    {"unknown protocol", "11 00 0011 0004 0057 6000",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 4(0x0004) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0x0057 |\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-9 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-9 1,10 |0000  60 00 20  0  0  0  0  0                            `.|\n"},
    {"one byte too short", "11 00 0011 0002 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-6 1,10 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-6 1,10 |0000  11 00 00 11 00 02 00 20                            .......|\n"},
    {"Kept: a protocol compressed to one byte is read as two", "11 00 0011 0002 21 45",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 2(0x0002) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0x2145 |\n"},
    {"a discovery code shows tags", "11 A7 0011 0004 0203 0000",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0xA7 (PADT)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 4(0x0004) byte(s)|\n"
     "77 1 6-9 6,9 |--- Tag 1 -------------------------------|\n"
     "77 1 6-7 6,9 |[Type] 0x0203 (Generic-Error)|\n"
     "77 1 8-9 6,9 |[Length] 0 byte(s)|\n"},
    {"Kept: what pads the frame belongs to the packet", "11 00 0011 0006 8021 05 07 0004 0401",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 6(0x0006) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0x8021 (IPCP)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 0 8-11 5,9 |--- IPCP Header (Termination Request) -------------------------------------|\n"
     "76 1 8-8 5,9 |[Code] 5 (Termination Request)|\n"
     "76 1 9-9 5,9 |[Identifier] 0x07|\n"
     "76 1 10-11 5,9 |[Length] 4 (0x0004) byte(s)|\n"
     "76 1 12-12 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 12-12 5,9 |[Type] 4 (Mobile IPv4)|\n"
     "76 1 13-13 5,9 |[Length] 1 byte(s)|\n"},
    {"PAP", "11 00 0011 0006 C023 02 07 0004",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 6(0x0006) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0xC023 (PAP)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 0 8-11 5,9 |--- PAP Header (Authenticate Ack) -----------------------------------------|\n"
     "76 1 8-8 5,9 |[Code] 2 (Authenticate Ack)|\n"
     "76 1 9-9 5,9 |[Identifier] 0x07|\n"
     "76 1 10-11 5,9 |[Length] 4 (0x0004) byte(s)|\n"},
    {"CHAP", "11 00 0011 0006 C223 03 07 0004",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 6(0x0006) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0xC223 (CHAP)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 0 8-11 5,9 |--- CHAP Header (Success) -------------------------------------------------|\n"
     "76 1 8-8 5,9 |[Code] 3 (Success)|\n"
     "76 1 9-9 5,9 |[Identifier] 0x07|\n"
     "76 1 10-11 5,9 |[Length] 4 (0x0004) byte(s)|\n"},
    {"LCP of 16 bytes", "11 00 0011 0012 C021 0E 07 0010 00000000 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 18(0x0012) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0xC021 (LCP)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 0 8-29 5,9 |--- LCP Header (Unknown) --------------------------------------------------|\n"
     "76 1 8-8 5,9 |[Code] 14 (Unknown)|\n"
     "76 1 9-9 5,9 |[Identifier] 0x07|\n"
     "76 1 10-11 5,9 |[Length] 16 (0x0010) byte(s)|\n"},
    {"LCP of 15 bytes", "11 00 0011 0012 C021 0E 07 0010 00000000 00000000 000000",
     "65535 65535 0-0 0,0 ||\n"
     "14 0 0-7 6,9 |--- PPP Session Header ----------------------------------------------------|\n"
     "77 1 0-0 6,9 |[Ver] 1|\n"
     "77 1 0-0 6,9 |[Type] 1|\n"
     "77 1 1-1 6,9 |[Code] 0x00 (Session Stage)|\n"
     "77 1 2-3 6,9 |[Session ID] 0x0011|\n"
     "77 1 4-5 6,9 |[Length] 18(0x0012) byte(s)|\n"
     "77 1 6-7 6,9 |[PPP Protocol] 0xC021 (LCP)|\n"},
};
LINE_CASES(PppSession, PPPSessionAnalyze, kSession)

TEST(PppSession, EtherTypesAndIpv4) {
  const auto lines_of = [](const std::string& hex) {
    const auto bytes = bytes_of(hex);
    return decode_and_dump(decode_frame, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  };
  const std::string macs = "001122334455 66778899AABB ";
  const std::string datagram = "45 00 0014 0000 0000 40 3B 0000 C0000201 C6336402";
  EXPECT_NE(lines_of(macs + "8863 11 09 0000 0000").find("\n14 0 14-19 6,9 |--- PPPoE Discovery Header (PADI) -"),
            std::string::npos);
  EXPECT_NE(lines_of(macs + "8864 11 00 0001 0016 0021" + datagram).find("\n47 0 22-41 4,3 |--- IP "),
            std::string::npos);
  EXPECT_NE(
      lines_of(macs + "0026 AAAA03 000000 8864 11 00 0001 0016 0021" + datagram).find("\n47 0 30-49 4,3 |--- IP "),
      std::string::npos);
}

// Every tag without a value, the names of all types in a row.
TEST(PppoeDiscovery, NamesOfTags) {
  std::string names;
  for (const uint32_t type :
       {0x0000U, 0x0101U, 0x0102U, 0x0103U, 0x0104U, 0x0105U, 0x0110U, 0x0201U, 0x0202U, 0x0203U, 0x0120U}) {
    const uint8_t packet[10] = {0x11, 9, 0, 0, 0, 4, static_cast<uint8_t>(type >> 8), static_cast<uint8_t>(type)};
    const auto lines = decode_and_dump(PPPoEDiscoveryAnalyze, Bytes(packet, 10));
    const auto first = lines.find('(', lines.find("[Type] 0x"));
    names += lines.substr(first, lines.find(')', first) - first + 1);
  }
  EXPECT_EQ(names,
            "(End-Of-List)(Service-Name)(AC-Name)(Host-Uniq)(AC-Cookie)(Vendor-Specific)(Relay-Session-Id)"
            "(Service-Name-Error)(AC-System-Error)(Generic-Error)(Unknown)");
}

TEST(PppSession, Names) {
  EXPECT_STREQ(::PPPSessionToName(0x09), "PADI");
  EXPECT_STREQ(::PPPSessionToName(0x00), "Session Stage");
  EXPECT_STREQ(::PPPSessionToName(0xFF), "Unknown");
  EXPECT_EQ(PppProtocolToName(0xC223), "CHAP");
  EXPECT_EQ(PppProtocolToName(0x0057), "");
  EXPECT_EQ(PppProtocolToName(0xFFFF), "");
}

}  // namespace

}  // namespace wirelines::test
