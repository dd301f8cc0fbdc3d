#include "ipv4/igmp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

void whole(LineList& list, Bytes data) {
  IgmpAnalyze(list, data, false);
}
void fragment(LineList& list, Bytes data) {
  IgmpAnalyze(list, data, true);
}

const Case kMessages[] = {
    {"query", "11 00 EEFF 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "51 0 0-7 8,3 |--- IGMP Header -----------------------------------------------------------|\n"
     "114 1 0-0 8,3 |[Version] 1|\n"
     "114 1 0-0 8,3 |[Type] 1 (Host Membership Query)|\n"
     "114 1 2-3 8,3 |[Checksum] 0xEEFF (OK)|\n"
     "114 1 4-7 8,3 |[Group Address] 0.0.0.0|\n"},
    {"report, and fill behind it", "12 00 0DF6 E0000009 00",
     "65535 65535 0-0 0,0 ||\n"
     "51 0 0-7 8,3 |--- IGMP Header -----------------------------------------------------------|\n"
     "114 1 0-0 8,3 |[Version] 1|\n"
     "114 1 0-0 8,3 |[Type] 2 (Host Membership Report)|\n"
     "114 1 2-3 8,3 |[Checksum] 0x0DF6 (OK)|\n"
     "114 1 4-7 8,3 |[Group Address] 224.0.0.9|\n"},
    {"Kept: another type shows the next byte", "16 64 1111 E00000FB",
     "65535 65535 0-0 0,0 ||\n"
     "51 0 0-7 8,3 |--- IGMP Header -----------------------------------------------------------|\n"
     "114 1 0-0 8,3 |[Version] 1|\n"
     "114 1 0-0 8,3 |[Type] 100|\n"
     "114 1 2-3 8,3 |[Checksum] 0x1111 (NG)|\n"
     "114 1 4-7 8,3 |[Group Address] 224.0.0.251|\n"},
    {"one byte too short", "11 00 1111 000000",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-6 1,10 |---[Data] 7 (0x0007) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-6 1,10 |0000  11 00 11 11 00 00 00 20                            .......|\n"},
};
LINE_CASES(Igmp, whole, kMessages)

const Case kFragments[] = {
    {"no verdict while fragments are missing", "11 00 1111 00000000",
     "65535 65535 0-0 0,0 ||\n"
     "51 0 0-7 8,3 |--- IGMP Header -----------------------------------------------------------|\n"
     "114 1 0-0 8,3 |[Version] 1|\n"
     "114 1 0-0 8,3 |[Type] 1 (Host Membership Query)|\n"
     "114 1 2-3 8,3 |[Checksum] 0x1111|\n"
     "114 1 4-7 8,3 |[Group Address] 0.0.0.0|\n"},
};
LINE_CASES(IgmpFragment, fragment, kFragments)

}  // namespace

}  // namespace wirelines::test
