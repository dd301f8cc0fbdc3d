#include "pppoe/ppp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"challenge", "01 01 000D 04 01020304 'gate' FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-12 5,9 |--- CHAP Header (Challenge) -----------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Challenge)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 13 (0x000D) byte(s)|\n"
     "76 1 4-4 5,9 |[Value Size] 4 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-8 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-8 5,9 |0000  01 02 03 04 20  0  0  0                            ....|\n"
     "76 1 9-12 5,9 |[Name] gate|\n"},
    {"response without name", "02 01 0009 04 01020304 FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-8 5,9 |--- CHAP Header (Response) ------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Response)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 9 (0x0009) byte(s)|\n"
     "76 1 4-4 5,9 |[Value Size] 4 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-8 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-8 5,9 |0000  01 02 03 04 20  0  0  0                            ....|\n"},
    {"Kept: the value may go on behind the packet", "01 01 0007 04 01020304 FF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-6 5,9 |--- CHAP Header (Challenge) -----------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Challenge)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 7 (0x0007) byte(s)|\n"
     "76 1 4-4 5,9 |[Value Size] 4 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-8 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-8 5,9 |0000  01 02 03 04 20  0  0  0                            ....|\n"},
    {"response, the value is longer than the data", "02 01 FFFF FF 0102",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-65534 5,9 |--- CHAP Header (Response) ------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Response)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 65535 (0xFFFF) byte(s)|\n"
     "76 1 4-4 5,9 |[Value Size] 255 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-6 5,9 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-6 5,9 |0000  01 02 20  0  0  0  0  0                            ..|\n"},
    {"challenge without value size", "01 01 0004 04 0102",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-3 5,9 |--- CHAP Header (Challenge) -----------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Challenge)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 4 (0x0004) byte(s)|\n"},
    {"name over two lines",
     "02 01 004F 00 'a name of more than the sixty-eight characters that stand on a single line'",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-78 5,9 |--- CHAP Header (Response) ------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Response)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 79 (0x004F) byte(s)|\n"
     "76 1 4-4 5,9 |[Value Size] 0 byte(s)|\n"
     "76 1 5-72 5,9 |[Name] a name of more than the sixty-eight characters that stand on a singl|\n"
     "76 1 73-78 5,9 |       e line|\n"},
    {"success", "03 01 000B 'Welcome' FF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-10 5,9 |--- CHAP Header (Success) -------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 3 (Success)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 11 (0x000B) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 4-10 5,9 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 4-10 5,9 |0000  57 65 6C 63 6F 6D 65 20                            Welcome|\n"},
    {"failure, cut", "04 01 00FF 'E=691 R=0'",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-254 5,9 |--- CHAP Header (Failure) -------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 4 (Failure)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 255 (0x00FF) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 4-12 5,9 |---[Data] 9 (0x0009) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 4-12 5,9 |0000  45 3D 36 39 31 20 52 3D - 30                       E=691 R=0|\n"},
    {"unknown code", "05 01 0006 4142",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-5 5,9 |--- CHAP Header (Unknown) -------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 5 (Unknown)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x01|\n"
     "76 1 2-3 5,9 |[Length] 6 (0x0006) byte(s)|\n"},
    {"one byte too short", "01 01 00", ""},
};
LINE_CASES(Chap, ChapAnalyze, kPackets)

}  // namespace

}  // namespace wirelines::test
