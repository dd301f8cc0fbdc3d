#include "pppoe/ppp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"configuration request", "01 5A 001D 0104 05D4 0206 000A0000 0305 C223 05 0506 DEADBEEF 0702 0102",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-34 5,9 |--- LCP Header (Configuration Request) ------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Configuration Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x5A|\n"
     "76 1 2-3 5,9 |[Length] 29 (0x001D) byte(s)|\n"
     "76 1 4-7 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 1 (Maximum Receive Unit)|\n"
     "76 1 5-5 5,9 |[Length] 4 byte(s)|\n"
     "76 1 6-7 5,9 |[Maximum Receive Unit] 1492(0x05D4) byte(s)|\n"
     "76 1 8-13 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 8-8 5,9 |[Type] 2 (Async Control Character Map)|\n"
     "76 1 9-9 5,9 |[Length] 6 byte(s)|\n"
     "76 1 10-13 5,9 |[Async Control Character Map] 0xA0000|\n"
     "76 1 14-18 5,9 |--- Option 3 ----------------------------|\n"
     "76 1 14-14 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 15-15 5,9 |[Length] 5 byte(s)|\n"
     "76 1 16-17 5,9 |[Authentication Protocol] 0xC223 (CHAP)|\n"
     "76 1 18-18 5,9 |[Algorithm] 5 (MD5)|\n"
     "76 1 19-24 5,9 |--- Option 4 ----------------------------|\n"
     "76 1 19-19 5,9 |[Type] 5 (Magic Number)|\n"
     "76 1 20-20 5,9 |[Length] 6 byte(s)|\n"
     "76 1 21-24 5,9 |[Magic Number] DE,AD,BE,EF|\n"
     "76 1 25-26 5,9 |--- Option 5 ----------------------------|\n"
     "76 1 25-25 5,9 |[Type] 7 (Protocol Field Compression)|\n"
     "76 1 26-26 5,9 |[Length] 2 byte(s)|\n"
     "76 1 27-28 5,9 |--- Option 6 ----------------------------|\n"
     "76 1 27-27 5,9 |[Type] 1 (Maximum Receive Unit)|\n"
     "76 1 28-28 5,9 |[Length] 2 byte(s)|\n"
     "76 1 29-30 5,9 |[Maximum Receive Unit] 0(0x0000) byte(s)|\n"},
    {"configuration ack: authentications with and without algorithm",
     "02 5A 0032 0305 C223 80 0305 C223 81 0305 C223 07 0304 C223 0306 C223 0500 0305 C023 05 0304 C227 0304 C027 0304 "
     "C123 0304 0000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-55 5,9 |--- LCP Header (Configuration Ack) ----------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Configuration Ack)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x5A|\n"
     "76 1 2-3 5,9 |[Length] 50 (0x0032) byte(s)|\n"
     "76 1 4-8 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 5-5 5,9 |[Length] 5 byte(s)|\n"
     "76 1 6-7 5,9 |[Authentication Protocol] 0xC223 (CHAP)|\n"
     "76 1 8-8 5,9 |[Algorithm] 128 (MS-CHAPv1)|\n"
     "76 1 9-13 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 9-9 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 10-10 5,9 |[Length] 5 byte(s)|\n"
     "76 1 11-12 5,9 |[Authentication Protocol] 0xC223 (CHAP)|\n"
     "76 1 13-13 5,9 |[Algorithm] 129 (MS-CHAPv2)|\n"
     "76 1 14-18 5,9 |--- Option 3 ----------------------------|\n"
     "76 1 14-14 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 15-15 5,9 |[Length] 5 byte(s)|\n"
     "76 1 16-17 5,9 |[Authentication Protocol] 0xC223 (CHAP)|\n"
     "76 1 18-18 5,9 |[Algorithm] 7 (Unknown)|\n"
     "76 1 19-22 5,9 |--- Option 4 ----------------------------|\n"
     "76 1 19-19 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 20-20 5,9 |[Length] 4 byte(s)|\n"
     "76 1 21-22 5,9 |[Authentication Protocol] 0xC223 (CHAP)|\n"
     "76 1 23-28 5,9 |--- Option 5 ----------------------------|\n"
     "76 1 23-23 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 24-24 5,9 |[Length] 6 byte(s)|\n"
     "76 1 25-26 5,9 |[Authentication Protocol] 0xC223 (CHAP)|\n"
     "76 1 29-33 5,9 |--- Option 6 ----------------------------|\n"
     "76 1 29-29 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 30-30 5,9 |[Length] 5 byte(s)|\n"
     "76 1 31-32 5,9 |[Authentication Protocol] 0xC023 (PAP)|\n"
     "76 1 34-37 5,9 |--- Option 7 ----------------------------|\n"
     "76 1 34-34 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 35-35 5,9 |[Length] 4 byte(s)|\n"
     "76 1 36-37 5,9 |[Authentication Protocol] 0xC227 (EAP)|\n"
     "76 1 38-41 5,9 |--- Option 8 ----------------------------|\n"
     "76 1 38-38 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 39-39 5,9 |[Length] 4 byte(s)|\n"
     "76 1 40-41 5,9 |[Authentication Protocol] 0xC027 (SPAP)|\n"
     "76 1 42-45 5,9 |--- Option 9 ----------------------------|\n"
     "76 1 42-42 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 43-43 5,9 |[Length] 4 byte(s)|\n"
     "76 1 44-45 5,9 |[Authentication Protocol] 0xC123 (SPAP)|\n"
     "76 1 46-49 5,9 |--- Option 10 ----------------------------|\n"
     "76 1 46-46 5,9 |[Type] 3 (Authentication Protocol)|\n"
     "76 1 47-47 5,9 |[Length] 4 byte(s)|\n"
     "76 1 48-49 5,9 |[Authentication Protocol] 0x0000 (Unknown)|\n"},
    {"configuration nak", "03 01 0010 0702 1102 1202 1E02 0C02 0702",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-21 5,9 |--- LCP Header (Configuration Nak) ----------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 3 (Configuration Nak)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 16 (0x0010) byte(s)|\n"
     "76 1 4-5 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 7 (Protocol Field Compression)|\n"
     "76 1 5-5 5,9 |[Length] 2 byte(s)|\n"
     "76 1 6-7 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 6-6 5,9 |[Type] 17 (MRRU)|\n"
     "76 1 7-7 5,9 |[Length] 2 byte(s)|\n"
     "76 1 8-9 5,9 |--- Option 3 ----------------------------|\n"
     "76 1 8-8 5,9 |[Type] 18 (ultilink Short Sequence Number Header)|\n"
     "76 1 9-9 5,9 |[Length] 2 byte(s)|\n"
     "76 1 10-11 5,9 |--- Option 4 ----------------------------|\n"
     "76 1 10-10 5,9 |[Type] 30 (PPP Muxing)|\n"
     "76 1 11-11 5,9 |[Length] 2 byte(s)|\n"
     "76 1 12-13 5,9 |--- Option 5 ----------------------------|\n"
     "76 1 12-12 5,9 |[Type] 12 (Unknown)|\n"
     "76 1 13-13 5,9 |[Length] 2 byte(s)|\n"
     "76 1 14-15 5,9 |--- Option 6 ----------------------------|\n"
     "76 1 14-14 5,9 |[Type] 7 (Protocol Field Compression)|\n"
     "76 1 15-15 5,9 |[Length] 2 byte(s)|\n"},
    {"configuration reject: an option of length 0 ends the list", "04 01 0010 0702 0500 0104 05D4 0802 0000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-21 5,9 |--- LCP Header (Configuration Reject) -------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 4 (Configuration Reject)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 16 (0x0010) byte(s)|\n"
     "76 1 4-5 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 7 (Protocol Field Compression)|\n"
     "76 1 5-5 5,9 |[Length] 2 byte(s)|\n"},
    {"an option longer than the packet ends the list", "01 01 000C 0702 0108 05D4 0000 FFFF FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-17 5,9 |--- LCP Header (Configuration Request) ------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Configuration Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 12 (0x000C) byte(s)|\n"
     "76 1 4-5 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 7 (Protocol Field Compression)|\n"
     "76 1 5-5 5,9 |[Length] 2 byte(s)|\n"},
    {"Kept: a value is read behind its option, and past the packet", "01 01 0008 0102 0501 AABBCCDD EEFF1122",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-13 5,9 |--- LCP Header (Configuration Request) ------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Configuration Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 8 (0x0008) byte(s)|\n"
     "76 1 4-5 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 1 (Maximum Receive Unit)|\n"
     "76 1 5-5 5,9 |[Length] 2 byte(s)|\n"
     "76 1 6-7 5,9 |[Maximum Receive Unit] 1281(0x0501) byte(s)|\n"
     "76 1 6-6 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 6-6 5,9 |[Type] 5 (Magic Number)|\n"
     "76 1 7-7 5,9 |[Length] 1 byte(s)|\n"
     "76 1 8-11 5,9 |[Magic Number] AA,BB,CC,DD|\n"},
    {"Kept: termination request shows what lies behind the packet", "05 02 0004 00000000 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-9 5,9 |--- LCP Header (Termination Request) --------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 5 (Termination Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x02|\n"
     "76 1 2-3 5,9 |[Length] 4 (0x0004) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 4-15 5,9 |---[Data] 12 (0x000C) byte(s) -------------------------------- ASCII ------|\n"
     "13 1 4-15 5,9 |0000  00 00 00 00 00 00 00 00 - 00 00 00 00              ............|\n"},
    {"termination ack", "06 02 0010 'User request'",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-21 5,9 |--- LCP Header (Termination Ack) ------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 6 (Termination Ack)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x02|\n"
     "76 1 2-3 5,9 |[Length] 16 (0x0010) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 4-15 5,9 |---[Data] 12 (0x000C) byte(s) -------------------------------- ASCII ------|\n"
     "13 1 4-15 5,9 |0000  55 73 65 72 20 72 65 71 - 75 65 73 74              User request|\n"},
    {"code reject", "07 03 0010 0E 01 0008 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-21 5,9 |--- LCP Header (Code Reject) ----------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 7 (Code Reject)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x03|\n"
     "76 1 2-3 5,9 |[Length] 16 (0x0010) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 4-15 5,9 |---[Data] 12 (0x000C) byte(s) -------------------------------- ASCII ------|\n"
     "13 1 4-15 5,9 |0000  0E 01 00 08 00 00 00 00 - 00 00 00 00              ............|\n"},
    {"protocol reject, padded", "08 04 000A 8021 01 01 0004 00000000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-15 5,9 |--- LCP Header (Protocol Reject) ------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 8 (Protocol Reject)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x04|\n"
     "76 1 2-3 5,9 |[Length] 10 (0x000A) byte(s)|\n"
     "76 1 4-5 5,9 |[Protocol] 0x8021 (IPCP)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 6-9 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 6-9 5,9 |0000  01 01 00 04 20  0  0  0                            ....|\n"},
    {"protocol reject without protocol", "08 04 0005 8057 00000000 00000000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-10 5,9 |--- LCP Header (Protocol Reject) ------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 8 (Protocol Reject)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x04|\n"
     "76 1 2-3 5,9 |[Length] 5 (0x0005) byte(s)|\n"},
    {"echo request", "09 05 000C DEADBEEF 01020304 FFFFFFFF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-17 5,9 |--- LCP Header (Echo Request) ---------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 9 (Echo Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x05|\n"
     "76 1 2-3 5,9 |[Length] 12 (0x000C) byte(s)|\n"
     "76 1 4-7 5,9 |[Magic Number] DE,AD,BE,EF|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 8-11 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 8-11 5,9 |0000  01 02 03 04 20  0  0  0                            ....|\n"},
    {"echo reply, padded", "0A 05 0008 DEADBEEF 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-13 5,9 |--- LCP Header (Echo Reply) -----------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 10 (Echo Reply)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x05|\n"
     "76 1 2-3 5,9 |[Length] 8 (0x0008) byte(s)|\n"
     "76 1 4-7 5,9 |[Magic Number] DE,AD,BE,EF|\n"},
    {"discard request, the magic number cut by the length", "0B 05 0007 DEADBEEF 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-12 5,9 |--- LCP Header (Discard Request) ------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 11 (Discard Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x05|\n"
     "76 1 2-3 5,9 |[Length] 7 (0x0007) byte(s)|\n"},
    {"identification over two lines",
     "0C 06 0050 DEADBEEF 'An implementation that tells its name, its version and its whole lineage'",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-85 5,9 |--- LCP Header (Identification) -------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 12 (Identification)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x06|\n"
     "76 1 2-3 5,9 |[Length] 80 (0x0050) byte(s)|\n"
     "76 1 4-7 5,9 |[Magic Number] DE,AD,BE,EF|\n"
     "76 1 8-73 5,9 |[Message] An implementation that tells its name, its version and its whole l|\n"
     "76 1 74-79 5,9 |          ineage|\n"},
    {"time remaining, text ended by a zero byte", "0D 07 0012 DEADBEEF 0000003C '2min' 0000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-23 5,9 |--- LCP Header (Time Remaining) -------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 13 (Time Remaining)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 18 (0x0012) byte(s)|\n"
     "76 1 4-7 5,9 |[Magic Number] DE,AD,BE,EF|\n"
     "76 1 8-8 5,9 |[Message] |\n"},
    {"unknown code", "0E 08 0010 DEADBEEF 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-21 5,9 |--- LCP Header (Unknown) --------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 14 (Unknown)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x08|\n"
     "76 1 2-3 5,9 |[Length] 16 (0x0010) byte(s)|\n"},
    {"a length of less than the header", "01 01 0003 0104 05D4 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-8 5,9 |--- LCP Header (Configuration Request) ------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Configuration Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 3 (0x0003) byte(s)|\n"},
    {"a length of more than there is", "09 05 FFFF DEADBEEF 01020304 05060708",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-65540 5,9 |--- LCP Header (Echo Request) ---------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 9 (Echo Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x05|\n"
     "76 1 2-3 5,9 |[Length] 65535 (0xFFFF) byte(s)|\n"
     "76 1 4-7 5,9 |[Magic Number] DE,AD,BE,EF|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 8-15 5,9 |---[Data] 8 (0x0008) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 8-15 5,9 |0000  01 02 03 04 05 06 07 08 -                          ........|\n"},
    {"Kept: 15 bytes are not shown", "09 05 000F DEADBEEF 01020304 050607", ""},
};
LINE_CASES(Lcp, LcpAnalyze, kPackets)

