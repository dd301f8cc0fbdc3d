#include "ipv4/ipv4.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kDatagrams[] = {
    {"a protocol without a decoder, and fill behind the datagram",
     "45 B8 0018 1A2B 4000 40 32 339A C0000201 C6336402 DEADBEEF 0000",
     "65535 65535 0-0 0,0 ||\n"
     "47 0 0-19 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 0-0 4,3 |[Version] 4|\n"
     "110 1 0-0 4,3 |[Header Length] 20 (0x14) byte(s)|\n"
     "110 1 1-1 4,3 |[Precedence] 5 (CRITIC/ECP)|\n"
     "110 1 1-1 4,3 |[TOS] [Delay] 1 [Throughput] 1 [Reliablity] 0 [Cost] 0|\n"
     "110 1 2-3 4,3 |[Total Length] 24 (0x0018) byte(s)|\n"
     "110 1 4-5 4,3 |[ID] 6699 (0x1A2B)|\n"
     "110 1 6-7 4,3 |[Flags] [Don't Fragment] 1 [More Fragments] 0|\n"
     "110 1 6-7 4,3 |[Fragment offset] 0 (0x0000) byte(s)|\n"
     "110 1 8-8 4,3 |[TTL] 64 seconds/hops|\n"
     "110 1 9-9 4,3 |[Protocol] 50 (Encapsulationg Security Payload)|\n"
     "110 1 10-11 4,3 |[Checksum] 0x339A (OK)|\n"
     "110 1 12-15 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 16-19 4,3 |[Source Address] 198.51.100.2 |\n"
     "110 1 0-0 0,0 |[Option] None|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 20-23 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 20-23 1,10 |0000  DE AD BE EF 20  0  0  0                            ....|\n"},
    {"a first fragment without a checksum, its total length past the capture",
     "45 1E 03E8 0000 2000 01 FD 0000 C0000201 C6336402 41",
     "65535 65535 0-0 0,0 ||\n"
     "47 0 0-19 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 0-0 4,3 |[Version] 4|\n"
     "110 1 0-0 4,3 |[Header Length] 20 (0x14) byte(s)|\n"
     "110 1 1-1 4,3 |[Precedence] 0 (Routine)|\n"
     "110 1 1-1 4,3 |[Type of Service] 15 (Max Security)|\n"
     "110 1 2-3 4,3 |[Total Length] 1000 (0x03E8) byte(s) (NG)|\n"
     "110 1 4-5 4,3 |[ID] 0 (0x0000)|\n"
     "110 1 6-7 4,3 |[Flags] [Don't Fragment] 0 [More Fragments] 1|\n"
     "110 1 6-7 4,3 |[Fragment offset] 0 (0x0000) byte(s)|\n"
     "110 1 8-8 4,3 |[TTL] 1 seconds/hops|\n"
     "110 1 9-9 4,3 |[Protocol] 253 |\n"
     "110 1 10-11 4,3 |[Checksum] None|\n"
     "110 1 12-15 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 16-19 4,3 |[Source Address] 198.51.100.2 |\n"
     "110 1 0-0 0,0 |[Option] None|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 20-20 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 20-20 1,10 |0000  41 20  0  0  0  0  0  0                            A|\n"},
    {"a later fragment with a wrong checksum", "45 00 0018 0007 00B9 40 11 1234 C0000201 C6336402 '1234'",
     "65535 65535 0-0 0,0 ||\n"
     "47 0 0-19 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 0-0 4,3 |[Version] 4|\n"
     "110 1 0-0 4,3 |[Header Length] 20 (0x14) byte(s)|\n"
     "110 1 1-1 4,3 |[Precedence] 0 (Routine)|\n"
     "110 1 1-1 4,3 |[Type of Service] 0 (Normal)|\n"
     "110 1 2-3 4,3 |[Total Length] 24 (0x0018) byte(s)|\n"
     "110 1 4-5 4,3 |[ID] 7 (0x0007)|\n"
     "110 1 6-7 4,3 |[Flags] [Don't Fragment] 0 [More Fragments] 0|\n"
     "110 1 6-7 4,3 |[Fragment offset] 1480 (0x05C8) byte(s)|\n"
     "110 1 8-8 4,3 |[TTL] 64 seconds/hops|\n"
     "110 1 9-9 4,3 |[Protocol] 17 (UDP)|\n"
     "110 1 10-11 4,3 |[Checksum] 0x1234 (NG)|\n"
     "110 1 12-15 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 16-19 4,3 |[Source Address] 198.51.100.2 |\n"
     "110 1 0-0 0,0 |[Option] None|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 20-23 1,10 |---[IP Fragment Data] 4 (0x0004) byte(s) --------------------- ASCII ------|\n"
     "63 1 20-23 1,10 |0000  31 32 33 34 20  0  0  0                            1234|\n"},
    {"a total length below the header", "45 00 0013 0007 0000 40 2F 8E7E C0000201 C6336402 0000 0800",
     "65535 65535 0-0 0,0 ||\n"
     "47 0 0-19 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 0-0 4,3 |[Version] 4|\n"
     "110 1 0-0 4,3 |[Header Length] 20 (0x14) byte(s)|\n"
     "110 1 1-1 4,3 |[Precedence] 0 (Routine)|\n"
     "110 1 1-1 4,3 |[Type of Service] 0 (Normal)|\n"
     "110 1 2-3 4,3 |[Total Length] 19 (0x0013) byte(s) (NG)|\n"
     "110 1 4-5 4,3 |[ID] 7 (0x0007)|\n"
     "110 1 6-7 4,3 |[Flags] [Don't Fragment] 0 [More Fragments] 0|\n"
     "110 1 6-7 4,3 |[Fragment offset] 0 (0x0000) byte(s)|\n"
     "110 1 8-8 4,3 |[TTL] 64 seconds/hops|\n"
     "110 1 9-9 4,3 |[Protocol] 47 (GRE)|\n"
     "110 1 10-11 4,3 |[Checksum] 0x8E7E (OK)|\n"
     "110 1 12-15 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 16-19 4,3 |[Source Address] 198.51.100.2 |\n"
     "110 1 0-0 0,0 |[Option] None|\n"},
    {"Kept: timestamp behind a no-operation",
     "49 00 0024 0001 0000 40 59 783E C0000201 C6336402 01 440C0501 C0000203 00000000 000000",
     "65535 65535 0-0 0,0 ||\n"
     "47 0 0-35 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 0-0 4,3 |[Version] 4|\n"
     "110 1 0-0 4,3 |[Header Length] 36 (0x24) byte(s)|\n"
     "110 1 1-1 4,3 |[Precedence] 0 (Routine)|\n"
     "110 1 1-1 4,3 |[Type of Service] 0 (Normal)|\n"
     "110 1 2-3 4,3 |[Total Length] 36 (0x0024) byte(s)|\n"
     "110 1 4-5 4,3 |[ID] 1 (0x0001)|\n"
     "110 1 6-7 4,3 |[Flags] [Don't Fragment] 0 [More Fragments] 0|\n"
     "110 1 6-7 4,3 |[Fragment offset] 0 (0x0000) byte(s)|\n"
     "110 1 8-8 4,3 |[TTL] 64 seconds/hops|\n"
     "110 1 9-9 4,3 |[Protocol] 89 (OSPF)|\n"
     "110 1 10-11 4,3 |[Checksum] 0x783E (OK)|\n"
     "110 1 12-15 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 16-19 4,3 |[Source Address] 198.51.100.2 |\n"
     "47 1 20-35 4,3 |[Option]|\n"
     "110 2 20-20 4,3 |[copied flag] 0|\n"
     "110 2 21-21 4,3 |[option class] 2 (debugging and measurement)|\n"
     "110 2 22-22 4,3 |[option no] 12|\n"
     "110 2 27-27 4,3 |[copied flag] 0|\n"
     "110 2 28-28 4,3 |[option class] 0|\n"
     "110 2 29-29 4,3 |[option no] 0 (End of Option list)|\n"},
    {"Kept: stream identifier, read on into the payload",
     "47 00 001E 0001 0000 40 59 0349 C0000201 C6336402 0101 88040001 0000 2A47",
     "65535 65535 0-0 0,0 ||\n"
     "47 0 0-27 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 0-0 4,3 |[Version] 4|\n"
     "110 1 0-0 4,3 |[Header Length] 28 (0x1C) byte(s)|\n"
     "110 1 1-1 4,3 |[Precedence] 0 (Routine)|\n"
     "110 1 1-1 4,3 |[Type of Service] 0 (Normal)|\n"
     "110 1 2-3 4,3 |[Total Length] 30 (0x001E) byte(s)|\n"
     "110 1 4-5 4,3 |[ID] 1 (0x0001)|\n"
     "110 1 6-7 4,3 |[Flags] [Don't Fragment] 0 [More Fragments] 0|\n"
     "110 1 6-7 4,3 |[Fragment offset] 0 (0x0000) byte(s)|\n"
     "110 1 8-8 4,3 |[TTL] 64 seconds/hops|\n"
     "110 1 9-9 4,3 |[Protocol] 89 (OSPF)|\n"
     "110 1 10-11 4,3 |[Checksum] 0x0349 (OK)|\n"
     "110 1 12-15 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 16-19 4,3 |[Source Address] 198.51.100.2 |\n"
     "47 1 20-27 4,3 |[Option]|\n"
     "110 2 20-20 4,3 |[copied flag] 0|\n"
     "110 2 21-21 4,3 |[option class] 0|\n"
     "110 2 22-22 4,3 |[option no] 8 (Stream ID)|\n"
     "110 2 26-26 4,3 |[copied flag] 0|\n"
     "110 2 27-27 4,3 |[option class] 0|\n"
     "110 2 28-28 4,3 |[option no] 10|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 28-29 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 28-29 1,10 |0000  2A 47 20  0  0  0  0  0                            *G|\n"},
    {"the capture ends inside the options", "4F 00 0018 0001 0000 40 59 4321 C0000201 C6336402 01010101",
     "65535 65535 0-0 0,0 ||\n"
     "47 0 0-59 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 0-0 4,3 |[Version] 4|\n"
     "110 1 0-0 4,3 |[Header Length] 60 (0x3C) byte(s)|\n"
     "110 1 1-1 4,3 |[Precedence] 0 (Routine)|\n"
     "110 1 1-1 4,3 |[Type of Service] 0 (Normal)|\n"
     "110 1 2-3 4,3 |[Total Length] 24 (0x0018) byte(s)|\n"
     "110 1 4-5 4,3 |[ID] 1 (0x0001)|\n"
     "110 1 6-7 4,3 |[Flags] [Don't Fragment] 0 [More Fragments] 0|\n"
     "110 1 6-7 4,3 |[Fragment offset] 0 (0x0000) byte(s)|\n"
     "110 1 8-8 4,3 |[TTL] 64 seconds/hops|\n"
     "110 1 9-9 4,3 |[Protocol] 89 (OSPF)|\n"
     "110 1 10-11 4,3 |[Checksum] 0x4321 (NG)|\n"
     "110 1 12-15 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 16-19 4,3 |[Source Address] 198.51.100.2 |\n"
     "47 1 20-59 4,3 |[Option]|\n"
     "110 2 20-20 4,3 |[copied flag] 0|\n"
     "110 2 21-21 4,3 |[option class] 0|\n"
     "110 2 22-22 4,3 |[option no] 1 (No Operation)|\n"
     "110 2 23-23 4,3 |[copied flag] 0|\n"
     "110 2 24-24 4,3 |[option class] 0|\n"
     "110 2 25-25 4,3 |[option no] 0 (End of Option list)|\n"},
    {"one byte too short", "45 00 0018 1A2B 4000 40 32 1234 C0000201 C63364",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-18 1,10 |---[Data] 19 (0x0013) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  45 00 00 18 1A 2B 40 00 - 40 32 12 34 C0 00 02 01  E....+@.@2.4....|\n"
     "63 1 0-18 1,10 |0010  C6 33 64 20  0  0  0  0                            .3d|\n"},
};
LINE_CASES(Ip4, IpAnalyze, kDatagrams)

