#include "ipapps/dhcp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

// The fixed fields that most rows share, a client's, with the magic cookie; and their lines in a DHCP message.
#define ZEROS_32 "0000000000000000000000000000000000000000000000000000000000000000"
#define CLIENT_FIELDS                                         \
  "01 01 06 00 3903F326 0005 8000 00000000 C0000209 00000000" \
  "C0000201 00A0C91B2C3D 00000000000000000000" ZEROS_32 ZEROS_32 ZEROS_32 ZEROS_32 ZEROS_32 ZEROS_32 "63825363"
#define CLIENT_LINES                                          \
  "94 1 0-0 6,5 |[op code] 1 (BOOTREQUEST)|\n"                \
  "94 1 1-1 6,5 |[hardware address type] 1 (Ethernet)|\n"     \
  "94 1 2-2 6,5 |[hardware address length] 6 |\n"             \
  "94 1 3-3 6,5 |[hops] 0 hop(s)|\n"                          \
  "94 1 4-7 6,5 |[transaction ID] 956560166 (0x3903F326)|\n"  \
  "94 1 8-9 6,5 |[elapsed] 5 second(s)|\n"                    \
  "94 1 12-15 6,5 |[client IP address] 0.0.0.0 |\n"           \
  "94 1 16-19 6,5 |[user IP address] 192.0.2.9 |\n"           \
  "94 1 20-23 6,5 |[server IP address] 0.0.0.0 |\n"           \
  "94 1 24-27 6,5 |[router IP address] 192.0.2.1 |\n"         \
  "94 1 28-43 6,5 |[client hardware address] 00A0C91B2C3D|\n" \
  "94 1 44-44 6,5 |[server host name]|\n"                     \
  "94 1 108-108 6,5 |[boot file name]|\n"                     \
  "94 1 236-239 6,5 |[vendor-specific area] 99.130.83.99 (0x63825363)|\n"

