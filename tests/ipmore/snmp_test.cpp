#include "ipmore/snmp.hpp"

#include <gtest/gtest.h>

#include "core/lines.hpp"
#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kSnmp[] = {
    {"get request",
     "30 26 02 01 00 04 06 'public' A0 19 02 01 01 02 01 00 02 01 00 30 0E 30 0C 06 08 2B06010201010100 05 00",
     "34 0 0-39 9,5 |--- SNMP (GetRequest) -----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-12 9,5 |[Community] public|\n"
     "97 1 13-13 9,5 |[PDU type] 0 (GetRequest)|\n"
     "97 1 17-17 9,5 |[Request ID] 0x01|\n"
     "97 1 20-20 9,5 |[Error Status] 0 (noError)|\n"
     "97 1 23-23 9,5 |[Error Index] 0x00|\n"
     "97 1 26-39 9,5 |--- Object 1 -------------------------------|\n"
     "97 1 30-37 9,5 |[Object Identifier] 1.3.6.1.2.1.1.1.0|\n"},
    {"response with a value of every kind",
     "30 81 8A 02 01 01 04 01 'r' A2 81 81 02 04 12345678 02 01 02 02 01 01 30 73"
     "30 07 06 02 2B06 02 01 FF"
     "30 0F 06 02 2B06 02 09 000000000000000001"
     "30 08 06 02 2B06 41 02 0100"
     "30 0E 06 02 2B06 42 08 0000000180000000"
     "30 0A 06 02 2B06 40 04 C0000201"
     "30 0A 06 02 2B06 43 04 0083D600"
     "30 0B 06 02 2B06 43 81 04 0083D5FF"
     "30 0B 06 02 2B06 04 05 'a' 00 'bcd'"
     "30 08 06 02 2B06 46 02 0102",
     "34 0 0-137 9,5 |--- SNMP (GetResponse) ----------------------------------------------------|\n"
     "97 1 5-6 9,5 |[Version] 1 (SNMPv2)|\n"
     "97 1 8-8 9,5 |[Community] r|\n"
     "97 1 9-9 9,5 |[PDU type] 2 (GetResponse)|\n"
     "97 1 14-17 9,5 |[Request ID] 0x12345678|\n"
     "97 1 20-20 9,5 |[Error Status] 2 (noSuchName)|\n"
     "97 1 23-23 9,5 |[Error Index] 0x01|\n"
     "97 1 26-34 9,5 |--- Object 1 -------------------------------|\n"
     "97 1 30-31 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 34-34 9,5 |[Integer] 255|\n"
     "97 1 35-51 9,5 |--- Object 2 -------------------------------|\n"
     "97 1 39-40 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 43-51 9,5 |0000  00 00 00 00 00 00 00 00 - 01                       .........|\n"
     "97 1 52-61 9,5 |--- Object 3 -------------------------------|\n"
     "97 1 56-57 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 60-61 9,5 |[Counter] 256|\n"
     "97 1 62-77 9,5 |--- Object 4 -------------------------------|\n"
     "97 1 66-67 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 70-77 9,5 |[Gauge] 2147483648|\n"
     "97 1 78-89 9,5 |--- Object 5 -------------------------------|\n"
     "97 1 82-83 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 86-89 9,5 |[IP Address] 192.0.2.1 |\n"
     "97 1 90-101 9,5 |--- Object 6 -------------------------------|\n"
     "97 1 94-95 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 98-101 9,5 |[TimeTicks] 1/00:00:00.00|\n"
     "97 1 102-114 9,5 |--- Object 7 -------------------------------|\n"
     "97 1 106-107 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 111-114 9,5 |0000  00 83 D5 FF 20  0  0  0                            ....|\n"
     "97 1 115-127 9,5 |--- Object 8 -------------------------------|\n"
     "97 1 119-120 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 123-127 9,5 |[Octet String] a|\n"
     "97 1 128-137 9,5 |--- Object 9 -------------------------------|\n"
     "97 1 132-133 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 136-137 9,5 |0000  01 02 20  0  0  0  0  0                            ..|\n"},
    {"set request, an identifier of more than 16 bytes and one of a sub-identifier of 5",
     "30 3D 02 01 00 04 01 'w' A3 35 02 01 07 02 01 00 02 01 00 30 2A"
     "30 15 06 11 2B060104018F650801020304058FFFFFFF 05 00"
     "30 11 06 0D 2B0601040190808080000102 00 05 00",
     "34 0 0-62 9,5 |--- SNMP (SetRequest) -----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-7 9,5 |[Community] w|\n"
     "97 1 8-8 9,5 |[PDU type] 3 (SetRequest)|\n"
     "97 1 12-12 9,5 |[Request ID] 0x07|\n"
     "97 1 15-15 9,5 |[Error Status] 0 (noError)|\n"
     "97 1 18-18 9,5 |[Error Index] 0x00|\n"
     "97 1 21-43 9,5 |--- Object 1 -------------------------------|\n"
     "97 1 25-41 9,5 |[Object Identifier] 1.3.6.1.4.1.2021.8.1.2.3.4.5|\n"
     "97 1 44-62 9,5 |--- Object 2 -------------------------------|\n"
     "97 1 48-60 9,5 |[Object Identifier] 1.3.6.1.4.1|\n"},
    {"Kept: ranges of trap lines end before they begin, the time's and the vendor's excepted",
     "30 3A 02 01 00 04 06 'public' A4 2D 06 07 2B060104018F65 40 04 C0000201 02 01 06 02 01 63 43 02 0BB8"
     "30 13 30 11 06 0C 2B060104018F650801020304 02 01 05",
     "34 0 0-60 9,5 |--- SNMP (Trap) -----------------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-12 9,5 |[Community] public|\n"
     "97 1 13-13 9,5 |[PDU type] 4 (Trap)|\n"
     "97 1 17-23 9,5 |[\\xCD\\xDE\\xDD\\xC0\\xDE\\xB0ID] 1.3.6.1.4.1.2021|\n"
     "97 1 26-25 9,5 |[Agent IpAddress] 192.0.2.1 |\n"
     "97 1 32-31 9,5 |[Trap Type] 6 (enterpriseSpecific)|\n"
     "97 1 35-34 9,5 |[Specific Trap Type] 99|\n"
     "97 1 38-39 9,5 |[TimeTicks] 0/00:00:30.00|\n"},
    {"unknown trap, empty elements", "30 18 02 01 00 04 01 't' A4 10 06 00 43 00 02 01 07 02 00 40 00 43 03 0186A0",
     "34 0 0-25 9,5 |--- SNMP (Trap) -----------------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-7 9,5 |[Community] t|\n"
     "97 1 8-8 9,5 |[PDU type] 4 (Trap)|\n"
     "97 1 12-11 9,5 |[\\xCD\\xDE\\xDD\\xC0\\xDE\\xB0ID] |\n"
     "97 1 14-13 9,5 |[TimeTicks] 0/00:00:00.00|\n"
     "97 1 16-15 9,5 |[Trap Type] 7 (Unknown)|\n"
     "97 1 19-18 9,5 |[Specific Trap Type] 64|\n"
     "97 1 21-20 9,5 |[Agent IpAddress] 67.3.1.134 |\n"
     "97 1 23-25 9,5 |[TimeTicks] 0/00:16:40.00|\n"},
    {"community of 20 characters, error without objects",
     "30 26 02 01 00 04 14 'abcdefghijklmnopqrst' A1 0B 02 01 01 02 01 13 02 01 FF 04 00",
     "34 0 0-39 9,5 |--- SNMP (GetNextRequest) -------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-22 9,5 |[Community] abcdefghijklmnop|\n"
     "97 1 27-27 9,5 |[PDU type] 1 (GetNextRequest)|\n"
     "97 1 31-31 9,5 |[Request ID] 0x01|\n"
     "97 1 34-34 9,5 |[Error Status] 19 (Unknown)|\n"
     "97 1 37-37 9,5 |[Error Index] 0xFF|\n"},
    {"request ID of 12 bytes, status and index of other tags",
     "30 1C 02 01 01 04 00 A0 15 04 0C 000102030405060708090A0B 05 01 02 05 00 30 00",
     "34 0 0-29 9,5 |--- SNMP (GetRequest) -----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 1 (SNMPv2)|\n"
     "97 1 7-6 9,5 |[Community] |\n"
     "97 1 7-7 9,5 |[PDU type] 0 (GetRequest)|\n"
     "97 1 11-22 9,5 |[Request ID] 0x00010203040506070809|\n"
     "97 1 25-25 9,5 |[Error Status] 2 (noSuchName)|\n"
     "97 1 28-27 9,5 |[Error Index] 0x30|\n"},
    {"lengths that run past what holds them",
     "30 7F 02 01 00 04 01 'r' A2 7F 02 01 01 02 01 00 02 01 00 30 7F"
     "30 0A 06 02 2B06 04 7F 'abcd'"
     "30 7F 06 02 2B06 44 84 FFFFFFFF 01",
     "34 0 0-45 9,5 |--- SNMP (GetResponse) ----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-7 9,5 |[Community] r|\n"
     "97 1 8-8 9,5 |[PDU type] 2 (GetResponse)|\n"
     "97 1 12-12 9,5 |[Request ID] 0x01|\n"
     "97 1 15-15 9,5 |[Error Status] 0 (noError)|\n"
     "97 1 18-18 9,5 |[Error Index] 0x00|\n"
     "97 1 21-32 9,5 |--- Object 1 -------------------------------|\n"
     "97 1 25-26 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 29-32 9,5 |[Octet String] abcd|\n"
     "97 1 33-161 9,5 |--- Object 2 -------------------------------|\n"
     "97 1 37-38 9,5 |[Object Identifier] 1.3.6|\n"
     "97 1 45-45 9,5 |0000  01 20  0  0  0  0  0  0                            .|\n"},
    {"the list bounds its objects, and a plain element is taken for its header only",
     "30 23 02 01 00 04 01 'r' A2 1B 02 01 01 02 01 00 02 01 00 30 09 02 02 3005 06 01 2B 05 00 30 05 06 01 2B 05 00",
     "34 0 0-36 9,5 |--- SNMP (GetResponse) ----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-7 9,5 |[Community] r|\n"
     "97 1 8-8 9,5 |[PDU type] 2 (GetResponse)|\n"
     "97 1 12-12 9,5 |[Request ID] 0x01|\n"
     "97 1 15-15 9,5 |[Error Status] 0 (noError)|\n"
     "97 1 18-18 9,5 |[Error Index] 0x00|\n"
     "97 1 21-24 9,5 |--- Object 1 -------------------------------|\n"
     "97 1 23-29 9,5 |--- Object 2 -------------------------------|\n"
     "97 1 27-27 9,5 |[Object Identifier] 1.3|\n"},
    {"request ID past the end", "30 10 02 01 00 04 01 'r' A2 08 02 84 FFFFFFF0 0102",
     "34 0 0-17 9,5 |--- SNMP (GetResponse) ----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-7 9,5 |[Community] r|\n"
     "97 1 8-8 9,5 |[PDU type] 2 (GetResponse)|\n"
     "97 1 16-4294967295 9,5 |[Request ID] 0x0102|\n"},
    {"a PDU of the indefinite form is not read", "30 0D 02 01 00 04 01 'r' A0 80 02 01 01 0000",
     "34 0 0-14 9,5 |--- SNMP (GetRequest) -----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-7 9,5 |[Community] r|\n"
     "97 1 8-8 9,5 |[PDU type] 0 (GetRequest)|\n"},
    {"a length in the long form with two bytes left", "30 09 02 01 00 04 01 'r' A0 81 01",
     "34 0 0-10 9,5 |--- SNMP (GetRequest) -----------------------------------------------------|\n"
     "97 1 4-5 9,5 |[Version] 0 (SNMPv1)|\n"
     "97 1 7-7 9,5 |[Community] r|\n"
     "97 1 8-8 9,5 |[PDU type] 0 (GetRequest)|\n"},
    {"bulk request", "30 0D 02 01 01 04 01 'r' A5 05 02 01 01 02 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-14 1,10 |---[Data] 15 (0x000F) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-14 1,10 |0000  30 0D 02 01 01 04 01 72 - A5 05 02 01 01 02 00     0......r.......|\n"},
    {"version 3", "30 10 02 01 03 30 0D 02 01 01",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-9 1,10 |---[Data] 10 (0x000A) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-9 1,10 |0000  30 10 02 01 03 30 0D 02 - 01 01                    0....0....|\n"},
    {"version of two bytes", "30 0D 02 02 0001 04 01 A0 A0 02 0500",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-12 1,10 |---[Data] 13 (0x000D) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-12 1,10 |0000  30 0D 02 02 00 01 04 01 - A0 A0 02 05 00           0............|\n"},
    {"community past the end", "30 0D 02 01 00 04 84 FFFFFFFF A0 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-12 1,10 |---[Data] 13 (0x000D) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-12 1,10 |0000  30 0D 02 01 00 04 84 FF - FF FF FF A0 00           0............|\n"},
};
LINE_CASES(Snmp, SnmpAnalyze, kSnmp)

TEST(Snmp, AtMostTwentyObjects) {
  std::string hex = "30 69 02 01 00 04 01 'r' A2 61 02 01 01 02 01 00 02 01 00 30 56";
  for (int i = 0; i < 21; ++i) hex += "30 02 05 00";
  const auto bytes = bytes_of(hex);
  const auto lines = decode_and_dump(SnmpAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  EXPECT_TRUE(lines.ends_with("97 1 97-100 9,5 |--- Object 20 -------------------------------|\n")) << lines;
}

TEST(Snmp, IsNeverTheResultLine) {
  const auto bytes = bytes_of("30 0A 02 01 00 04 01 'r' A0 02 05 00");
  LineList list{};
  state().reset(WIRELINES_ASCII);
  state().topLineIndex = 7;
  SnmpAnalyze(list, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  EXPECT_EQ(state().topLineIndex, 7U);
  DelDspBuffer(&list);
}

}  // namespace

}  // namespace wirelines::test
