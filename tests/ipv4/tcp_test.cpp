#include <gtest/gtest.h>

#include "ipv4/carriers.hpp"

namespace wirelines::test {

namespace {

const Case kSegments[] = {
    {"connection request", "0400 0050 00000001 00000000 8002 2000 5F8F 0000 020405B4 01 030302 0402 0000",
     "65535 65535 0-0 0,0 ||\n"
     "48 0 0-31 5,3 |--- TCP Header [1024] --> [80] --------------------------------------------|\n"
     "111 1 0-1 5,3 |[Source Port] 1024 |\n"
     "111 1 2-3 5,3 |[Destination Port] 80 (WWW)|\n"
     "111 1 4-7 5,3 |[Sequence No] 1 (0x00000001)|\n"
     "111 1 8-11 5,3 |[Acknowledgment No] 0 (0x00000000)|\n"
     "111 1 12-12 5,3 |[Data Offset] 32 (0x0020) byte(s)|\n"
     "111 1 13-13 5,3 |[Flags] [URG] 0 [ACK] 0 [PSH] 0 [RST] 0 [SYN] 1 [FIN] 0|\n"
     "111 1 14-15 5,3 |[Window] 8192 (0x2000) byte(s)|\n"
     "111 1 16-17 5,3 |[Checksum] 0x5F8F (OK)|\n"
     "111 1 18-19 5,3 |[Urgent Pointer] 0|\n"
     "48 1 20-31 5,3 |[Options]|\n"
     "111 2 20-23 5,3 |[Kind] 2 (Maximum Segment Size = 1460 (0x05B4) byte(s))|\n"
     "111 2 24-24 5,3 |[Kind] 1 (No-Operation)|\n"
     "111 2 25-27 5,3 |[Kind] 3 (Window Scale = 2)|\n"
     "111 2 28-29 5,3 |[Kind] 4 (Sack-Permitted)|\n"
     "111 2 30-30 5,3 |[Kind] 0 (End of option list)|\n"},
    {"Kept: timestamps, then no-operations and two SACK blocks",
     "C001 01BB DEADBEEF 00000010 D010 FFFF 04CA 0000 0101 080A FFFE5678 9ABCDEF0 0101 0512 00000001 00000002 00000003 "
     "FFFFFFFF",
     "65535 65535 0-0 0,0 ||\n"
     "48 0 0-51 5,3 |--- TCP Header [49153] --> [443] ------------------------------------------|\n"
     "111 1 0-1 5,3 |[Source Port] 49153 |\n"
     "111 1 2-3 5,3 |[Destination Port] 443 (HTTPS)|\n"
     "111 1 4-7 5,3 |[Sequence No] 3735928559 (0xDEADBEEF)|\n"
     "111 1 8-11 5,3 |[Acknowledgment No] 16 (0x00000010)|\n"
     "111 1 12-12 5,3 |[Data Offset] 52 (0x0034) byte(s)|\n"
     "111 1 13-13 5,3 |[Flags] [URG] 0 [ACK] 1 [PSH] 0 [RST] 0 [SYN] 0 [FIN] 0|\n"
     "111 1 14-15 5,3 |[Window] 65535 (0xFFFF) byte(s)|\n"
     "111 1 16-17 5,3 |[Checksum] 0x04CA (OK)|\n"
     "111 1 18-19 5,3 |[Urgent Pointer] 0|\n"
     "48 1 20-51 5,3 |[Options]|\n"
     "111 2 20-20 5,3 |[Kind] 1 (No-Operation)|\n"
     "111 2 21-21 5,3 |[Kind] 1 (No-Operation)|\n"
     "111 2 22-23 5,3 |[Kind]  8 (Timestamps)|\n"
     "111 2 24-25 5,3 |[TS Value] 65534 (0x0.4X) |\n"
     "111 2 26-27 5,3 |[TS Echo Reply] 65534 (0x0.4X) |\n"
     "111 2 32-32 5,3 |[Kind] 1 (No-Operation)|\n"
     "111 2 33-33 5,3 |[Kind] 1 (No-Operation)|\n"
     "111 2 34-51 5,3 |[Kind] 5 (SACK) [Left Edge] 1 [Right Edge] 2|\n"},
    {"echo, its reply, and a kind that ends the options",
     "0400 0017 00000001 00000000 9018 0100 2502 0007 0606 01020304 0706 A1B2C3D4 090301 01 'data'",
     "65535 65535 0-0 0,0 ||\n"
     "48 0 0-35 5,3 |--- TCP Header [1024] --> [23] --------------------------------------------|\n"
     "111 1 0-1 5,3 |[Source Port] 1024 |\n"
     "111 1 2-3 5,3 |[Destination Port] 23 (TELNET)|\n"
     "111 1 4-7 5,3 |[Sequence No] 1 (0x00000001)|\n"
     "111 1 8-11 5,3 |[Acknowledgment No] 0 (0x00000000)|\n"
     "111 1 12-12 5,3 |[Data Offset] 36 (0x0024) byte(s)|\n"
     "111 1 13-13 5,3 |[Flags] [URG] 0 [ACK] 1 [PSH] 1 [RST] 0 [SYN] 0 [FIN] 0|\n"
     "111 1 14-15 5,3 |[Window] 256 (0x0100) byte(s)|\n"
     "111 1 16-17 5,3 |[Checksum] 0x2502 (OK)|\n"
     "111 1 18-19 5,3 |[Urgent Pointer] 7|\n"
     "48 1 20-35 5,3 |[Options]|\n"
     "111 2 20-21 5,3 |[Kind] 6 (Echo)|\n"
     "111 2 20-25 5,3 |[Echo Data] 01 02 03 04 |\n"
     "111 2 26-27 5,3 |[Kind] 7 (Echo Reply)|\n"
     "111 2 26-31 5,3 |[Reply Data] A1 B2 C3 D4 |\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 36-39 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 36-39 1,10 |0000  64 61 74 61 20  0  0  0                            data|\n"},
    {"SACK of length 0 ends the options", "0400 1F7A 00000001 00000000 8000 0100 BEEF 0000 0500 01020304 05060708 0101",
     "65535 65535 0-0 0,0 ||\n"
     "48 0 0-31 5,3 |--- TCP Header [1024] --> [8058] ------------------------------------------|\n"
     "111 1 0-1 5,3 |[Source Port] 1024 |\n"
     "111 1 2-3 5,3 |[Destination Port] 8058 (H.245)|\n"
     "111 1 4-7 5,3 |[Sequence No] 1 (0x00000001)|\n"
     "111 1 8-11 5,3 |[Acknowledgment No] 0 (0x00000000)|\n"
     "111 1 12-12 5,3 |[Data Offset] 32 (0x0020) byte(s)|\n"
     "111 1 13-13 5,3 |[Flags] [URG] 0 [ACK] 0 [PSH] 0 [RST] 0 [SYN] 0 [FIN] 0|\n"
     "111 1 14-15 5,3 |[Window] 256 (0x0100) byte(s)|\n"
     "111 1 16-17 5,3 |[Checksum] 0xBEEF (NG)|\n"
     "111 1 18-19 5,3 |[Urgent Pointer] 0|\n"
     "48 1 20-31 5,3 |[Options]|\n"
     "111 2 20-19 5,3 |[Kind] 5 (SACK) [Left Edge] 16909060 [Right Edge] 84281096|\n"},
    {"a data offset of 0 shows the segment again", "0400 1F7B 00000001 00000000 0000 0100 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "48 0 0-4294967295 5,3 |--- TCP Header [1024] --> [8059] ------------------------------------------|\n"
     "111 1 0-1 5,3 |[Source Port] 1024 |\n"
     "111 1 2-3 5,3 |[Destination Port] 8059 |\n"
     "111 1 4-7 5,3 |[Sequence No] 1 (0x00000001)|\n"
     "111 1 8-11 5,3 |[Acknowledgment No] 0 (0x00000000)|\n"
     "111 1 12-12 5,3 |[Data Offset] 0 (0x0000) byte(s)|\n"
     "111 1 13-13 5,3 |[Flags] [URG] 0 [ACK] 0 [PSH] 0 [RST] 0 [SYN] 0 [FIN] 0|\n"
     "111 1 14-15 5,3 |[Window] 256 (0x0100) byte(s)|\n"
     "111 1 16-17 5,3 |[Checksum] None|\n"
     "111 1 18-19 5,3 |[Urgent Pointer] 0|\n"
     "111 1 0-0 0,0 |[Options] None|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-19 1,10 |---[Data] 20 (0x0014) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  04 00 1F 7B 00 00 00 01 - 00 00 00 00 00 00 01 00  ...{............|\n"
     "63 1 0-19 1,10 |0010  00 00 00 00 20  0  0  0                            ....|\n"},
    {"session data of port 139", "008B 0400 00000001 00000001 5010 2000 1A0C 0000 85000000",
     "65535 65535 0-0 0,0 ||\n"
     "48 0 0-19 5,3 |--- TCP Header [139] --> [1024] -------------------------------------------|\n"
     "111 1 0-1 5,3 |[Source Port] 139 (NETBIOS-SSN)|\n"
     "111 1 2-3 5,3 |[Destination Port] 1024 |\n"
     "111 1 4-7 5,3 |[Sequence No] 1 (0x00000001)|\n"
     "111 1 8-11 5,3 |[Acknowledgment No] 1 (0x00000001)|\n"
     "111 1 12-12 5,3 |[Data Offset] 20 (0x0014) byte(s)|\n"
     "111 1 13-13 5,3 |[Flags] [URG] 0 [ACK] 1 [PSH] 0 [RST] 0 [SYN] 0 [FIN] 0|\n"
     "111 1 14-15 5,3 |[Window] 8192 (0x2000) byte(s)|\n"
     "111 1 16-17 5,3 |[Checksum] 0x1A0C (OK)|\n"
     "111 1 18-19 5,3 |[Urgent Pointer] 0|\n"
     "111 1 0-0 0,0 |[Options] None|\n"
     "65535 65535 0-0 0,0 ||\n"
     "29 0 20-23 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 20-20 3,5 |[Type] 133 (SESSION KEEP ALIVE)|\n"
     "92 1 21-21 3,5 |[Flags] 0|\n"
     "92 1 22-23 3,5 |[Data Length] 0 (0x0000) byte(s)|\n"},
    {"one byte too short", "0400 0202 00000001 00000000 F001 0100 1234 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-18 1,10 |---[Data] 19 (0x0013) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  04 00 02 02 00 00 00 01 - 00 00 00 00 F0 01 01 00  ................|\n"
     "63 1 0-18 1,10 |0010  12 34 00 20  0  0  0  0                            .4.|\n"},
};
LINE_CASES(Tcp, over_ipv4(TcpAnalyze, kTcp, false), kSegments)

const Case kFragments[] = {
    {"no verdict while fragments are missing, a data offset past the segment",
     "0400 0202 00000001 00000000 F001 2000 0000 0000 0204",
     "65535 65535 0-0 0,0 ||\n"
     "48 0 0-59 5,3 |--- TCP Header [1024] --> [514] -------------------------------------------|\n"
     "111 1 0-1 5,3 |[Source Port] 1024 |\n"
     "111 1 2-3 5,3 |[Destination Port] 514 (SHELL)|\n"
     "111 1 4-7 5,3 |[Sequence No] 1 (0x00000001)|\n"
     "111 1 8-11 5,3 |[Acknowledgment No] 0 (0x00000000)|\n"
     "111 1 12-12 5,3 |[Data Offset] 60 (0x003C) byte(s)|\n"
     "111 1 13-13 5,3 |[Flags] [URG] 0 [ACK] 0 [PSH] 0 [RST] 0 [SYN] 0 [FIN] 1|\n"
     "111 1 14-15 5,3 |[Window] 8192 (0x2000) byte(s)|\n"
     "111 1 16-17 5,3 |[Checksum] 0x0000|\n"
     "111 1 18-19 5,3 |[Urgent Pointer] 0|\n"
     "48 1 20-59 5,3 |[Options]|\n"
     "111 2 20-23 5,3 |[Kind] 2 (Maximum Segment Size = 0 (0x0000) byte(s))|\n"},
};
LINE_CASES(TcpFragment, over_ipv4(TcpAnalyze, kTcp, true), kFragments)

}  // namespace

}  // namespace wirelines::test
