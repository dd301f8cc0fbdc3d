#include "core/datalink.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kFrames[] = {
    {"SNAP with an unknown type", "030405060708 0A0B0C0D0E0F 0008 AAAA03 00000C 2000",
     "10 0 0-11 2,9 |--- MAC [0A0B0C0D0E0F] --> [030405060708] ---------------------------------|\n"
     "73 1 4294967295-4294967295 2,9 |[Time] 11/14/2023 22:13:20.123456|\n"
     "73 1 0-0 2,9 |[Length] 22 (0x0016) byte(s)|\n"
     "73 1 0-5 2,9 |[Destination Address] 030405060708 |\n"
     "73 1 6-11 2,9 |[Source Address] 0A0B0C0D0E0F |\n"
     "65535 65535 0-0 0,0 ||\n"
     "12 0 12-21 4,9 |--- Data Link [IEEE802.2(SNAP)] -------------------------------------------|\n"
     "75 1 12-21 4,9 |[Frame Type] IEEE802.2(SNAP)|\n"
     "75 1 17-19 4,9 |[Organaization Code] 0x00 0x00 0x0C|\n"
     "75 1 20-21 4,9 |[Protocol Type] 0x2000 |\n"},
};
LINE_CASES(DataLink, decode_frame, kFrames)

}  // namespace

}  // namespace wirelines::test
