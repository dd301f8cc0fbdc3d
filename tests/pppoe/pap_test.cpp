#include "pppoe/ppp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"Kept: request, the second block begins with the password's length", "01 07 0010 04 'user' 06 'secret'",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-15 5,9 |--- PAP Header (Authenticate Request) -------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Authenticate Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 16 (0x0010) byte(s)|\n"
     "76 1 4-4 5,9 |[Identifier] 4 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-8 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-8 5,9 |0000  75 73 65 72 20  0  0  0                            user|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 9-14 5,9 |---[Data] 6 (0x0006) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 9-14 5,9 |0000  06 73 65 63 72 65 20  0                            .secre|\n"},
    {"request, padded, without peer id and password", "01 07 0006 00 00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-5 5,9 |--- PAP Header (Authenticate Request) -------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Authenticate Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 6 (0x0006) byte(s)|\n"
     "76 1 4-4 5,9 |[Identifier] 0 byte(s)|\n"},
    {"request, the peer id is longer than the packet", "01 07 0009 08 'user' FFFFFFFF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-8 5,9 |--- PAP Header (Authenticate Request) -------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Authenticate Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 9 (0x0009) byte(s)|\n"
     "76 1 4-4 5,9 |[Identifier] 8 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-8 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-8 5,9 |0000  75 73 65 72 20  0  0  0                            user|\n"},
    {"request, the password is longer than the packet", "01 07 000C 04 'user' 08 'se' FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-11 5,9 |--- PAP Header (Authenticate Request) -------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 1 (Authenticate Request)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 12 (0x000C) byte(s)|\n"
     "76 1 4-4 5,9 |[Identifier] 4 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-8 5,9 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-8 5,9 |0000  75 73 65 72 20  0  0  0                            user|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 9-10 5,9 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 9-10 5,9 |0000  08 73 20  0  0  0  0  0                            .s|\n"},
    {"ack", "02 07 000D 08 'Login ok'",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-12 5,9 |--- PAP Header (Authenticate Ack) -----------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Authenticate Ack)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 13 (0x000D) byte(s)|\n"
     "76 1 4-4 5,9 |[Length] 8 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-12 5,9 |---[Data] 8 (0x0008) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-12 5,9 |0000  4C 6F 67 69 6E 20 6F 6B -                          Login ok|\n"},
    {"nak, the message is longer than the packet", "03 07 0008 09 'Login no'",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-7 5,9 |--- PAP Header (Authenticate Nak) -----------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 3 (Authenticate Nak)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 8 (0x0008) byte(s)|\n"
     "76 1 4-4 5,9 |[Length] 9 byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "13 1 5-7 5,9 |---[Data] 3 (0x0003) byte(s) --------------------------------- ASCII ------|\n"
     "13 1 5-7 5,9 |0000  4C 6F 67 20  0  0  0  0                            Log|\n"},
    {"ack without message", "02 07 0005 00",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-4 5,9 |--- PAP Header (Authenticate Ack) -----------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Authenticate Ack)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 5 (0x0005) byte(s)|\n"
     "76 1 4-4 5,9 |[Length] 0 byte(s)|\n"},
    {"ack, no message length", "02 07 0004",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-3 5,9 |--- PAP Header (Authenticate Ack) -----------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 2 (Authenticate Ack)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 4 (0x0004) byte(s)|\n"},
    {"unknown code", "04 07 0005 41",
     "65535 65535 0-0 0,0 ||\n"
     "13 0 0-4 5,9 |--- PAP Header (Unknown) --------------------------------------------------|\n"
     "76 1 0-0 5,9 |[Code] 4 (Unknown)|\n"
     "76 1 1-1 5,9 |[Identifier] 0x07|\n"
     "76 1 2-3 5,9 |[Length] 5 (0x0005) byte(s)|\n"},
    {"one byte too short", "01 07 00", ""},
};
LINE_CASES(Pap, PapAnalyze, kPackets)

}  // namespace

}  // namespace wirelines::test
