#include "ipv4/icmp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

void whole(LineList& list, Bytes data) {
  IcmpAnalyze(list, data, false);
}
void fragment(LineList& list, Bytes data) {
  IcmpAnalyze(list, data, true);
}

const Case kMessages[] = {
    {"echo request", "08 00 06FA 1234 0001 'ping'",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Echo Request) --------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 8 (Echo Request)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0x06FA (OK)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 1 (0x0001)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-11 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-11 1,10 |0000  70 69 6E 67 20  0  0  0                            ping|\n"},
    {"echo reply without data, wrong checksum", "00 00 1111 1234 0002",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Echo Reply) ----------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 0 (Echo Reply)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0x1111 (NG)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 2 (0x0002)|\n"},
    {"unreachable", "03 05 B7FA 00000000 45",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Destination Unreachable) ---------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 3 (Destination Unreachable)|\n"
     "109 1 1-1 2,3 |[Code] 5 (Source Route Failded)|\n"
     "109 1 2-3 2,3 |[Checksum] 0xB7FA (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-8 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-8 1,10 |0000  45 20  0  0  0  0  0  0                            E|\n"},
    {"unreachable for an unknown reason", "03 10 FCEF 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Destination Unreachable) ---------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 3 (Destination Unreachable)|\n"
     "109 1 1-1 2,3 |[Code] 16 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xFCEF (OK)|\n"},
    {"source quench", "04 00 B6FF 00000000 45",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Source Quench) -------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 4 (Source Quench)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0xB6FF (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-8 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-8 1,10 |0000  45 20  0  0  0  0  0  0                            E|\n"},
    {"redirect", "05 01 F3FC C0000201 45",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Redirect) ------------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 5 (Redirect)|\n"
     "109 1 1-1 2,3 |[Code] 1 (Redirect Datagram for the Host)|\n"
     "109 1 2-3 2,3 |[Checksum] 0xF3FC (OK)|\n"
     "109 1 4-7 2,3 |[Router IP Address] 192.0.2.1 |\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-8 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-8 1,10 |0000  45 20  0  0  0  0  0  0                            E|\n"},
    {"Kept: router advertisement with code 0", "09 00 ACF3 01 02 0708 C0000201 80000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-14 2,3 |--- ICMP Header (Router Advertisement) ------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 9 (Router Advertisement)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0xACF3 (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 4-15 1,10 |---[Data] 12 (0x000C) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 4-15 1,10 |0000  01 02 07 08 C0 00 02 01 - 80 00 00 00              ............|\n"},
    {"Kept: router advertisement with code 9", "09 09 E9E6 02 02 0708 C0000201 80000000 C0000202 00000001",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-22 2,3 |--- ICMP Header (Router Advertisement) ------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 9 (Router Advertisement)|\n"
     "109 1 1-1 2,3 |[Code] 9|\n"
     "109 1 2-3 2,3 |[Checksum] 0xE9E6 (OK)|\n"
     "109 1 4-4 2,3 |[Number Of Address] 2|\n"
     "109 1 5-5 2,3 |[Address Entry Size] 2 (32 bits.words)|\n"
     "109 1 6-7 2,3 |[Lifetime] 1800|\n"
     "109 1 8-11 2,3 |[Router Address] 192.0.2.1 |\n"
     "109 1 12-15 2,3 |[Preference Level] 2147483648|\n"
     "109 1 16-19 2,3 |[Router Address] 192.0.2.2 |\n"
     "109 1 20-23 2,3 |[Preference Level] 1|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 23-23 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 23-23 1,10 |0000  01 20  0  0  0  0  0  0                            .|\n"},
    {"router solicitation", "0A 00 F5FF 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-1 2,3 |--- ICMP Header (Router Selection) ----------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 10 (Router Selection)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0xF5FF (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 4-7 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 4-7 1,10 |0000  00 00 00 00 20  0  0  0                            ....|\n"},
    {"time exceeded in transit", "0B 00 AFFF 00000000 45",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Time Exceeded) -------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 11 (Time Exceeded)|\n"
     "109 1 1-1 2,3 |[Code] 0 (time to live exceeded in transit)|\n"
     "109 1 2-3 2,3 |[Checksum] 0xAFFF (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-8 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-8 1,10 |0000  45 20  0  0  0  0  0  0                            E|\n"},
    {"time exceeded in reassembly", "0B 01 F4FE 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Time Exceeded) -------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 11 (Time Exceeded)|\n"
     "109 1 1-1 2,3 |[Code] 1 (fragment reassembly time exceeded)|\n"
     "109 1 2-3 2,3 |[Checksum] 0xF4FE (OK)|\n"},
    {"time exceeded for an unknown reason", "0B 02 F4FD 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Time Exceeded) -------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 11 (Time Exceeded)|\n"
     "109 1 1-1 2,3 |[Code] 2|\n"
     "109 1 2-3 2,3 |[Checksum] 0xF4FD (OK)|\n"},
    {"parameter problem with a pointer", "0C 00 9AFF 14 000000 45",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Parameter Problem) ---------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 12 (Parameter Problem)|\n"
     "109 1 1-1 2,3 |[Code] 0 (pointer indicates the error)|\n"
     "109 1 4-4 2,3 |[Pointer] 20|\n"
     "109 1 2-3 2,3 |[Checksum] 0x9AFF (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-8 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-8 1,10 |0000  45 20  0  0  0  0  0  0                            E|\n"},
    {"parameter problem, option missing", "0C 01 F3FE 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Parameter Problem) ---------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 12 (Parameter Problem)|\n"
     "109 1 1-1 2,3 |[Code] 1 (required option is missing)|\n"
     "109 1 2-3 2,3 |[Checksum] 0xF3FE (OK)|\n"},
    {"parameter problem for an unknown reason", "0C 02 F3FD 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Parameter Problem) ---------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 12 (Parameter Problem)|\n"
     "109 1 1-1 2,3 |[Code] 2 (Unknown)|\n"
     "109 1 2-3 2,3 |[Checksum] 0xF3FD (OK)|\n"},
    {"timestamp", "0D 00 3135 1234 0001 02932E00 00000000 80000001 FF",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-19 2,3 |--- ICMP Header (Timestamp) -----------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 13 (Timestamp)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0x3135 (OK)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 1 (0x0001)|\n"
     "109 1 8-11 2,3 |[Originate Timestamp] 43200000 |\n"
     "109 1 12-15 2,3 |[Receive Timestamp] 0 |\n"
     "109 1 16-19 2,3 |[Transmit Timestamp] 2147483649 |\n"},
    {"timestamp reply, one byte too short", "0E 00 2F37 1234 0001 02932E00 00000000 800000",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-19 2,3 |--- ICMP Header (Timestamp Reply) -----------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 14 (Timestamp Reply)|\n"},
    {"information request", "0F 00 DECA 1234 0001",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Information Request) -------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 15 (Information Request)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0xDECA (OK)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 1 (0x0001)|\n"},
    {"information reply", "10 00 DDCA 1234 0001",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Information Reply) ---------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 16 (Information Reply)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0xDDCA (OK)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 1 (0x0001)|\n"},
    {"Kept: address mask reply", "12 00 DCC9 1234 0001 FFFFFF00",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-11 2,3 |--- ICMP Header (Address Mask Reply) --------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 18 (Address Mask Reply)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0xDCC9 (OK)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 1 (0x0001)|\n"
     "109 1 8-11 2,3 |[Address Mask] 255.255.255.0)|\n"},
    {"address mask request without its mask", "11 00 DCCA 1234 0001",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-11 2,3 |--- ICMP Header (Address Mask Request) ------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 17 (Address Mask Request)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0xDCCA (OK)|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 1 (0x0001)|\n"
     "109 1 8-11 2,3 |[Address Mask] 0.0.0.0)|\n"},
    {"a type without a decoder", "2A 00 C3CB 1234",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-5 2,3 |--- ICMP Header  ----------------------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 42 |\n"
     "109 1 2-3 2,3 |[Checksum] 0xC3CB (OK)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 4-5 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 4-5 1,10 |0000  12 34 20  0  0  0  0  0                            .4|\n"},
    {"a known type, one byte too short", "08 00 0000 1234 00",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Echo Request) --------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 8 (Echo Request)|\n"},
    {"one byte too short", "08 00 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-2 1,10 |---[Data] 3 (0x0003) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-2 1,10 |0000  08 00 00 20  0  0  0  0                            ...|\n"},
};
LINE_CASES(Icmp, whole, kMessages)

const Case kFragments[] = {
    {"no verdict while fragments are missing", "08 00 1111 1234 0001",
     "65535 65535 0-0 0,0 ||\n"
     "46 0 0-7 2,3 |--- ICMP Header (Echo Request) --------------------------------------------|\n"
     "109 1 0-0 2,3 |[Type] 8 (Echo Request)|\n"
     "109 1 1-1 2,3 |[Code] 0|\n"
     "109 1 2-3 2,3 |[Checksum] 0x1111|\n"
     "109 1 4-5 2,3 |[ID] 4660 (0x1234)|\n"
     "109 1 6-7 2,3 |[Sequence No] 1 (0x0001)|\n"},
};
LINE_CASES(IcmpFragment, fragment, kFragments)

}  // namespace

}  // namespace wirelines::test
