#include "pppoe/ppp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"
#include "vek4003.h"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"configuration request", "01 01 0022 0306 C0A80001 8106 C0000235 8206 C0000289 8306 C0000236 8406 C000028A",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-33 5,9 |--- IPCP Header (Configuration Request) -----------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Configuration Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 34 (0x0022) byte(s)|\n"
     "76 1 4-9 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 3 (IP Address)|\n"
     "76 1 5-5 5,9 |[Length] 6 byte(s)|\n"
     "76 1 6-9 5,9 |[IP Address] 192.168.0.1|\n"
     "76 1 10-15 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 10-10 5,9 |[Type] 129 (\\xCC\\xDF\\xD7\\xB2\\xCF\\xD8DNS\\xB1\\xC4\\xDE\\xDA\\xBD)|\n"
     "76 1 11-11 5,9 |[Length] 6 byte(s)|\n"
     "76 1 12-15 5,9 |[IP Address] 192.0.2.53|\n"
     "76 1 16-21 5,9 |--- Option 3 ----------------------------|\n"
     "76 1 16-16 5,9 |[Type] 130 (\\xCC\\xDF\\xD7\\xB2\\xCF\\xD8NBNS\\xB1\\xC4\\xDE\\xDA\\xBD)|\n"
     "76 1 17-17 5,9 |[Length] 6 byte(s)|\n"
     "76 1 18-21 5,9 |[IP Address] 192.0.2.137|\n"
     "76 1 22-27 5,9 |--- Option 4 ----------------------------|\n"
     "76 1 22-22 5,9 |[Type] 131 (\\xBE\\xB6\\xDD\\xC0\\xDE\\xD8DNS\\xB1\\xC4\\xDE\\xDA\\xBD)|\n"
     "76 1 23-23 5,9 |[Length] 6 byte(s)|\n"
     "76 1 24-27 5,9 |[IP Address] 192.0.2.54|\n"
     "76 1 28-33 5,9 |--- Option 5 ----------------------------|\n"
     "76 1 28-28 5,9 |[Type] 132 (\\xBE\\xB6\\xDD\\xC0\\xDE\\xD8NBNS\\xB1\\xC4\\xDE\\xDA\\xBD)|\n"
     "76 1 29-29 5,9 |[Length] 6 byte(s)|\n"
     "76 1 30-33 5,9 |[IP Address] 192.0.2.138|\n"},
    {"configuration reject: deprecated and unknown options", "04 01 0012 010A C0000201 C6336402 0402 8002",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-17 5,9 |--- IPCP Header (Configuration Reject) ------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 4 (Configuration Reject)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 18 (0x0012) byte(s)|\n"
     "76 1 4-13 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 1 (IP Addresses)|\n"
     "76 1 5-5 5,9 |[Length] 10 byte(s)|\n"
     "76 1 6-9 5,9 |[Source Address] 192.0.2.1 |\n"
     "76 1 10-13 5,9 |[Destination Address] 198.51.100.2 |\n"
     "76 1 14-15 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 14-14 5,9 |[Type] 4 (Mobile IPv4)|\n"
     "76 1 15-15 5,9 |[Length] 2 byte(s)|\n"
     "76 1 16-17 5,9 |--- Option 3 ----------------------------|\n"
     "76 1 16-16 5,9 |[Type] 128 (Unknown)|\n"
     "76 1 17-17 5,9 |[Length] 2 byte(s)|\n"},
    {"compression, slots as two bytes", "02 01 000C 0208 002D 0010 0001",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-11 5,9 |--- IPCP Header (Configuration Ack) ---------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Configuration Ack)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 12 (0x000C) byte(s)|\n"
     "76 1 4-11 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 2 (IP Compression Protocol)|\n"
     "76 1 5-5 5,9 |[Length] 8 byte(s)|\n"
     "76 1 6-7 5,9 |[IP Compression Protocol] 0x002D (Van Jacobson Compression)|\n"
     "76 1 8-9 5,9 |[Max Slot ID] 16 (MIN)|\n"
     "76 1 10-11 5,9 |[Compressed Slot ID] 1 (COMPRESSED_TCP)|\n"},
    {"compression, other values", "03 01 0014 0208 002D 0004 0000 0208 0037 0F01 0306",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-19 5,9 |--- IPCP Header (Configuration Nak) ---------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 3 (Configuration Nak)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 20 (0x0014) byte(s)|\n"
     "76 1 4-11 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 2 (IP Compression Protocol)|\n"
     "76 1 5-5 5,9 |[Length] 8 byte(s)|\n"
     "76 1 6-7 5,9 |[IP Compression Protocol] 0x002D (Van Jacobson Compression)|\n"
     "76 1 8-9 5,9 |[Max Slot ID] 4 (MAX)|\n"
     "76 1 10-11 5,9 |[Compressed Slot ID] 0 (UNCOMPRESSED_TCP)|\n"
     "76 1 12-19 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 12-12 5,9 |[Type] 2 (IP Compression Protocol)|\n"
     "76 1 13-13 5,9 |[Length] 8 byte(s)|\n"
     "76 1 14-15 5,9 |[IP Compression Protocol] 0x0037 (Unknown)|\n"
     "76 1 16-17 5,9 |[Max Slot ID] 3841 |\n"
     "76 1 18-19 5,9 |[Compressed Slot ID] 774 (Unknown)|\n"},
    {"Kept: slots of one byte each are read with what follows", "01 01 0010 0206 002D 0F01 0306 C0A80001",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-15 5,9 |--- IPCP Header (Configuration Request) -----------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Configuration Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 16 (0x0010) byte(s)|\n"
     "76 1 4-9 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 2 (IP Compression Protocol)|\n"
     "76 1 5-5 5,9 |[Length] 6 byte(s)|\n"
     "76 1 6-7 5,9 |[IP Compression Protocol] 0x002D (Van Jacobson Compression)|\n"
     "76 1 8-9 5,9 |[Max Slot ID] 3841 |\n"
     "76 1 10-11 5,9 |[Compressed Slot ID] 774 (Unknown)|\n"
     "76 1 10-15 5,9 |--- Option 2 ----------------------------|\n"
     "76 1 10-10 5,9 |[Type] 3 (IP Address)|\n"
     "76 1 11-11 5,9 |[Length] 6 byte(s)|\n"
     "76 1 12-15 5,9 |[IP Address] 192.168.0.1|\n"},
    {"Kept: options behind the packet's length, whatever the code", "05 01 0004 0306 C0A80001 0000 0306",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-3 5,9 |--- IPCP Header (Termination Request) -------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 5 (Termination Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 4 (0x0004) byte(s)|\n"
     "76 1 4-9 5,9 |--- Option 1 ----------------------------|\n"
     "76 1 4-4 5,9 |[Type] 3 (IP Address)|\n"
     "76 1 5-5 5,9 |[Length] 6 byte(s)|\n"
     "76 1 6-9 5,9 |[IP Address] 192.168.0.1|\n"},
    {"LCP's code 8 is unknown; an option longer than the rest", "08 02 0008 0307 C0A800",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-7 5,9 |--- IPCP Header (Unknown) -------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 8 (Unknown)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x02|\n"
     "76 1 2-3 5,9 |[Length] 8 (0x0008) byte(s)|\n"},
    {"code reject, a length of less than the header", "07 02 0000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-4294967295 5,9 |--- IPCP Header (Code Reject) ---------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 7 (Code Reject)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x02|\n"
     "76 1 2-3 5,9 |[Length] 0 (0x0000) byte(s)|\n"},
    {"one byte too short", "01 02 00", ""},
};
LINE_CASES(Ipcp, IpcpAnalyze, kPackets)

TEST(Ipcp, NicknamesOfAddresses) {
  EXPECT_EQ(NickNameAdd(NICKNAME_IP, "192.0.2.1", "gate"), nullptr);
  const auto bytes = bytes_of("01 01 000E 010A C0000201 C6336402");
  const auto lines = decode_and_dump(IpcpAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  NickNameClear();
  EXPECT_NE(lines.find("|[Source Address] 192.0.2.1 (gate)|"), std::string::npos);
  EXPECT_NE(lines.find("|[Destination Address] 198.51.100.2 |"), std::string::npos);
}

}  // namespace

}  // namespace wirelines::test
