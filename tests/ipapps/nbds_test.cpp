#include "ipapps/nbds.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kMessages[] = {
    {"broadcast that does not carry SMB",
     "12 0E 80B2 C0000205 008A 0052 0000 20 'FHEPFCELFDFEEBFEEJEPEOCACACACAAA' 00 20 "
     "'FHEPFCELEHFCEPFFFACACACACACACABN' 00 0102",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-81 3,5 |--- NetBIOS Datagram Service [WORKSTATION     ] --> [WORKGROUP       ] ----|\n"
     "92 1 0-0 3,5 |[MSG_TYPE] 0x12 (BROADCAST DATAGRAM)|\n"
     "92 1 1-1 3,5 |[Flags] 14 [SNT] 1 (P node) [F] 1 (FIRST) [M] 0 |\n"
     "92 1 2-3 3,5 |[DGM_ID] 32946 (0x80B2)|\n"
     "92 1 4-7 3,5 |[SOURCE_IP] 192.0.2.5 |\n"
     "92 1 8-9 3,5 |[Source Port] 138 (NETBIOS-DGM)|\n"
     "92 1 10-11 3,5 |[Data Length] 82 (0x0052) byte(s)|\n"
     "92 1 12-13 3,5 |[PACKET_OFFSET] 0 byte(s)|\n"
     "92 1 14-47 3,5 |[SOURCE_NAME] WORKSTATION     |\n"
     "92 1 48-81 3,5 |[DESTINATION_NAME] WORKGROUP       |\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 82-83 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 82-83 1,10 |0000  01 02 20  0  0  0  0  0                            ..|\n"},
    {"Kept: the node type as a yes or no (type and names unknown)",
     "17 03 0001 C0000205 0400 0000 0010 40 'FHEPFCELFDFEEBFEEJEPEOCACACACAAA' 00 C0 "
     "'FHEPFCELEHFCEPFFFACACACACACACABN' 00",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-81 3,5 |--- NetBIOS Datagram Service [] --> [] ------------------------------------|\n"
     "92 1 0-0 3,5 |[MSG_TYPE] 0x17 |\n"
     "92 1 1-1 3,5 |[Flags] 3 [SNT] 0 (B node) [F] 1 (FIRST) [M] 1 (MORE)|\n"
     "92 1 2-3 3,5 |[DGM_ID] 1 (0x0001)|\n"
     "92 1 4-7 3,5 |[SOURCE_IP] 192.0.2.5 |\n"
     "92 1 8-9 3,5 |[Source Port] 1024 |\n"
     "92 1 10-11 3,5 |[Data Length] 0 (0x0000) byte(s)|\n"
     "92 1 12-13 3,5 |[PACKET_OFFSET] 16 byte(s)|\n"},
    {"one byte too short",
     "12 0E 80B2 C0000205 008A 0052 0000 20 'FHEPFCELFDFEEBFEEJEPEOCACACACAAA' 00 20 "
     "'FHEPFCELEHFCEPFFFACACACACACACABN'",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-80 1,10 |---[Data] 81 (0x0051) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  12 0E 80 B2 C0 00 02 05 - 00 8A 00 52 00 00 20 46  ...........R.. F|\n"
     "63 1 0-31 1,10 |0010  48 45 50 46 43 45 4C 46 - 44 46 45 45 42 46 45 45  HEPFCELFDFEEBFEE|\n"
     "63 1 0-47 1,10 |0020  4A 45 50 45 4F 43 41 43 - 41 43 41 43 41 41 41 00  JEPEOCACACACAAA.|\n"
     "63 1 0-63 1,10 |0030  20 46 48 45 50 46 43 45 - 4C 45 48 46 43 45 50 46   FHEPFCELEHFCEPF|\n"
     "63 1 0-79 1,10 |0040  46 46 41 43 41 43 41 43 - 41 43 41 43 41 43 41 42  FFACACACACACACAB|\n"
     "63 1 0-80 1,10 |0050  4E 20  0  0  0  0  0  0                            N|\n"},
};
LINE_CASES(Nbds, NbdsAnalyze, kMessages)

TEST(Nbds, TypeNames) {
  const char* const shown[] = {"[MSG_TYPE] 0x10 (DIRECT_UNIQUE DATAGRAM)",
                               "[MSG_TYPE] 0x11 (DIRECT_GROUP DATAGRAM)",
                               "[MSG_TYPE] 0x12 (BROADCAST DATAGRAM)",
                               "[MSG_TYPE] 0x13 (DATAGRAM ERROR)",
                               "[MSG_TYPE] 0x14 (DATAGRAM QUERY REQUEST)",
                               "[MSG_TYPE] 0x15 (DATAGRAM POSITIVE QUERY RESPONSE)",
                               "[MSG_TYPE] 0x16 (DATAGRAM NEGATIVE QUERY RESPONSE)"};
  std::vector<uint8_t> datagram(82);
  datagram[0] = 0x10;
  for (const char* const line : shown) {
    const auto lines = decode_and_dump(NbdsAnalyze, Bytes(datagram.data(), 82));
    EXPECT_NE(lines.find('|' + std::string(line) + '|'), std::string::npos) << line << " in\n" << lines;
    ++datagram[0];
  }
}

}  // namespace

}  // namespace wirelines::test
