#include "ipapps/nbss.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kMessages[] = {
    {"request", "81 00 0044 20 'EGEJEMEFFDEFFCFGEFFCCACACACACACA' 00 20 'FHEPFCELFDFEEBFEEJEPEOCACACACAAA' 00 FF",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 129 (SESSION REQUEST)|\n"
     "92 1 1-1 3,5 |[Flags] 0|\n"
     "92 1 2-3 3,5 |[Data Length] 68 (0x0044) byte(s)|\n"
     "92 1 4-37 3,5 |[CALLED NAME] FILESERVER      |\n"
     "92 1 38-71 3,5 |[CALLING NAME] WORKSTATION     |\n"},
    {"request cut in the first name", "81 00 0044 20 'EGEJEMEFFDEF'",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 129 (SESSION REQUEST)|\n"
     "92 1 1-1 3,5 |[Flags] 0|\n"
     "92 1 2-3 3,5 |[Data Length] 68 (0x0044) byte(s)|\n"
     "92 1 4-37 3,5 |[CALLED NAME] FILESE          |\n"
     "92 1 38-71 3,5 |[CALLING NAME]                 |\n"},
    {"message that does not carry SMB", "00 01 0005 'hello'",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 0 (SESSION MESSAGE)|\n"
     "92 1 1-1 3,5 |[Flags] 1|\n"
     "92 1 2-3 3,5 |[Data Length] 5 (0x0005) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 4-8 1,10 |---[Data] 5 (0x0005) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 4-8 1,10 |0000  68 65 6C 6C 6F 20  0  0                            hello|\n"},
    {"positive response", "82 00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 130 (POSITIVE SESSION RESPONSE)|\n"
     "92 1 1-1 3,5 |[Flags] 0|\n"
     "92 1 2-3 3,5 |[Data Length] 0 (0x0000) byte(s)|\n"},
    {"negative response", "83 00 0001",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 131 (NEGATIVE SESSION RESPONSE)|\n"
     "92 1 1-1 3,5 |[Flags] 0|\n"
     "92 1 2-3 3,5 |[Data Length] 1 (0x0001) byte(s)|\n"},
    {"retarget response", "84 00 0006",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 132 (RETARGET SESSION RESPONSE)|\n"
     "92 1 1-1 3,5 |[Flags] 0|\n"
     "92 1 2-3 3,5 |[Data Length] 6 (0x0006) byte(s)|\n"},
    {"keep alive", "85 00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 133 (SESSION KEEP ALIVE)|\n"
     "92 1 1-1 3,5 |[Flags] 0|\n"
     "92 1 2-3 3,5 |[Data Length] 0 (0x0000) byte(s)|\n"},
    {"unknown type", "86 80 FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-3 3,5 |--- NetBIOS Session Service -----------------------------------------------|\n"
     "92 1 0-0 3,5 |[Type] 134 |\n"
     "92 1 1-1 3,5 |[Flags] 128|\n"
     "92 1 2-3 3,5 |[Data Length] 65535 (0xFFFF) byte(s)|\n"},
    {"one byte too short", "85 00 00", ""},
};
LINE_CASES(Nbss, NbssAnalyze, kMessages)

}  // namespace

}  // namespace wirelines::test