// Every option of two bytes, the names of all types in a row.
TEST(Lcp, NamesOfOptions) {
  std::string names;
  for (uint32_t type = 0; type < 32; ++type) {
    uint8_t packet[16] = {1, 1, 0, 6, static_cast<uint8_t>(type), 2};
    const auto lines = decode_and_dump(LcpAnalyze, Bytes(packet, 16));
    const auto first = lines.find('(', lines.find("[Type]"));
    names += lines.substr(first, lines.find(')', first) - first + 1);
  }
  EXPECT_EQ(names,
            "(Unknown)"
            "(Maximum Receive Unit)"
            "(Async Control Character Map)"
            "(Authentication Protocol)"
            "(Quality Protocol)"
            "(Magic Number)"
            "(Unknown)"
            "(Protocol Field Compression)"
            "(Address/Control Field Compression)"
            "(FCS Alternatives)"
            "(Self-Describing Pad)"
            "(Numbered Mode)"
            "(Unknown)"
            "(Callback)"
            "(Unknown)"
            "(Compound Frames)"
            "(Unknown)"
            "(MRRU)"
            "(ultilink Short Sequence Number Header)"
            "(Multilink Endpoint Discriminator)"
            "(Unknown)"
            "(DCE Identifier)"
            "(Multilink Plus Procedure)"
            "(Link Discriminator)"
            "(LCP Authentication)"
            "(Consistent Overhead Byte Stuffing)"
            "(Prefix Elision)"
            "(Multilink header format)"
            "(Internationalization)"
            "(Simple Data Link)"
            "(PPP Muxing)"
            "(Unknown)");
}

}  // namespace

}  // namespace wirelines::test