namespace wirelines::test {

namespace {

const Case kDhcp[] = {
    {"discover", CLIENT_FIELDS "35 01 01  37 04 01 0F 00 C8  3D 07 01 00A0C91B2C3D  51 03 000000  FF 0000",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-265 6,5 |--- DHCP Packet (Discover) ------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 1 (Discover)|\n"
     "94 1 243-248 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-245 6,5 |[Parameter Request List - 1] 1 (Subnet Mask)|\n"
     "94 1 246-246 6,5 |[Parameter Request List - 2] 15 (Domain Name)|\n"
     "94 1 247-247 6,5 |[Parameter Request List - 3] 0 (Pad)|\n"
     "94 1 248-248 6,5 |[Parameter Request List - 4] 200 (Pad)|\n"
     "94 1 249-257 6,5 |--- Option tag 3 ------------------------|\n"
     "94 1 251-257 6,5 |[Client Identifier] 0100A0C91B2C3D|\n"
     "94 1 258-262 6,5 |--- Option tag 4 ------------------------|\n"
     "31 1 260-262 6,5 |[Dynamic DNS Update] 3 byte(s)|\n"
     "94 2 260-262 6,5 |0000  00 00 00 20  0  0  0  0                            ...|\n"},
    {"addresses and numbers",
     CLIENT_FIELDS "35 01 05  01 04 FFFFFF00  02 04 FFFF8F80  03 08 C0000201 C0000202  04 04 C0000203  05 04 C0000204"
                   "06 04 C0000205  07 04 C0000206  08 04 C0000207  09 04 C0000208  0A 04 C000020A  0B 04 C000020B"
                   "1C 04 C00002FF  32 04 C0000209  33 04 00015180  36 04 C0000201  3A 04 0000A8C0  3B 04 00012750 FF",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-349 6,5 |--- DHCP Packet (ACK) -----------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 5 (ACK)|\n"
     "94 1 243-248 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-248 6,5 |[Subnet Mask] 255.255.255.0|\n"
     "94 1 249-254 6,5 |--- Option tag 3 ------------------------|\n"
     "94 1 251-254 6,5 |[Time Offset] 4294938496 (0xFFFF8F80)|\n"
     "94 1 255-264 6,5 |--- Option tag 4 ------------------------|\n"
     "94 1 257-260 6,5 |[Gateway] 192.0.2.1|\n"
     "94 1 265-270 6,5 |--- Option tag 5 ------------------------|\n"
     "94 1 267-270 6,5 |[Gateway] 192.0.2.3|\n"
     "94 1 271-276 6,5 |--- Option tag 6 ------------------------|\n"
     "94 1 273-276 6,5 |[Name Server] 192.0.2.4|\n"
     "94 1 277-282 6,5 |--- Option tag 7 ------------------------|\n"
     "94 1 279-282 6,5 |[Domain Name] 192.0.2.5|\n"
     "94 1 283-288 6,5 |--- Option tag 8 ------------------------|\n"
     "94 1 285-288 6,5 |[Log Server] 192.0.2.6|\n"
     "94 1 289-294 6,5 |--- Option tag 9 ------------------------|\n"
     "94 1 291-294 6,5 |[Cookie/Quote Server] 192.0.2.7|\n"
     "94 1 295-300 6,5 |--- Option tag 10 ------------------------|\n"
     "94 1 297-300 6,5 |[LPR Server] 192.0.2.8|\n"
     "94 1 301-306 6,5 |--- Option tag 11 ------------------------|\n"
     "94 1 303-306 6,5 |[Impress Server] 192.0.2.10|\n"
     "94 1 307-312 6,5 |--- Option tag 12 ------------------------|\n"
     "94 1 309-312 6,5 |[RLP Server] 192.0.2.11|\n"
     "94 1 313-318 6,5 |--- Option tag 13 ------------------------|\n"
     "94 1 315-318 6,5 |[Braodcast Address] 192.0.2.255|\n"
     "94 1 319-324 6,5 |--- Option tag 14 ------------------------|\n"
     "94 1 321-324 6,5 |[IP Address] 192.0.2.9 |\n"
     "94 1 325-330 6,5 |--- Option tag 15 ------------------------|\n"
     "94 1 327-330 6,5 |[Lease Time] 86400 (0x00015180)|\n"
     "94 1 331-336 6,5 |--- Option tag 16 ------------------------|\n"
     "94 1 333-336 6,5 |[Server Identifier] 192.0.2.1|\n"
     "94 1 337-342 6,5 |--- Option tag 17 ------------------------|\n"
     "94 1 339-342 6,5 |[Renewal Time] 43200 (0x0000A8C0)|\n"
     "94 1 343-348 6,5 |--- Option tag 18 ------------------------|\n"
     "94 1 345-348 6,5 |[Rebinding Time] 75600 (0x00012750)|\n"},
    {"texts, sizes and what has no format of its own",
     CLIENT_FIELDS "35 01 05  0C 05 'alpha'  0D 02 0102  0F 0B 'example.org'  3C 04 'abc' 00  2B 03 0A0B0C"
                   "0C 00  61 00  00 0C 05 'alpha'",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-289 6,5 |--- DHCP Packet (ACK) -----------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 5 (ACK)|\n"
     "94 1 243-249 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-249 6,5 |[Hostname]alpha|\n"
     "94 1 250-253 6,5 |--- Option tag 3 ------------------------|\n"
     "94 1 252-253 6,5 |[Boot File Size] 258 (0x0.4X)\\xCA\\xDE\\xB2\\xC4|\n"
     "94 1 254-266 6,5 |--- Option tag 4 ------------------------|\n"
     "94 1 256-266 6,5 |[DNS Domain Name]example.org|\n"
     "94 1 267-272 6,5 |--- Option tag 5 ------------------------|\n"
     "94 1 269-272 6,5 |[Vendor class identifier]abc|\n"
     "94 1 273-277 6,5 |--- Option tag 6 ------------------------|\n"
     "31 1 275-277 6,5 |[Data] 3 byte(s)|\n"
     "94 2 275-277 6,5 |0000  0A 0B 0C 20  0  0  0  0                            ...|\n"
     "94 1 278-279 6,5 |--- Option tag 7 ------------------------|\n"
     "94 1 280-281 6,5 |--- Option tag 8 ------------------------|\n"},
    {"Kept: the title's type is read at byte 242, here an overload", CLIENT_FIELDS "34 01 02  35 01 09  FF",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-246 6,5 |--- DHCP Packet (Offer) ---------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "31 1 242-242 6,5 |[Data] 1 byte(s)|\n"
     "94 2 242-242 6,5 |0000  02 20  0  0  0  0  0  0                            .|\n"
     "94 1 243-245 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-245 6,5 |[Message Time] 9 |\n"},
    {"codes that run past the end", CLIENT_FIELDS "35 01 03  37 FF 01 03",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-246 6,5 |--- DHCP Packet (Requext) -------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 3 (Requext)|\n"
     "94 1 243-499 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-245 6,5 |[Parameter Request List - 1] 1 (Subnet Mask)|\n"
     "94 1 246-246 6,5 |[Parameter Request List - 2] 3 (Gateways)|\n"},
    {"an identifier that runs past the end", CLIENT_FIELDS "35 01 03  3D 28 01 00A0C9",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-248 6,5 |--- DHCP Packet (Requext) -------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 3 (Requext)|\n"
     "94 1 243-284 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-284 6,5 |[Client Identifier] 0100A0C9|\n"},
    {"a text that runs past the end", CLIENT_FIELDS "35 01 03  0C C8 'alpha'",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-249 6,5 |--- DHCP Packet (Requext) -------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 3 (Requext)|\n"
     "94 1 243-444 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-250 6,5 |[Hostname]alpha|\n"},
    {"an address that runs past the end", CLIENT_FIELDS "35 01 03  36 04 C000",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-246 6,5 |--- DHCP Packet (Requext) -------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 3 (Requext)|\n"
     "94 1 243-248 6,5 |--- Option tag 2 ------------------------|\n"
     "94 1 245-248 6,5 |[Server Identifier] 192.0.0.0|\n"},
    {"bytes that run past the end", CLIENT_FIELDS "35 01 03  2B 40 0A0B0C",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-247 6,5 |--- DHCP Packet (Requext) -------------------------------------------------|\n" CLIENT_LINES
     "94 1 240-242 6,5 |--- Option tag 1 ------------------------|\n"
     "94 1 242-242 6,5 |[Message Time] 3 (Requext)|\n"
     "94 1 243-308 6,5 |--- Option tag 2 ------------------------|\n"
     "31 1 245-308 6,5 |[Data] 64 byte(s)|\n"
     "94 2 245-247 6,5 |0000  0A 0B 0C 20  0  0  0  0                            ...|\n"},
    {"Kept: the broadcast bit that is shown is 0x0080; unknown codes, an address as long as a line takes, no options",
     "03 06 FF 02 3903F326 0000 8080 00000000 00000000 00000000 00000000"
     "0102030405060708090A0B0C0D0E0F10 'host'" ZEROS_32
     "00000000000000000000000000000000000000000000000000000000" ZEROS_32 ZEROS_32 ZEROS_32 ZEROS_32
     "63825363 FF 35 01 01",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-243 6,5 |--- BOOTP Packet ----------------------------------------------------------|\n"
     "94 1 0-0 6,5 |[op code] 3 (Unknown)|\n"
     "94 1 1-1 6,5 |[hardware address type] 6 |\n"
     "94 1 2-2 6,5 |[hardware address length] 255 |\n"
     "94 1 3-3 6,5 |[hops] 2 hop(s)|\n"
     "94 1 4-7 6,5 |[transaction ID] 956560166 (0x3903F326)|\n"
     "94 1 8-9 6,5 |[elapsed] 0 second(s)|\n"
     "94 1 10-11 6,5 |[flags] 0x8080 (boradcast)|\n"
     "94 1 12-15 6,5 |[client IP address] 0.0.0.0 |\n"
     "94 1 16-19 6,5 |[user IP address] 0.0.0.0 |\n"
     "94 1 20-23 6,5 |[server IP address] 0.0.0.0 |\n"
     "94 1 24-27 6,5 |[gateway IP address] 0.0.0.0 |\n"
     "94 1 28-43 6,5 |[client hardware address] "
     "0102030405060708090A0B0C0D0E0F10686F737400000000000000000000000000000000000000000000000000000000000000|\n"
     "94 1 44-48 6,5 |[server host name]host|\n"
     "94 1 108-108 6,5 |[boot file name]|\n"
     "94 1 236-239 6,5 |[vendor-specific area] 99.130.83.99 (0x63825363)|\n"},
    {"BOOTP reply of 300 bytes without the cookie",
     "02 01 06 01 3903F326 0000 0000 00000000 C0000209 C0000202 C0000201 00A0C91B2C3D 00000000000000000000"
     "'boot.example.org' 00" ZEROS_32 "000000000000000000000000000000"
     "'/images/the-first-loader-of-all-whose-name-is-longer-than-sixty-four-characters' 00" ZEROS_32
     "00000000000000000000000000000000"
     "01 02" ZEROS_32 "000000000000000000000000000000000000000000000000000000000000",
     "65535 65535 0-0 0,0 ||\n"
     "31 0 0-299 6,5 |--- BOOTP Packet ----------------------------------------------------------|\n"
     "94 1 0-0 6,5 |[op code] 2 (BOOTREPLY)|\n"
     "94 1 1-1 6,5 |[hardware address type] 1 (Ethernet)|\n"
     "94 1 2-2 6,5 |[hardware address length] 6 |\n"
     "94 1 3-3 6,5 |[hops] 1 hop(s)|\n"
     "94 1 4-7 6,5 |[transaction ID] 956560166 (0x3903F326)|\n"
     "94 1 8-9 6,5 |[elapsed] 0 second(s)|\n"
     "94 1 12-15 6,5 |[client IP address] 0.0.0.0 |\n"
     "94 1 16-19 6,5 |[user IP address] 192.0.2.9 |\n"
     "94 1 20-23 6,5 |[server IP address] 192.0.2.2 |\n"
     "94 1 24-27 6,5 |[gateway IP address] 192.0.2.1 |\n"
     "94 1 28-43 6,5 |[client hardware address] 00A0C91B2C3D|\n"
     "94 1 44-60 6,5 |[server host name]boot.example.org|\n"
     "94 1 108-167 6,5 |[boot file name]/images/the-first-loader-of-all-whose-name-is-longer-than-si|\n"
     "94 1 168-171 6,5 |                xty-|\n"
     "31 1 236-299 6,5 |[Vendor Information]|\n"
     "94 2 236-251 6,5 |0000  01 02 00 00 00 00 00 00 - 00 00 00 00 00 00 00 00  ................|\n"
     "94 2 252-267 6,5 |0010  00 00 00 00 00 00 00 00 - 00 00 00 00 00 00 00 00  ................|\n"
     "94 2 268-283 6,5 |0020  00 00 00 00 00 00 00 00 - 00 00 00 00 00 00 00 00  ................|\n"
     "94 2 284-299 6,5 |0030  00 00 00 00 00 00 00 00 - 00 00 00 00 00 00 00 00  ................|\n"},
};
LINE_CASES(Dhcp, DhcpAnalyze, kDhcp)

TEST(Dhcp, LengthsThatDecide) {
  struct {
    const char* name;
    int32_t length;
    std::string_view shown;
    bool expected;
  } const kRows[] = {
      {"one byte short", 242, "31 0 ", false},
      {"the least", 243, "31 0 0-242 6,5 |--- BOOTP Packet ---", true},
      {"no vendor information yet", 299, "[Vendor Information]", false},
      {"vendor information", 300, "31 1 236-299 6,5 |[Vendor Information]|\n94 2 236-251 6,5 |0000  00 00", true},
  };
  const std::vector<uint8_t> bytes(300);
  for (const auto& row : kRows) {
    const auto lines = decode_and_dump(DhcpAnalyze, Bytes(bytes.data(), row.length));
    EXPECT_EQ(lines.find(row.shown) != std::string::npos, row.expected) << row.name << '\n' << lines;
  }
}

}  // namespace

}  // namespace wirelines::test