const Case kFrames[] = {
    {"IPv4 over LLC", "001122334455 66778899AABB 0018 060603 45 00 0015 0000 0000 40 59 8E59 C0000201 C6336402 41",
     "10 0 0-11 2,9 |--- MAC [66778899AABB] --> [001122334455] ---------------------------------|\n"
     "73 1 4294967295-4294967295 2,9 |[Time] 11/14/2023 22:13:20.123456|\n"
     "73 1 0-0 2,9 |[Length] 38 (0x0026) byte(s)|\n"
     "73 1 0-5 2,9 |[Destination Address] 001122334455 |\n"
     "73 1 6-11 2,9 |[Source Address] 66778899AABB |\n"
     "65535 65535 0-0 0,0 ||\n"
     "12 0 12-16 4,9 |--- Data Link [IEEE802.2(LLC)] --------------------------------------------|\n"
     "75 1 12-16 4,9 |[Frame Type] IEEE802.2(LLC)|\n"
     "75 1 12-13 4,9 |[Frame Length] 24 (0x0018) byte(s)|\n"
     "75 1 14-16 4,9 |[LLC] [DSAP] 0x06 [SSAP] 0x06 [Control] 0x03 (IP)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "47 0 17-36 4,3 |--- IP Header [192.0.2.1] --> [198.51.100.2] ------------------------------|\n"
     "110 1 17-17 4,3 |[Version] 4|\n"
     "110 1 17-17 4,3 |[Header Length] 20 (0x14) byte(s)|\n"
     "110 1 18-18 4,3 |[Precedence] 0 (Routine)|\n"
     "110 1 18-18 4,3 |[Type of Service] 0 (Normal)|\n"
     "110 1 19-20 4,3 |[Total Length] 21 (0x0015) byte(s)|\n"
     "110 1 21-22 4,3 |[ID] 0 (0x0000)|\n"
     "110 1 23-24 4,3 |[Flags] [Don't Fragment] 0 [More Fragments] 0|\n"
     "110 1 23-24 4,3 |[Fragment offset] 0 (0x0000) byte(s)|\n"
     "110 1 25-25 4,3 |[TTL] 64 seconds/hops|\n"
     "110 1 26-26 4,3 |[Protocol] 89 (OSPF)|\n"
     "110 1 27-28 4,3 |[Checksum] 0x8E59 (OK)|\n"
     "110 1 29-32 4,3 |[Destination Address] 192.0.2.1 |\n"
     "110 1 33-36 4,3 |[Source Address] 198.51.100.2 |\n"
     "110 1 0-0 0,0 |[Option] None|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 37-37 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 37-37 1,10 |0000  41 20  0  0  0  0  0  0                            A|\n"},
};
LINE_CASES(Ip4Frame, decode_frame, kFrames)

}  // namespace

}  // namespace wirelines::test
