#include "netware/spx.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"one byte short", "C0 00 0102 FFFF 0000 0000 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-10 1,10 |---[Data] 11 (0x000B) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-10 1,10 |0000  C0 00 01 02 FF FF 00 00 - 00 00 00                 ...........|\n"},
    {"SPX2 one byte short of its header: the blank line alone", "08 FC 0102 0304 0005 0006 000C 00",
     "65535 65535 0-0 0,0 ||\n"},
    {"Kept: the last byte of the packet is not shown", "08 FC 0102 0304 0005 0006 000C 0010 'NetWare' 00",
     "65535 65535 0-0 0,0 ||\n"
     "40 0 0-13 6,4 |--- SPX/SPX2 Header -------------------------------------------------------|\n"
     "40 1 0-0 6,4 |[Connection Control] 0x08|\n"
     "103 2 0-0 6,4 |    [bit7] System Packete = 0|\n"
     "103 2 0-0 6,4 |    [bit6] Acknowledgment Required = 0|\n"
     "103 2 0-0 6,4 |    [bit5] Attention = 0|\n"
     "103 2 0-0 6,4 |    [bit4] End-of-Message = 0|\n"
     "103 2 0-0 6,4 |    [bit3] SPX2 = 1|\n"
     "103 2 0-0 6,4 |    [bit2] Size = 0|\n"
     "103 1 1-1 6,4 |[Datastream Type] 0xFC  (Sequence Request)|\n"
     "103 1 2-3 6,4 |[Souce Connection ID] 258 (0x0102)|\n"
     "103 1 4-5 6,4 |[Destination Connection ID] 772 (0x0304)|\n"
     "103 1 6-7 6,4 |[Sequence No] 5 (0x0005)|\n"
     "103 1 8-9 6,4 |[Acknowledgement No] 6 (0x0006)|\n"
     "103 1 10-11 6,4 |[Allocation No] 12|\n"
     "103 1 12-13 6,4 |[Extended ACK No.] 16 (0x0010)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 14-20 1,10 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 14-20 1,10 |0000  4E 65 74 57 61 72 65 20                            NetWare|\n"},
    {"size negotiation one byte short of 16: the blank line alone", "04 FD 0102 0304 0005 0006 000C 0240 01",
     "65535 65535 0-0 0,0 ||\n"},
    {"Kept: the title of a size negotiation covers 16 bytes", "04 FD 0102 0304 0005 0006 000C 0240 0102",
     "65535 65535 0-0 0,0 ||\n"
     "40 0 0-15 6,4 |--- SPX/SPX2 Header -------------------------------------------------------|\n"
     "40 1 0-0 6,4 |[Connection Control] 0x04|\n"
     "103 2 0-0 6,4 |    [bit7] System Packete = 0|\n"
     "103 2 0-0 6,4 |    [bit6] Acknowledgment Required = 0|\n"
     "103 2 0-0 6,4 |    [bit5] Attention = 0|\n"
     "103 2 0-0 6,4 |    [bit4] End-of-Message = 0|\n"
     "103 2 0-0 6,4 |    [bit3] SPX2 = 0|\n"
     "103 2 0-0 6,4 |    [bit2] Size = 1|\n"
     "103 1 1-1 6,4 |[Datastream Type] 0xFD  (Sequence Acknowledgement)|\n"
     "103 1 2-3 6,4 |[Souce Connection ID] 258 (0x0102)|\n"
     "103 1 4-5 6,4 |[Destination Connection ID] 772 (0x0304)|\n"
     "103 1 6-7 6,4 |[Sequence No] 5 (0x0005)|\n"
     "103 1 8-9 6,4 |[Acknowledgement No] 6 (0x0006)|\n"
     "103 1 10-11 6,4 |[Allocation No] 12|\n"
     "103 1 12-13 6,4 |[Negotiate Size] 576 (0x0240)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 14-14 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 14-14 1,10 |0000  01 20  0  0  0  0  0  0                            .|\n"},
    {"Kept: the whole control byte tells SPX2, and a rest of one byte begins at the header",
     "78 FB 0102 0304 0005 0006 000C AB",
     "65535 65535 0-0 0,0 ||\n"
     "40 0 0-11 6,4 |--- SPX/SPX2 Header -------------------------------------------------------|\n"
     "40 1 0-0 6,4 |[Connection Control] 0x78|\n"
     "103 2 0-0 6,4 |    [bit7] System Packete = 0|\n"
     "103 2 0-0 6,4 |    [bit6] Acknowledgment Required = 1|\n"
     "103 2 0-0 6,4 |    [bit5] Attention = 1|\n"
     "103 2 0-0 6,4 |    [bit4] End-of-Message = 1|\n"
     "103 2 0-0 6,4 |    [bit3] SPX2 = 1|\n"
     "103 2 0-0 6,4 |    [bit2] Size = 0|\n"
     "103 1 1-1 6,4 |[Datastream Type] 0xFB |\n"
     "103 1 2-3 6,4 |[Souce Connection ID] 258 (0x0102)|\n"
     "103 1 4-5 6,4 |[Destination Connection ID] 772 (0x0304)|\n"
     "103 1 6-7 6,4 |[Sequence No] 5 (0x0005)|\n"
     "103 1 8-9 6,4 |[Acknowledgement No] 6 (0x0006)|\n"
     "103 1 10-11 6,4 |[Allocation No] 12|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-0 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-0 1,10 |0000  AB 20  0  0  0  0  0  0                            .|\n"},
};
LINE_CASES(Spx, SpxAnalyze, kPackets)

}  // namespace

}  // namespace wirelines::test
