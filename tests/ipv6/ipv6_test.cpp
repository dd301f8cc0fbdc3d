#include "ipv6/ipv6.hpp"

#include <gtest/gtest.h>

#include "ipv4/ipv4.hpp"
#include "support/cases.hpp"
#include "vek4003.h"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"UDP; Kept: the traffic class is the half in byte 1",
     "6ABCDEF0 000A 11 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "1001 0009 000A 4B03 4142",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 11|\n"
     "108 1 1-3 1,3 |[Flow Label] 843504 (0x000CDEF0)|\n"
     "108 1 4-5 1,3 |[Payload length] 10 (0x000A) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 17 (UDP)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "65535 65535 0-0 0,0 ||\n"
     "49 0 40-47 6,3 |--- UDP Header [4097] --> [9] ---------------------------------------------|\n"
     "112 1 40-41 6,3 |[Source Port] 4097 |\n"
     "112 1 42-43 6,3 |[Destination Port] 9 (DISCARD)|\n"
     "112 1 44-45 6,3 |[Data Length] 10 (0x000A) byte(s)|\n"
     "112 1 46-47 6,3 |[Checksum] 0x4B03 (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 48-49 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 48-49 1,10 |0000  41 42 20  0  0  0  0  0                            AB|\n"},
    {"fill behind the payload length is not shown",
     "60000000 000A 11 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "1001 0009 000A 4B03 4142 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 10 (0x000A) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 17 (UDP)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "65535 65535 0-0 0,0 ||\n"
     "49 0 40-47 6,3 |--- UDP Header [4097] --> [9] ---------------------------------------------|\n"
     "112 1 40-41 6,3 |[Source Port] 4097 |\n"
     "112 1 42-43 6,3 |[Destination Port] 9 (DISCARD)|\n"
     "112 1 44-45 6,3 |[Data Length] 10 (0x000A) byte(s)|\n"
     "112 1 46-47 6,3 |[Checksum] 0x4B03 (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 48-49 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 48-49 1,10 |0000  41 42 20  0  0  0  0  0                            AB|\n"},
    {"one byte too short",
     "60000000 000A 3B 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-38 1,10 |---[Data] 39 (0x0027) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  60 00 00 00 00 0A 3B 40 - FE 80 00 00 00 00 00 00  `.....;@........|\n"
     "63 1 0-31 1,10 |0010  02 02 B3 FF FE 1E 83 29 - 20 01 0D B8 00 00 00 00  .......) .......|\n"
     "63 1 0-38 1,10 |0020  00 00 00 00 00 00 00 20                            .......|\n"},
    {"Kept: ::1 reads :1; payload length 0 hands on nothing though bytes follow",
     "60000000 0000 3B 01 0000 0000 0000 0000 0000 0000 0000 0001 0000 0000 0000 0000 0000 0000 0000 0000 4142",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0000:0000:0000:0001] --> [...0000:0000:0000:0000] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 0 (0x0000) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 59 |\n"
     "108 1 7-7 1,3 |[Hop Limit] 1 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] :1 |\n"
     "108 1 24-39 1,3 |[Destination Address] :: |\n"},
    {"fragment header: all that is left, cut to what was captured",
     "60000000 05B0 2C 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "11 00 0001 12345678",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 1456 (0x05B0) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 44 (Fragment)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 40-47 1,10 |---[Data] 8 (0x0008) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 40-47 1,10 |0000  11 00 00 01 12 34 56 78 -                          .....4Vx|\n"},
    {"hop-by-hop options, then TCP summed with the rest of the length",
     "60000000 001C 00 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "06 00 0502 0000 0100 1001 0009 00000001 00000000 5002 2000 1C4D 0000",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 28 (0x001C) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 0 (Hop-by-Hop Options)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "108 1 40-47 1,3 |--- Hop-by-Hop Options header ------------|\n"
     "108 1 40-40 1,3 |[Next Header] 6 (TCP)|\n"
     "108 1 41-41 1,3 |[Next Header Length] 0 (0 byte(s))|\n"
     "65535 65535 0-0 0,0 ||\n"
     "48 0 48-67 5,3 |--- TCP Header [4097] --> [9] ---------------------------------------------|\n"
     "111 1 48-49 5,3 |[Source Port] 4097 |\n"
     "111 1 50-51 5,3 |[Destination Port] 9 (DISCARD)|\n"
     "111 1 52-55 5,3 |[Sequence No] 1 (0x00000001)|\n"
     "111 1 56-59 5,3 |[Acknowledgment No] 0 (0x00000000)|\n"
     "111 1 60-60 5,3 |[Data Offset] 20 (0x0014) byte(s)|\n"
     "111 1 61-61 5,3 |[Flags] [URG] 0 [ACK] 0 [PSH] 0 [RST] 0 [SYN] 1 [FIN] 0|\n"
     "111 1 62-63 5,3 |[Window] 8192 (0x2000) byte(s)|\n"
     "111 1 64-65 5,3 |[Checksum] 0x1C4D (OK)|\n"
     "111 1 66-67 5,3 |[Urgent Pointer] 0|\n"
     "111 1 0-0 0,0 |[Options] None|\n"},
    {"two hop-by-hop headers, the second of 16 bytes, then ICMPv6",
     "60000000 0020 00 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "00 00 0104 00000000 3A 01 010C 00000000 00000000 00000000 80 00 09FD 1234 0001",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 32 (0x0020) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 0 (Hop-by-Hop Options)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "108 1 40-47 1,3 |--- Hop-by-Hop Options header ------------|\n"
     "108 1 40-40 1,3 |[Next Header] 0 (Hop-by-Hop Options)|\n"
     "108 1 41-41 1,3 |[Next Header Length] 0 (0 byte(s))|\n"
     "108 1 48-63 1,3 |--- Hop-by-Hop Options header ------------|\n"
     "108 1 48-48 1,3 |[Next Header] 58 (ICMPv6)|\n"
     "108 1 49-49 1,3 |[Next Header Length] 1 (8 byte(s))|\n"
     "65535 65535 0-0 0,0 ||\n"
     "46 0 64-71 2,3 |--- ICMPv6 Header (Echo Request) ------------------------------------------|\n"
     "109 1 64-64 2,3 |[Type] 128 (Echo Request)|\n"
     "109 1 65-65 2,3 |[Code] 0 |\n"
     "109 1 66-67 2,3 |[Checksum] 0x09FD (OK)|\n"
     "109 1 68-69 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 70-71 2,3 |[Sequence No] 1 (0x0001)|\n"},
    {"a hop-by-hop header that leaves two bytes hands them on",
     "60000000 000A 00 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "3B 00 0104 00000000 4142",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 10 (0x000A) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 0 (Hop-by-Hop Options)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "108 1 40-47 1,3 |--- Hop-by-Hop Options header ------------|\n"
     "108 1 40-40 1,3 |[Next Header] 59 |\n"
     "108 1 41-41 1,3 |[Next Header Length] 0 (0 byte(s))|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 48-49 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 48-49 1,10 |0000  41 42 20  0  0  0  0  0                            AB|\n"},
    {"a hop-by-hop header that leaves one byte ends the decode",
     "60000000 0009 00 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "11 00 0104 00000000 41",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 9 (0x0009) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 0 (Hop-by-Hop Options)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "108 1 40-47 1,3 |--- Hop-by-Hop Options header ------------|\n"
     "108 1 40-40 1,3 |[Next Header] 17 (UDP)|\n"
     "108 1 41-41 1,3 |[Next Header Length] 0 (0 byte(s))|\n"},
    {"a hop-by-hop header longer than the packet",
     "60000000 0008 00 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "11 FF 0104 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 8 (0x0008) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 0 (Hop-by-Hop Options)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "108 1 40-2087 1,3 |--- Hop-by-Hop Options header ------------|\n"
     "108 1 40-40 1,3 |[Next Header] 17 (UDP)|\n"
     "108 1 41-41 1,3 |[Next Header Length] 255 (2040 byte(s))|\n"},
    {"payload length 0 still shows the hop-by-hop header, as of a jumbogram",
     "60000000 0000 00 40 FE80 0000 0000 0000 0202 B3FF FE1E 8329 2001 0DB8 0000 0000 0000 0000 0000 0007"
     "3B 00 C204 00010000",
     "65535 65535 0-0 0,0 ||\n"
     "45 0 0-39 1,3 |--- IPv6 Header [...0202:B3FF:FE1E:8329] --> [...0000:0000:0000:0007] -----|\n"
     "108 1 0-0 1,3 |[Version] 6|\n"
     "108 1 0-1 1,3 |[Traffic Class] 0|\n"
     "108 1 1-3 1,3 |[Flow Label] 0 (0x00000000)|\n"
     "108 1 4-5 1,3 |[Payload length] 0 (0x0000) byte(s)|\n"
     "108 1 6-6 1,3 |[Next Header] 0 (Hop-by-Hop Options)|\n"
     "108 1 7-7 1,3 |[Hop Limit] 64 hop(s)|\n"
     "108 1 8-23 1,3 |[Source Address] FE80::202:B3FF:FE1E:8329 |\n"
     "108 1 24-39 1,3 |[Destination Address] 2001:DB8::7 |\n"
     "108 1 40-47 1,3 |--- Hop-by-Hop Options header ------------|\n"
     "108 1 40-40 1,3 |[Next Header] 59 |\n"
     "108 1 41-41 1,3 |[Next Header Length] 0 (0 byte(s))|\n"},
};
LINE_CASES(Ip6, Ip6Analyze, kPackets)

