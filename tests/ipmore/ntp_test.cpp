#include "ipmore/ntp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kNtp[] = {
    {"client that knows no time yet",
     "E3 00 06 EC 00010000 00010000 00000000 0000000000000000 0000000000000000 0000000000000000 E8FE8D80 80000000",
     "65535 65535 0-0 0,0 ||\n"
     "23 0 0-47 7,6 |--- NTP Message -----------------------------------------------------------|\n"
     "86 1 0-0 7,6 |[LI] 3 (Alarm)|\n"
     "86 1 0-0 7,6 |[Version] 4|\n"
     "86 1 0-0 7,6 |[Mode] 3 (Client)|\n"
     "86 1 1-1 7,6 |[Stratum] 0 (Unspecified)|\n"
     "86 1 2-2 7,6 |[Poll] 6 (64 second(s))|\n"
     "86 1 3-3 7,6 |[Precision] 0xEC (0.000001 second(s))|\n"
     "86 1 4-7 7,6 |[Synchronizing Distance] 0x00010000|\n"
     "86 1 8-11 7,6 |[Estimated Drift Rate] 0x00010000|\n"
     "86 1 12-15 7,6 |[Reference Clock Identifier] Unspecified|\n"
     "86 1 16-23 7,6 |[Reference Timestamp] 0000/00/00 00:00:00.0|\n"
     "86 1 24-31 7,6 |[Originate Timestamp] 0000/00/00 00:00:00.0|\n"
     "86 1 32-39 7,6 |[Receive Timestamp] 0000/00/00 00:00:00.0|\n"
     "86 1 40-47 7,6 |[Transmit Timestamp] 2023/11/14 00:21:20.499996|\n"},
    {"server with a clock, and an authenticator",
     "1C 01 00 02 00000000 00000010 'GPS ' E8FE8D80 00000000 E8FE8D7F FFFFFFFF 00000000 00000001 E8FE8D80 000010C7"
     "00000001 000102",
     "65535 65535 0-0 0,0 ||\n"
     "23 0 0-54 7,6 |--- NTP Message -----------------------------------------------------------|\n"
     "86 1 0-0 7,6 |[LI] 0 (No Warning)|\n"
     "86 1 0-0 7,6 |[Version] 3|\n"
     "86 1 0-0 7,6 |[Mode] 4 (Servder)|\n"
     "86 1 1-1 7,6 |[Stratum] 1 (Primary Reference)|\n"
     "86 1 2-2 7,6 |[Poll] 0 (1 second(s))|\n"
     "86 1 3-3 7,6 |[Precision] 0x02 (1.000000 second(s))|\n"
     "86 1 4-7 7,6 |[Synchronizing Distance] 0x00000000|\n"
     "86 1 8-11 7,6 |[Estimated Drift Rate] 0x00000010|\n"
     "86 1 12-15 7,6 |[Reference Clock Identifier] GPS |\n"
     "86 1 16-23 7,6 |[Reference Timestamp] 2023/11/14 00:21:20.0|\n"
     "86 1 24-31 7,6 |[Originate Timestamp] 2023/11/14 00:21:19.999992|\n"
     "86 1 32-39 7,6 |[Receive Timestamp] 1900/01/00 00:00:00.0|\n"
     "86 1 40-47 7,6 |[Transmit Timestamp] 2023/11/14 00:21:20.1|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 48-54 1,10 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 48-54 1,10 |0000  00 00 00 01 00 01 02 20                            .......|\n"},
    {"broadcast of the second rank; an address as the source",
     "65 0F 20 80 00000000 00000000 C0000201 00000000 00000001 00000000 00000000 00000000 00000000 00000000 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "23 0 0-47 7,6 |--- NTP Message -----------------------------------------------------------|\n"
     "86 1 0-0 7,6 |[LI] 1 (+1 Second)|\n"
     "86 1 0-0 7,6 |[Version] 4|\n"
     "86 1 0-0 7,6 |[Mode] 5 (Broadcast)|\n"
     "86 1 1-1 7,6 |[Stratum] 15 (Secondary Reference)|\n"
     "86 1 2-2 7,6 |[Poll] 32 (0 second(s))|\n"
     "86 1 3-3 7,6 |[Precision] 0x80 (0.000000 second(s))|\n"
     "86 1 4-7 7,6 |[Synchronizing Distance] 0x00000000|\n"
     "86 1 8-11 7,6 |[Estimated Drift Rate] 0x00000000|\n"
     "86 1 12-15 7,6 |[Reference Clock Identifier] 192.0.2.1|\n"
     "86 1 16-23 7,6 |[Reference Timestamp] 1900/01/00 00:00:00.0|\n"
     "86 1 24-31 7,6 |[Originate Timestamp] 0000/00/00 00:00:00.0|\n"
     "86 1 32-39 7,6 |[Receive Timestamp] 0000/00/00 00:00:00.0|\n"
     "86 1 40-47 7,6 |[Transmit Timestamp] 0000/00/00 00:00:00.0|\n"},
    // 2023-12-01, 1904-01-01 and 2023-12-31.
    {"Kept: the first of a month shows as day 0, and leap years are the calendar's own",
     "A2 10 1F FF 00000000 00000000 'GPS' 00 E913A080 00000000 0784CE00 00000000 E93C7EFF 00000000 FFFFFFFF FFFFFFFF",
     "65535 65535 0-0 0,0 ||\n"
     "23 0 0-47 7,6 |--- NTP Message -----------------------------------------------------------|\n"
     "86 1 0-0 7,6 |[LI] 2 (-1 Second)|\n"
     "86 1 0-0 7,6 |[Version] 4|\n"
     "86 1 0-0 7,6 |[Mode] 2 (symmetric Passive)|\n"
     "86 1 1-1 7,6 |[Stratum] 16 (Reserved)|\n"
     "86 1 2-2 7,6 |[Poll] 31 (2147483648 second(s))|\n"
     "86 1 3-3 7,6 |[Precision] 0xFF (0.500000 second(s))|\n"
     "86 1 4-7 7,6 |[Synchronizing Distance] 0x00000000|\n"
     "86 1 8-11 7,6 |[Estimated Drift Rate] 0x00000000|\n"
     "86 1 12-15 7,6 |[Reference Clock Identifier] 71.80.83.0|\n"
     "86 1 16-23 7,6 |[Reference Timestamp] 2023/12/00 00:00:00.0|\n"
     "86 1 24-31 7,6 |[Originate Timestamp] 1903/12/30 00:00:00.0|\n"
     "86 1 32-39 7,6 |[Receive Timestamp] 2023/12/30 23:59:59.0|\n"
     "86 1 40-47 7,6 |[Transmit Timestamp] 2036/02/06 06:28:15.999992|\n"},
    {"control response with variables", "D6 E2 0102 0628 8A01 0004 000D 'leap=0, tc=6' 0A",
     "65535 65535 0-0 0,0 ||\n"
     "23 0 0-24 7,6 |--- NTP Message -----------------------------------------------------------|\n"
     "86 1 0-0 7,6 |[LI] 3 (Alarm)|\n"
     "86 1 0-0 7,6 |[Version] 2|\n"
     "86 1 0-0 7,6 |[Mode] 6 (NTP Control Message)|\n"
     "86 1 1-1 7,6 |[R] 1 [E] 1 [M] 1|\n"
     "86 1 1-1 7,6 |[Operation Code] 2 (read variables)|\n"
     "86 1 2-3 7,6 |[Sequence] 258 (0x0102)|\n"
     "86 1 4-5 7,6 |[Status] 0x0628|\n"
     "86 1 6-7 7,6 |[Association ID] 0x8A01|\n"
     "86 1 8-9 7,6 |[Offset] 0x0004|\n"
     "86 1 10-11 7,6 |[Count] 13|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 12-24 1,10 |---[Data] 13 (0x000D) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 12-24 1,10 |0000  6C 65 61 70 3D 30 2C 20 - 74 63 3D 36 0A           leap=0, tc=6.|\n"},
    {"control operations", "0E 1F 0001 0000 0000 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "23 0 0-11 7,6 |--- NTP Message -----------------------------------------------------------|\n"
     "86 1 0-0 7,6 |[LI] 0 (No Warning)|\n"
     "86 1 0-0 7,6 |[Version] 1|\n"
     "86 1 0-0 7,6 |[Mode] 6 (NTP Control Message)|\n"
     "86 1 1-1 7,6 |[R] 0 [E] 0 [M] 0|\n"
     "86 1 1-1 7,6 |[Operation Code] 31 (reserved)|\n"
     "86 1 2-3 7,6 |[Sequence] 1 (0x0001)|\n"
     "86 1 4-5 7,6 |[Status] 0x0000|\n"
     "86 1 6-7 7,6 |[Association ID] 0x0000|\n"
     "86 1 8-9 7,6 |[Offset] 0x0000|\n"
     "86 1 10-11 7,6 |[Count] 0|\n"},
    {"one byte short of a time message, private mode",
     "17 01 00 00 00000000 00000000 00000000 0000000000000000 0000000000000000 0000000000000000 00000000000000",
     "65535 65535 0-0 0,0 ||\n"
     "23 0 0-46 7,6 |--- NTP Message -----------------------------------------------------------|\n"
     "86 1 0-0 7,6 |[LI] 0 (No Warning)|\n"
     "86 1 0-0 7,6 |[Version] 2|\n"
     "86 1 0-0 7,6 |[Mode] 7 (Reserved)|\n"},
    {"one byte short of a header", "23 00 06 EC 00010000 000100",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-10 1,10 |---[Data] 11 (0x000B) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-10 1,10 |0000  23 00 06 EC 00 01 00 00 - 00 01 00                 #..........|\n"},
};
LINE_CASES(Ntp, NtpAnalyze, kNtp)

}  // namespace

}  // namespace wirelines::test
