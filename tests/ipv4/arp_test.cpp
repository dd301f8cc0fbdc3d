#include "ipv4/arp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kMessages[] = {
    {"request, and fill behind it", "0001 0800 06 04 0001 00112233AABB C0000201 000000000000 C0000202 0000",
     "65535 65535 0-0 0,0 ||\n"
     "25 0 0-27 9,6 |--- ARP Request -----------------------------------------------------------|\n"
     "88 1 0-1 9,6 |[Hardware Type] 1 (Ethernet)|\n"
     "88 1 2-3 9,6 |[Protocol Type] 0x0800 (IP)|\n"
     "88 1 4-4 9,6 |[Hardware Address Length] 6 byte(s)|\n"
     "88 1 5-5 9,6 |[Protocol Address Length] 4 byte(s)|\n"
     "88 1 6-7 9,6 |[Operation] 1 (ARP Request)|\n"
     "88 1 8-13 9,6 |[Sender Hardware Address] 00112233AABB |\n"
     "88 1 14-17 9,6 |[Sender Protocol Address] 192.0.2.1 |\n"
     "88 1 18-23 9,6 |[Target Hardware Address] 000000000000 |\n"
     "88 1 24-27 9,6 |[Target Protocol Address] 192.0.2.2 |\n"},
    {"reply", "0001 0800 06 04 0002 00112233AABB C0000201 00112233AACC C0000202",
     "65535 65535 0-0 0,0 ||\n"
     "25 0 0-27 9,6 |--- ARP Reply -------------------------------------------------------------|\n"
     "88 1 0-1 9,6 |[Hardware Type] 1 (Ethernet)|\n"
     "88 1 2-3 9,6 |[Protocol Type] 0x0800 (IP)|\n"
     "88 1 4-4 9,6 |[Hardware Address Length] 6 byte(s)|\n"
     "88 1 5-5 9,6 |[Protocol Address Length] 4 byte(s)|\n"
     "88 1 6-7 9,6 |[Operation] 2 (ARP Reply)|\n"
     "88 1 8-13 9,6 |[Sender Hardware Address] 00112233AABB |\n"
     "88 1 14-17 9,6 |[Sender Protocol Address] 192.0.2.1 |\n"
     "88 1 18-23 9,6 |[Target Hardware Address] 00112233AACC |\n"
     "88 1 24-27 9,6 |[Target Protocol Address] 192.0.2.2 |\n"},
    {"RARP request", "0006 0800 06 04 0003 00112233AABB 00000000 00112233AABB 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "25 0 0-27 9,6 |--- RARP Request ----------------------------------------------------------|\n"
     "88 1 0-1 9,6 |[Hardware Type] 6|\n"
     "88 1 2-3 9,6 |[Protocol Type] 0x0800 (IP)|\n"
     "88 1 4-4 9,6 |[Hardware Address Length] 6 byte(s)|\n"
     "88 1 5-5 9,6 |[Protocol Address Length] 4 byte(s)|\n"
     "88 1 6-7 9,6 |[Operation] 3 (RARP Request)|\n"
     "88 1 8-13 9,6 |[Sender Hardware Address] 00112233AABB |\n"
     "88 1 14-17 9,6 |[Sender Protocol Address] 0.0.0.0 |\n"
     "88 1 18-23 9,6 |[Target Hardware Address] 00112233AABB |\n"
     "88 1 24-27 9,6 |[Target Protocol Address] 0.0.0.0 |\n"},
    {"RARP reply of an unnamed protocol", "0001 1234 06 04 0004 00112233AABB C0000201 00112233AACC C0000202",
     "65535 65535 0-0 0,0 ||\n"
     "25 0 0-27 9,6 |--- RARP Reply ------------------------------------------------------------|\n"
     "88 1 0-1 9,6 |[Hardware Type] 1 (Ethernet)|\n"
     "88 1 2-3 9,6 |[Protocol Type] 0x1234 |\n"
     "88 1 4-4 9,6 |[Hardware Address Length] 6 byte(s)|\n"
     "88 1 5-5 9,6 |[Protocol Address Length] 4 byte(s)|\n"
     "88 1 6-7 9,6 |[Operation] 4 (RARP Reply)|\n"
     "88 1 8-13 9,6 |[Sender Hardware Address] 00112233AABB |\n"
     "88 1 14-17 9,6 |[Sender Protocol Address] 192.0.2.1 |\n"
     "88 1 18-23 9,6 |[Target Hardware Address] 00112233AACC |\n"
     "88 1 24-27 9,6 |[Target Protocol Address] 192.0.2.2 |\n"},
    {"inverse request, other address lengths", "000F 0800 02 00 0008 00112233AABB C0000201 00112233AACC C0000202",
     "65535 65535 0-0 0,0 ||\n"
     "25 0 0-27 9,6 |--- Unknown ---------------------------------------------------------------|\n"
     "88 1 0-1 9,6 |[Hardware Type] 15|\n"
     "88 1 2-3 9,6 |[Protocol Type] 0x0800 (IP)|\n"
     "88 1 4-4 9,6 |[Hardware Address Length] 2 byte(s)|\n"
     "88 1 5-5 9,6 |[Protocol Address Length] 0 byte(s)|\n"
     "88 1 6-7 9,6 |[Operation] 8|\n"
     "88 1 8-13 9,6 |[Sender Hardware Address] 00112233AABB |\n"
     "88 1 14-17 9,6 |[Sender Protocol Address] 192.0.2.1 |\n"
     "88 1 18-23 9,6 |[Target Hardware Address] 00112233AACC |\n"
     "88 1 24-27 9,6 |[Target Protocol Address] 192.0.2.2 |\n"},
    {"one byte too short", "0001 0800 06 04 0001 00112233AABB C0000201 000000000000 C00002",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-26 1,10 |---[Data] 27 (0x001B) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  00 01 08 00 06 04 00 01 - 00 11 22 33 AA BB C0 00  ..........\"3....|\n"
     "63 1 0-26 1,10 |0010  02 01 00 00 00 00 00 00 - C0 00 02                 ...........|\n"},
};
LINE_CASES(Arp, ArpAnalyze, kMessages)

}  // namespace

}  // namespace wirelines::test
