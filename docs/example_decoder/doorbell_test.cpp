#include "doorbell.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kDoorbell[] = {
    {"ring with a name and a time, and two bytes behind", "01 01 000A C0000207 01 06 'gate' 02 04 001E 0D0A",
     "65535 65535 0-0 0,0 ||\n"
     "61 0 0-7 11,6 |--- Doorbell Header [Ring] ------------------------------------------------|\n"
     "124 1 0-0 11,6 |[Version] 1|\n"
     "124 1 1-1 11,6 |[Operation] 1 (Ring)|\n"
     "124 1 2-3 11,6 |[Item Length] 10 (0x000A) byte(s)|\n"
     "124 1 4-7 11,6 |[IP Address] 192.0.2.7 |\n"
     "124 1 8-9 11,6 |[Item] 1 [Length] 6 byte(s)|\n"
     "124 2 10-13 11,6 |[Door] gate|\n"
     "124 1 14-15 11,6 |[Item] 2 [Length] 4 byte(s)|\n"
     "124 2 16-17 11,6 |[Seconds] 30 (0x001E)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 18-19 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 18-19 1,10 |0000  0D 0A 20  0  0  0  0  0                            ..|\n"},
    {"unknown operation, unknown item, items of no value and of no length",
     "01 09 0007 C0000207 07 03 FF 01 02 01 00 0102",
     "65535 65535 0-0 0,0 ||\n"
     "61 0 0-7 11,6 |--- Doorbell Header [Unknown] ---------------------------------------------|\n"
     "124 1 0-0 11,6 |[Version] 1|\n"
     "124 1 1-1 11,6 |[Operation] 9 (Unknown)|\n"
     "124 1 2-3 11,6 |[Item Length] 7 (0x0007) byte(s)|\n"
     "124 1 4-7 11,6 |[IP Address] 192.0.2.7 |\n"
     "124 1 8-9 11,6 |[Item] 7 [Length] 3 byte(s)|\n"
     "124 1 11-12 11,6 |[Item] 1 [Length] 2 byte(s)|\n"
     "124 1 13-14 11,6 |[Item] 1 [Length] 0 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 15-16 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 15-16 1,10 |0000  01 02 20  0  0  0  0  0                            ..|\n"},
    {"items that go on behind the end", "01 02 0100 C0000207 02 04",
     "65535 65535 0-0 0,0 ||\n"
     "61 0 0-7 11,6 |--- Doorbell Header [Answer] ----------------------------------------------|\n"
     "124 1 0-0 11,6 |[Version] 1|\n"
     "124 1 1-1 11,6 |[Operation] 2 (Answer)|\n"
     "124 1 2-3 11,6 |[Item Length] 256 (0x0100) byte(s)|\n"
     "124 1 4-7 11,6 |[IP Address] 192.0.2.7 |\n"
     "124 1 8-9 11,6 |[Item] 2 [Length] 4 byte(s)|\n"
     "124 2 10-11 11,6 |[Seconds] 0 (0x0000)|\n"},
    {"one byte short", "01 01 0000 C00002",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-6 1,10 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-6 1,10 |0000  01 01 00 00 C0 00 02 20                            .......|\n"},
};
LINE_CASES(Doorbell, DoorbellAnalyze, kDoorbell)

}  // namespace

}  // namespace wirelines::test
