#include "ipapps/rip.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kRip[] = {
    {"request for the whole table", "01 01 0000 0000 0000 00000000 00000000 00000000 00000010",
     "65535 65535 0-0 0,0 ||\n"
     "53 0 0-23 10,3 |--- RIP Packet [Number Of Routing Information] 1 --------------------------|\n"
     "116 1 0-0 10,3 |[Command] 1 (Request)|\n"
     "116 1 1-1 10,3 |[Version] 1|\n"
     "116 1 4-5 10,3 |[IP Address] 0 |\n"
     "116 1 8-11 10,3 |[IP Address] 0.0.0.0 |\n"
     "116 1 20-23 10,3 |[metric] 16 (Infinity)|\n"},
    {"version 2 response with a bad route, and half a route more",
     "02 02 0000"
     "0002 0064 C0000200 FFFFFF00 C0000201 0000000F"
     "0002 0000 C6336400 FFFFFF00 00000000 00000010"
     "0002 0000 CB007100 FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "53 0 0-43 10,3 |--- RIP Packet [Number Of Routing Information] 2 --------------------------|\n"
     "116 1 0-0 10,3 |[Command] 2 (Response)|\n"
     "116 1 1-1 10,3 |[Version] 2|\n"
     "116 1 4-23 10,3 |--- Routing Information 1 ---------------|\n"
     "116 1 4-5 10,3 |[IP Address] 2 (IP)|\n"
     "116 1 8-11 10,3 |[IP Address] 192.0.2.0 |\n"
     "116 1 20-23 10,3 |[metric] 15|\n"
     "116 1 24-43 10,3 |--- Routing Information 2 ---------------|\n"
     "116 1 24-25 10,3 |[IP Address] 2 (IP)|\n"
     "116 1 28-31 10,3 |[IP Address] 198.51.100.0 |\n"
     "116 1 40-43 10,3 |[metric] 16 (Infinity)|\n"},
    {"unknown command, password entry", "03 02 0000 FFFF 0002 'secret' 00000000000000000000",
     "65535 65535 0-0 0,0 ||\n"
     "53 0 0-23 10,3 |--- RIP Packet [Number Of Routing Information] 1 --------------------------|\n"
     "116 1 0-0 10,3 |[Command] 3 |\n"
     "116 1 1-1 10,3 |[Version] 2|\n"
     "116 1 4-5 10,3 |[IP Address] 65535 |\n"
     "116 1 8-11 10,3 |[IP Address] 115.101.99.114 |\n"
     "116 1 20-23 10,3 |[metric] 0|\n"},
    {"one byte short of a route", "01 01 0000 0002 0000 C0000200 00000000 00000000 000000",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-22 1,10 |---[Data] 23 (0x0017) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  01 01 00 00 00 02 00 00 - C0 00 02 00 00 00 00 00  ................|\n"
     "63 1 0-22 1,10 |0010  00 00 00 00 00 00 00 20                            .......|\n"},
};
LINE_CASES(Rip, RipAnalyze, kRip)

}  // namespace

}  // namespace wirelines::test
