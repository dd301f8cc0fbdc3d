#include "ipv6/icmpv6.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

// From FE80::202:B3FF:FE1E:8329 to FF02::1, as the router solicitations of a segment.
void decode_message(LineList& list, Bytes data) {
  static const auto header =
      bytes_of("60000000 0000 3A FF FE80 0000 0000 0000 0202 B3FF FE1E 8329 FF02 0000 0000 0000 0000 0000 0000 0001");
  PseudoHeader pseudo = Ip6PseudoHeader(Bytes(header.data(), 40));
  pseudo.upper_length = static_cast<uint32_t>(data.size());
  pseudo.protocol = 58;
  IcmpV6Analyze(list, data, pseudo);
}

const Case kMessages[] = {
    {"echo request", "80 00 B428 1234 0007 41424344",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMPv6 Header (Echo Request) ------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 128 (Echo Request)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xB428 (OK)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 7 (0x0007)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-11 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-11 1,10 |0000  41 42 43 44 20  0  0  0                            ABCD|\n"},
    {"echo reply of just the header, checksum wrong", "81 00 B428 1234 0007",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMPv6 Header (Echo Reply) --------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 129 (Echo Reply)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xB428 (NG)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 7 (0x0007)|\n"},
    {"one byte too short", "80 00 0000 1234 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-6 1,10 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-6 1,10 |0000  80 00 00 00 12 34 00 20                            .....4.|\n"},
    {"destination unreachable: title over everything, bytes 4 to 7 without a line", "01 04 69DB 00000000 600D",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-9 2,3 |--- ICMPv6 Header (Destination Unreachable) -------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 1 (Destination Unreachable)|\n"
     "109 1 1-1 2,3 |[Code] 4 (Port Unreachable)|\n"
     "109 1 2-3 2,3 |[Checksum] 0x69DB (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-9 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-9 1,10 |0000  60 0D 20  0  0  0  0  0                            `.|\n"},
    {"packet too big: no name of the code; checksum 0 has no verdict", "02 00 0000 00000500",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMPv6 Header (Packet is Too Big) -------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 2 (Packet is Too Big)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] None|\n"},
    {"multicast listener report", "83 00 C2A9 03E8 0000 FF02 0000 0000 0000 0000 0001 FF1E 8329",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-23 2,3 |--- ICMPv6 Header (Multicast Listener Report) -----------------------------|\n"
     "109 1 0-0 2,3 |[Type] 131 (Multicast Listener Report)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xC2A9 (OK)|\n"
     "109 1 4-5 2,3 |[Maximun Response Delay] 1000 msec|\n"
     "109 1 8-23 2,3 |[Multicast Address] FF02:0:0:0:0:1:FF1E:8329|\n"},
    {"router solicitation with the sender's address", "85 00 0C9B 00000000 01 01 0202B31E8329",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-15 2,3 |--- ICMPv6 Header (Router Solicitation) -----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 133 (Router Solicitation)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0x0C9B (OK)|\n"
     "109 1 8-8 2,3 |[Option Type] 1 (Source Link-Layer Address)|\n"
     "109 1 9-9 2,3 |[Option Length] 8 byte(s)|\n"
     "109 1 10-15 2,3 |[Link-Layer Address] 0202B31E8329|\n"},
    {"Kept: only the first option of a router advertisement, flags of its byte 4, lifetime's range",
     "86 00 B601 40 C0 0708 00007530 000003E8 "
     "03 04 40 C0 FFFFFFFF 00015180 00000000 20010DB8 0000 0000 0000 0000 0000 0000 05 01 0000 000005DC",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-55 2,3 |--- ICMPv6 Header (Router Advertisement) ----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 134 (Router Advertisement)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xB601 (OK)|\n"
     "109 1 4-4 2,3 |[Cur Hop Limit] 64|\n"
     "109 1 5-5 2,3 |[M] 1 [O] 1|\n"
     "109 1 4-5 2,3 |[Router Lifetime] 1800 sec|\n"
     "109 1 8-11 2,3 |[Reachable Time] 30000 msec|\n"
     "109 1 12-15 2,3 |[Retrans Timer] 1000 msec|\n"
     "109 1 16-16 2,3 |[Option Type] 3 (Prefix Information)|\n"
     "109 1 17-17 2,3 |[Option Length] 32 byte(s)|\n"
     "109 1 18-18 2,3 |[Prefix Length] 64 byte(s)|\n"
     "109 1 19-19 2,3 |[L] 1 [A] 1|\n"
     "109 1 20-23 2,3 |[Valid Lifetime] 0xffffffff (infinity)|\n"
     "109 1 24-27 2,3 |[Preferred Lifetime] 86400 sec|\n"
     "109 1 32-47 2,3 |[Prefix] 2001:DB8:0:0:0:0:0:0|\n"},
    {"prefix with a lifetime, preferred for ever",
     "86 00 C5DF 40 40 0000 00000000 00000000 "
     "03 04 40 C0 40278D00 FFFFFFFF 00000000 20010DB8 0001 0000 0000 0000 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-47 2,3 |--- ICMPv6 Header (Router Advertisement) ----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 134 (Router Advertisement)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xC5DF (OK)|\n"
     "109 1 4-4 2,3 |[Cur Hop Limit] 64|\n"
     "109 1 5-5 2,3 |[M] 0 [O] 1|\n"
     "109 1 4-5 2,3 |[Router Lifetime] 0 sec|\n"
     "109 1 8-11 2,3 |[Reachable Time] 0 msec|\n"
     "109 1 12-15 2,3 |[Retrans Timer] 0 msec|\n"
     "109 1 16-16 2,3 |[Option Type] 3 (Prefix Information)|\n"
     "109 1 17-17 2,3 |[Option Length] 32 byte(s)|\n"
     "109 1 18-18 2,3 |[Prefix Length] 64 byte(s)|\n"
     "109 1 19-19 2,3 |[L] 0 [A] 1|\n"
     "109 1 20-23 2,3 |[Valid Lifetime] 1076333824 sec|\n"
     "109 1 24-27 2,3 |[Preferred Lifetime] 0xffffffff (infinity)|\n"
     "109 1 32-47 2,3 |[Prefix] 2001:DB8:1:0:0:0:0:0|\n"},
    {"MTU option", "86 00 F2F8 40 00 0708 00000000 00000000 05 01 0000 000005DC",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-23 2,3 |--- ICMPv6 Header (Router Advertisement) ----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 134 (Router Advertisement)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xF2F8 (OK)|\n"
     "109 1 4-4 2,3 |[Cur Hop Limit] 64|\n"
     "109 1 5-5 2,3 |[M] 0 [O] 0|\n"
     "109 1 4-5 2,3 |[Router Lifetime] 1800 sec|\n"
     "109 1 8-11 2,3 |[Reachable Time] 0 msec|\n"
     "109 1 12-15 2,3 |[Retrans Timer] 0 msec|\n"
     "109 1 16-16 2,3 |[Option Type] 5 (MTU)|\n"
     "109 1 17-17 2,3 |[Option Length] 8 byte(s)|\n"
     "109 1 20-23 2,3 |[MTU] 1500 (0x05DC) byte(s)|\n"},
    {"router advertisement of 8 bytes: the missing times read zero", "86 00 FD65 40 80 0708",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMPv6 Header (Router Advertisement) ----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 134 (Router Advertisement)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xFD65 (OK)|\n"
     "109 1 4-4 2,3 |[Cur Hop Limit] 64|\n"
     "109 1 5-5 2,3 |[M] 1 [O] 0|\n"
     "109 1 4-5 2,3 |[Router Lifetime] 1800 sec|\n"
     "109 1 8-11 2,3 |[Reachable Time] 0 msec|\n"
     "109 1 12-15 2,3 |[Retrans Timer] 0 msec|\n"},
    {"neighbor solicitation; the nonce behind its first option is not shown",
     "87 00 6433 00000000 FE80 0000 0000 0000 0000 0000 0000 0001 01 01 0202B31E8329 0E 01 112233445566",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-39 2,3 |--- ICMPv6 Header (Neighbor Solicitation) ---------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 135 (Neighbor Solicitation)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0x6433 (OK)|\n"
     "109 1 8-23 2,3 |[Target Address] FE80:0:0:0:0:0:0:1|\n"
     "109 1 24-24 2,3 |[Option Type] 1 (Source Link-Layer Address)|\n"
     "109 1 25-25 2,3 |[Option Length] 8 byte(s)|\n"
     "109 1 26-31 2,3 |[Link-Layer Address] 0202B31E8329|\n"},
    {"Kept: neighbor advertisement under the router's name; an address of another length is a data block",
     "88 00 F2B5 E0000000 FE80 0000 0000 0000 0202 B3FF FE1E 8329 "
     "02 02 0202B31E8329 0000000000000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-39 2,3 |--- ICMPv6 Header (Router Advertisement) ----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 136 (Router Advertisement)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xF2B5 (OK)|\n"
     "109 1 4-4 2,3 |[R] 1 [S] 1 [O] 1|\n"
     "109 1 8-23 2,3 |[Target Address] FE80:0:0:0:202:B3FF:FE1E:8329|\n"
     "109 1 24-24 2,3 |[Option Type] 2 (Target Link-Layer Address)|\n"
     "109 1 25-25 2,3 |[Option Length] 16 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "46 1 26-39 2,3 |---[Data] 14 (0x000E) byte(s) -------------------------------- ASCII ------|\n"
     "46 1 26-39 2,3 |0000  02 02 B3 1E 83 29 00 00 - 00 00 00 00 00 00        .....)........|\n"},
    {"redirect with the redirected header",
     "89 00 B179 00000000 FE80 0000 0000 0000 0000 0000 0000 0001 2001 0DB8 0000 0000 0000 0000 0000 0007 "
     "04 02 000000000000 6000000000000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-55 2,3 |--- ICMPv6 Header (Redirect) ----------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 137 (Redirect)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xB179 (OK)|\n"
     "109 1 8-23 2,3 |[Target Address] FE80:0:0:0:0:0:0:1|\n"
     "109 1 24-39 2,3 |[Destination Address] 2001:DB8:0:0:0:0:0:7|\n"
     "109 1 40-40 2,3 |[Option Type] 4 (Redirected Header)|\n"
     "109 1 41-41 2,3 |[Option Length] 16 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "46 1 42-55 2,3 |---[Data] 14 (0x000E) byte(s) -------------------------------- ASCII ------|\n"
     "46 1 42-55 2,3 |0000  00 00 00 00 00 00 60 00 - 00 00 00 00 00 00        ......`.......|\n"},
    {"an option without a name: a data block of all that is left", "85 00 9E18 00000000 0E 01 112233445566",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-15 2,3 |--- ICMPv6 Header (Router Solicitation) -----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 133 (Router Solicitation)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0x9E18 (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-15 1,10 |---[Data] 8 (0x0008) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-15 1,10 |0000  0E 01 11 22 33 44 55 66 -                          ...\"3DUf|\n"},
    {"an option of no length shows no value", "85 00 AB19 00000000 01 00 112233445566",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-15 2,3 |--- ICMPv6 Header (Router Solicitation) -----------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 133 (Router Solicitation)|\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xAB19 (OK)|\n"
     "109 1 8-8 2,3 |[Option Type] 1 (Source Link-Layer Address)|\n"
     "109 1 9-9 2,3 |[Option Length] 0 byte(s)|\n"},
    {"a type without a name: version 2 listener report", "8F 00 37E9 0000 0001 04000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-11 2,3 |--- ICMPv6 Header  --------------------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 143 |\n"
     "109 1 1-1 2,3 |[Code] 0 |\n"
     "109 1 2-3 2,3 |[Checksum] 0x37E9 (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-11 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-11 1,10 |0000  04 00 00 00 20  0  0  0                            ....|\n"},
};
LINE_CASES(IcmpV6, decode_message, kMessages)

TEST(IcmpV6, NamesOfTypesAndCodes) {
  EXPECT_STREQ(::IcmpV6TypeInfoToName(3), "Time Exceed");
  EXPECT_STREQ(::IcmpV6TypeInfoToName(132), "Multicast Listener Done");
  EXPECT_STREQ(::IcmpV6TypeInfoToName(136), "Router Advertisement");  // Kept
  for (const int none : {0, 5, 127, 138, 255}) {
    EXPECT_STREQ(::IcmpV6TypeInfoToName(static_cast<uint8_t>(none)), "") << none;
  }

  const struct {
    uint8_t type, code;
    const char* line;
  } cases[] = {
      {1, 0, "[Code] 0 (no route to destination)|"},
      {1, 1, "[Code] 1 (communication with destination administratively prohibited)|"},
      {1, 2, "[Code] 2 |"},
      {1, 3, "[Code] 3 (Address Unreachable)|"},
      {3, 0, "[Code] 0 (hop limit exceeded in transit)|"},
      {3, 1, "[Code] 1 (fragment reassembly time exceeded)|"},
      {4, 0, "[Code] 0 (erroneous header field encountered)|"},
      {4, 1, "[Code] 1 (unrecognized Next Header type encountered)|"},
      {4, 2, "[Code] 2 (unrecognized IPv6 option encountered)|"},
      {0, 0, "[Code] 0 |"},
  };
  for (const auto& c : cases) {
    const uint8_t message[8] = {c.type, c.code};
    EXPECT_NE(decode_and_dump(decode_message, Bytes(message, 8)).find(c.line), std::string::npos) << c.line;
  }
}

}  // namespace

}  // namespace wirelines::test