TEST(Ip6, ReachedFromTheDataLinkAndFromIpv4) {
  const std::string packet = kPackets[0].bytes;
  const auto frame = bytes_of("030405060708 0A0B0C0D0E0F 86DD" + packet);
  EXPECT_NE(
      decode_and_dump(decode_frame, Bytes(frame.data(), static_cast<int32_t>(frame.size()))).find("\n45 0 14-53 "),
      std::string::npos);
  const auto datagram = bytes_of("4500 0046 0000 0000 40 29 0000 C0000201 C6336402" + packet);
  const auto lines = decode_and_dump(IpAnalyze, Bytes(datagram.data(), static_cast<int32_t>(datagram.size())));
  EXPECT_NE(lines.find("\n45 0 20-59 "), std::string::npos) << lines;
  EXPECT_NE(lines.find("\n49 0 60-67 "), std::string::npos) << lines;
}

TEST(Ip6, NicknamesThatFitTheirLine) {
  const auto packet =
      bytes_of("60000000 0000 3B 40 1111 2222 3333 4444 5555 6666 7777 8888 2001 0DB8 0000 0000 0000 0000 0000 0007");
  const auto shows = [&](const char* line) {
    return decode_and_dump(Ip6Analyze, Bytes(packet.data(), 40)).find(line) != std::string::npos;
  };
  // 39 characters of address and 20 of name are 59; one more is too many.
  NickNameAdd(NICKNAME_IP6, "1111:2222:3333:4444:5555:6666:7777:8888", "twenty-characters-xx");
  NickNameAdd(NICKNAME_IP6, "2001:DB8::7", "a name of thirty-five characters...");
  EXPECT_TRUE(shows("[Source Address] 1111:2222:3333:4444:5555:6666:7777:8888 (twenty-characters-xx)|"));
  EXPECT_TRUE(shows("[Destination Address] 2001:DB8::7 (a name of thirty-five characters...)|"));
  NickNameClear();
  NickNameAdd(NICKNAME_IP6, "1111:2222:3333:4444:5555:6666:7777:8888", "twenty-one-characters");
  EXPECT_TRUE(shows("[Source Address] 1111:2222:3333:4444:5555:6666:7777:8888 |"));
  NickNameClear();
}

TEST(Ip6, ThousandsOfHopByHopHeadersAreWalked) {
  auto packet = bytes_of(kPackets[0].bytes);
  packet.resize(40);
  packet[4] = packet[5] = 0xFF;
  packet[6] = 0;
  packet.resize(40 + 65528);
  LineList list{};
  state().reset(WIRELINES_ASCII);
  Ip6Analyze(list, Bytes(packet.data(), static_cast<int32_t>(packet.size())));
  EXPECT_EQ(list.count, 10 + 3 * 8191);
  EXPECT_EQ(state().topLineIndex, 1U);
  DelDspBuffer(&list);
}

}  // namespace

}  // namespace wirelines::test
