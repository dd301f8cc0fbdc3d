#include "netware/ipx_rip.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"one byte", "00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-0 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-0 1,10 |0000  00 20  0  0  0  0  0  0                            .|\n"},
    {"request", "0001 FFFFFFFF FFFF FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "41 0 0-9 7,4 |--- RIP Packet ------------------------------------------------------------|\n"
     "104 1 0-1 7,4 |[Packet Type] 0x0001 (Request)|\n"
     "104 1 2-5 7,4 |[Network Address] FFFFFFFF|\n"
     "104 1 6-7 7,4 |[Hops Away] 0xffff(None)|\n"
     "104 1 8-9 7,4 |[Time-In Ticks] 65535|\n"},
    {"a last entry that is cut off is shown whole", "0002 00000010 0001 0002 0000A1",
     "65535 65535 0-0 0,0 ||\n"
     "41 0 0-9 7,4 |--- RIP Packet ------------------------------------------------------------|\n"
     "104 1 0-1 7,4 |[Packet Type] 0x0002 (Reply)|\n"
     "104 1 2-5 7,4 |[Network Address] 00000010|\n"
     "104 1 6-7 7,4 |[Hops Away] 1|\n"
     "104 1 8-9 7,4 |[Time-In Ticks] 2|\n"
     "104 1 10-13 7,4 |[Network Address] 0000A100|\n"
     "104 1 14-15 7,4 |[Hops Away] 0|\n"
     "104 1 16-17 7,4 |[Time-In Ticks] 0|\n"},
    {"unknown operation", "0003",
     "65535 65535 0-0 0,0 ||\n"
     "41 0 0-1 7,4 |--- RIP Packet ------------------------------------------------------------|\n"
     "104 1 0-1 7,4 |[Packet Type] 0x0003 (Unknown)|\n"},
};
LINE_CASES(IpxRip, NwRipAnalyze, kPackets)

}  // namespace

}  // namespace wirelines::test
