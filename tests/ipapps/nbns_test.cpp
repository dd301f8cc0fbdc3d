#include "ipapps/nbns.hpp"

#include <gtest/gtest.h>

#include <string>

#include "core/lines.hpp"
#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kMessages[] = {
    {"registration, its record's name a pointer",
     "1A2C 2910 0001 0000 0000 0001 20 'FHEPFCELFDFEEBFEEJEPEOCACACACAAA' 00 0020 0001 C00C 0020 0001 000493E0 "
     "0006 6000 C0000205",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-67 3,5 |--- NetBIOS Name Service --------------------------------------------------|\n"
     "92 1 0-1 3,5 |[ID] 6700 (0x1A2C)|\n"
     "92 1 2-3 3,5 |[R] 0 (request)|\n"
     "92 1 2-3 3,5 |[OPCODE] 5 (registration)|\n"
     "92 1 2-3 3,5 |[B] 0 (Unicast)|\n"
     "92 1 4-11 3,5 |[QDCOUNT] 1 [ANCOUNT] 0 [NSCOUNT] 0 [ARCOUNT] 1|\n"
     "92 1 12-49 3,5 |--- QUESTION SECTION 1 ------------------|\n"
     "92 1 12-45 3,5 |[QUESTION_NAME] WORKSTATION     |\n"
     "92 1 46-47 3,5 |[QUESTION_TYPE] 0x0020 (NetBIOS general Name Service Resource Record)|\n"
     "92 1 48-49 3,5 |[CLASS] 1 (Internet)|\n"
     "92 1 50-67 3,5 |--- ADDITIONAL RECORDS SECTION 1 --------|\n"
     "92 1 50-51 3,5 |[RR_NAME] WORKSTATION     |\n"
     "92 1 52-53 3,5 |[QUESTION_TYPE] 0x0020 (NetBIOS general Name Service Resource Record)|\n"
     "92 1 54-55 3,5 |[CLASS] 1 (Internet)|\n"
     "92 1 56-59 3,5 |[TTL] 300000 sec|\n"
     "92 1 60-61 3,5 |[RDLENGTH] 6 sec|\n"
     "29 1 62-63 3,5 |[NAME_FLAGS] 0x6000|\n"
     "92 2 62-63 3,5 |    [Group Name Flag] 0 (UNIQUE NetBIOS name)|\n"
     "92 2 62-63 3,5 |    [Owner Node Type] 3 (Reserved)|\n"
     "92 1 64-67 3,5 |[IP Address] 192.0.2.5 |\n"},
    {"Kept: B shows RA (an answer, of whose addresses the first is shown)",
     "1A2B 8580 0000 0001 0000 0000 20 'EGEJEMEFFDEFFCFGEFFCCACACACACACA' 00 0020 0001 000493E0 000C 8000 "
     "C0000207 8000 C6336407",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-67 3,5 |--- NetBIOS Name Service --------------------------------------------------|\n"
     "92 1 0-1 3,5 |[ID] 6699 (0x1A2B)|\n"
     "92 1 2-3 3,5 |[R] 1 (response)|\n"
     "92 1 2-3 3,5 |[OPCODE] 0 (query)|\n"
     "92 1 2-3 3,5 |[AA] Authoritative Answer flag = 1|\n"
     "92 1 2-3 3,5 |[TC] Truncation Flag = 0|\n"
     "92 1 2-3 3,5 |[RD] Recursion Desired Flag = 1|\n"
     "92 1 2-3 3,5 |[RA] Recursion Available Flag = 1|\n"
     "92 1 2-3 3,5 |[B] 1 (Broadcast)|\n"
     "92 1 2-3 3,5 |[RCODE] 0 (OK)|\n"
     "92 1 4-11 3,5 |[QDCOUNT] 0 [ANCOUNT] 1 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "92 1 12-67 3,5 |--- ANSWER SECTION 1 --------------------|\n"
     "92 1 12-45 3,5 |[RR_NAME] FILESERVER      |\n"
     "92 1 46-47 3,5 |[QUESTION_TYPE] 0x0020 (NetBIOS general Name Service Resource Record)|\n"
     "92 1 48-49 3,5 |[CLASS] 1 (Internet)|\n"
     "92 1 50-53 3,5 |[TTL] 300000 sec|\n"
     "92 1 54-55 3,5 |[RDLENGTH] 12 sec|\n"
     "29 1 56-57 3,5 |[NAME_FLAGS] 0x8000|\n"
     "92 2 56-57 3,5 |    [Group Name Flag] 1 (GROUP NetBIOS name)|\n"
     "92 2 56-57 3,5 |    [Owner Node Type] 0 (B node)|\n"
     "92 1 58-61 3,5 |[IP Address] 192.0.2.7 |\n"},
    {"Kept: RA shows RD; the last fields of a node status come two bytes late",
     "1A2D 8500 0000 0001 0000 0000 20 'CKAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA' 00 0021 0001 00000000 0055 02 "
     "'FILESERVER     ' 20 0400 'WORKGROUP' 00 'x    ' 1D FE00 0200C0000207 10 07 0102 000A 000B 000C 000D 000E "
     "00010002 00030004 0011 0012 0013 FFFF 0014 0015 0016 0017 0018 0019",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-140 3,5 |--- NetBIOS Name Service --------------------------------------------------|\n"
     "92 1 0-1 3,5 |[ID] 6701 (0x1A2D)|\n"
     "92 1 2-3 3,5 |[R] 1 (response)|\n"
     "92 1 2-3 3,5 |[OPCODE] 0 (query)|\n"
     "92 1 2-3 3,5 |[AA] Authoritative Answer flag = 1|\n"
     "92 1 2-3 3,5 |[TC] Truncation Flag = 0|\n"
     "92 1 2-3 3,5 |[RD] Recursion Desired Flag = 1|\n"
     "92 1 2-3 3,5 |[RA] Recursion Available Flag = 1|\n"
     "92 1 2-3 3,5 |[B] 0 (Unicast)|\n"
     "92 1 2-3 3,5 |[RCODE] 0 (OK)|\n"
     "92 1 4-11 3,5 |[QDCOUNT] 0 [ANCOUNT] 1 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "92 1 12-140 3,5 |--- ANSWER SECTION 1 --------------------|\n"
     "92 1 12-45 3,5 |[RR_NAME] *               |\n"
     "92 1 46-47 3,5 |[QUESTION_TYPE] 0x0021 (NetBIOS NODE STATUS Resource Record)|\n"
     "92 1 48-49 3,5 |[CLASS] 1 (Internet)|\n"
     "92 1 50-53 3,5 |[TTL] 0 sec|\n"
     "92 1 54-55 3,5 |[RDLENGTH] 85 sec|\n"
     "92 1 56-56 3,5 |[NUM_NAMES] 2|\n"
     "92 1 57-72 3,5 |[NODE_NAME -1-] FILESERVER     |\n"
     "29 1 73-74 3,5 |[NAME_FLAGS] 0x0400|\n"
     "92 2 73-74 3,5 |    [Group Name Flag] 0 (UNIQUE NetBIOS name)|\n"
     "92 2 73-74 3,5 |    [Owner Node Type] 0 (B node)|\n"
     "92 2 73-74 3,5 |    [Deregister Flag] 0|\n"
     "92 2 73-74 3,5 |    [Conflict Flag] 0|\n"
     "92 2 73-74 3,5 |    [Active Name Flag] 1 (All entries have this flag set to one)|\n"
     "92 2 73-74 3,5 |    [Permanent Name Flag] 0|\n"
     "92 1 75-90 3,5 |[NODE_NAME -2-] WORKGROUP|\n"
     "29 1 91-92 3,5 |[NAME_FLAGS] 0xFE00|\n"
     "92 2 91-92 3,5 |    [Group Name Flag] 1 (GROUP NetBIOS name)|\n"
     "92 2 91-92 3,5 |    [Owner Node Type] 3 (Reserved)|\n"
     "92 2 91-92 3,5 |    [Deregister Flag] 1 (this name is deleted)|\n"
     "92 2 91-92 3,5 |    [Conflict Flag] 1 (conflict)|\n"
     "92 2 91-92 3,5 |    [Active Name Flag] 1 (All entries have this flag set to one)|\n"
     "92 2 91-92 3,5 |    [Permanent Name Flag] 1 (entry is for the permanent node name)|\n"
     "92 1 93-98 3,5 |[UNIT_ID] 02,00,C0,00,02,07|\n"
     "92 1 99-99 3,5 |[JUMPERS] 16 (0x10)|\n"
     "92 1 100-100 3,5 |[TEST_RESULT] 7 (0x07)|\n"
     "92 1 101-102 3,5 |[VERSION_NUMBER] 258 |\n"
     "92 1 103-104 3,5 |[PERIOD_OF_STATISTICS] 10 |\n"
     "92 1 105-106 3,5 |[NUMBER_OF_CRCs] 11 |\n"
     "92 1 107-108 3,5 |[NUMBER_ALIGNMENT_ERRORS] 12 |\n"
     "92 1 109-110 3,5 |[NUMBER_OF_COLLISIONS] 13 |\n"
     "92 1 111-112 3,5 |[NUMBER_SEND_ABORTS] 14 |\n"
     "92 1 113-116 3,5 |[NUMBER_GOOD_SENDS] 65538 |\n"
     "92 1 117-120 3,5 |[NUMBER_GOOD_RECEIVES] 196612 |\n"
     "92 1 121-122 3,5 |[NUMBER_RETRANSMITS] 17 |\n"
     "92 1 123-124 3,5 |[NUMBER_NO_RESOURCE_CONDITIONS] 18 |\n"
     "92 1 125-126 3,5 |[NUMBER_FREE_COMMAND_BLOCKS] 19 |\n"
     "92 1 129-130 3,5 |[TOTAL_NUMBER_COMMAND_BLOCKS] 20 |\n"
     "92 1 131-132 3,5 |MAX_TOTAL_NUMBER_COMMAND_BLOCKS] 21 |\n"
     "92 1 133-134 3,5 |[NUMBER_PENDING_SESSIONS] 22 |\n"
     "92 1 135-136 3,5 |[MAX_NUMBER_PENDING_SESSIONS] 23 |\n"
     "92 1 137-138 3,5 |[MAX_TOTAL_SESSIONS_POSSIBLE] 24 |\n"
     "92 1 139-140 3,5 |[SESSION_DATA_PACKET_SIZE] 25 |\n"},
    {"Kept: a length in seconds; a pointer without a question has no name line",
     "1A2E BC07 0000 0000 0001 0000 C00C 000A 0001 0000003C 0002 2910",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-25 3,5 |--- NetBIOS Name Service --------------------------------------------------|\n"
     "92 1 0-1 3,5 |[ID] 6702 (0x1A2E)|\n"
     "92 1 2-3 3,5 |[R] 1 (response)|\n"
     "92 1 2-3 3,5 |[OPCODE] 7 (WACK)|\n"
     "92 1 2-3 3,5 |[AA] Authoritative Answer flag = 1|\n"
     "92 1 2-3 3,5 |[TC] Truncation Flag = 0|\n"
     "92 1 2-3 3,5 |[RD] Recursion Desired Flag = 0|\n"
     "92 1 2-3 3,5 |[RA] Recursion Available Flag = 0|\n"
     "92 1 2-3 3,5 |[B] 0 (Unicast)|\n"
     "92 1 2-3 3,5 |[RCODE] 7 (Name in conflict error)|\n"
     "92 1 4-11 3,5 |[QDCOUNT] 0 [ANCOUNT] 0 [NSCOUNT] 1 [ARCOUNT] 0|\n"
     "92 1 12-25 3,5 |--- AUTHORITY SECTION 1 -----------------|\n"
     "92 1 14-15 3,5 |[QUESTION_TYPE] 0x000A (NULL Resource Record)|\n"
     "92 1 16-17 3,5 |[CLASS] 1 (Internet)|\n"
     "92 1 18-21 3,5 |[TTL] 60 sec|\n"
     "92 1 22-23 3,5 |[RDLENGTH] 2 sec|\n"
     "92 1 24-25 3,5 |[RESOURCE]|\n"
     "92 2 24-25 3,5 |0000  29 10 20  0  0  0  0  0                            ).|\n"},
    {"codes without a name, a name that is none, no data",
     "1A2F 9889 0000 0001 0000 0000 40 'EGEJEMEFFDEFFCFGEFFCCACACACACACA' 00 0005 0005 00000000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-55 3,5 |--- NetBIOS Name Service --------------------------------------------------|\n"
     "92 1 0-1 3,5 |[ID] 6703 (0x1A2F)|\n"
     "92 1 2-3 3,5 |[R] 1 (response)|\n"
     "92 1 2-3 3,5 |[OPCODE] 3 (Unknown)|\n"
     "92 1 2-3 3,5 |[AA] Authoritative Answer flag = 0|\n"
     "92 1 2-3 3,5 |[TC] Truncation Flag = 0|\n"
     "92 1 2-3 3,5 |[RD] Recursion Desired Flag = 0|\n"
     "92 1 2-3 3,5 |[RA] Recursion Available Flag = 0|\n"
     "92 1 2-3 3,5 |[B] 1 (Broadcast)|\n"
     "92 1 2-3 3,5 |[RCODE] 9 (Unknown)|\n"
     "92 1 4-11 3,5 |[QDCOUNT] 0 [ANCOUNT] 1 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "92 1 12-55 3,5 |--- ANSWER SECTION 1 --------------------|\n"
     "92 1 46-47 3,5 |[QUESTION_TYPE] 0x0005 (Unknown)|\n"
     "92 1 48-49 3,5 |[CLASS] 5 (Unknown)|\n"
     "92 1 50-53 3,5 |[TTL] 0 sec|\n"
     "92 1 54-55 3,5 |[RDLENGTH] 0 sec|\n"
     "92 1 56-55 3,5 |[RESOURCE]|\n"},
    {"Kept: every counted record has its section line", "1A30 0000 0000 0002 0001 0000 C00C 0020 0001",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-17 3,5 |--- NetBIOS Name Service --------------------------------------------------|\n"
     "92 1 0-1 3,5 |[ID] 6704 (0x1A30)|\n"
     "92 1 2-3 3,5 |[R] 0 (request)|\n"
     "92 1 2-3 3,5 |[OPCODE] 0 (query)|\n"
     "92 1 2-3 3,5 |[B] 0 (Unicast)|\n"
     "92 1 4-11 3,5 |[QDCOUNT] 0 [ANCOUNT] 2 [NSCOUNT] 1 [ARCOUNT] 0|\n"
     "92 1 12-21 3,5 |--- ANSWER SECTION 1 --------------------|\n"
     "92 1 14-15 3,5 |[QUESTION_TYPE] 0x0020 (NetBIOS general Name Service Resource Record)|\n"
     "92 1 16-17 3,5 |[CLASS] 1 (Internet)|\n"
     "92 1 22-31 3,5 |--- ANSWER SECTION 2 --------------------|\n"
     "92 1 32-41 3,5 |--- AUTHORITY SECTION 1 -----------------|\n"},
    {"question one byte too short", "1A31 0000 0001 0001 0000 0000 20 'EGEJEMEFFDEFFCFGEFFCCACACACACACA' 00 0020 00",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-48 3,5 |--- NetBIOS Name Service --------------------------------------------------|\n"
     "92 1 0-1 3,5 |[ID] 6705 (0x1A31)|\n"
     "92 1 2-3 3,5 |[R] 0 (request)|\n"
     "92 1 2-3 3,5 |[OPCODE] 0 (query)|\n"
     "92 1 2-3 3,5 |[B] 0 (Unicast)|\n"
     "92 1 4-11 3,5 |[QDCOUNT] 1 [ANCOUNT] 1 [NSCOUNT] 0 [ARCOUNT] 0|\n"},
    {"one byte too short", "1A31 0000 0001 0000 0000 0000 20 'EGEJ'",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-16 1,10 |---[Data] 17 (0x0011) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  1A 31 00 00 00 01 00 00 - 00 00 00 00 20 45 47 45  .1.......... EGE|\n"
     "63 1 0-16 1,10 |0010  4A 20  0  0  0  0  0  0                            J|\n"},
};
LINE_CASES(Nbns, NbnsAnalyze, kMessages)

// The name tables, through a header with a question.
TEST(Nbns, CodeNames) {
  struct Row {
    const char* flags;
    const char* codes;  // type and class
    const char* shown;
  };
  const Row rows[] = {
      {"2900", "00200001", "[OPCODE] 5 (registration)"},
      {"3000", "00200001", "[OPCODE] 6 (release)"},
      {"4000", "00200001", "[OPCODE] 8 (refresh)"},
      {"8001", "00200001", "[RCODE] 1 (Format Error)"},
      {"8002", "00200001", "[RCODE] 2 (Server failure)"},
      {"8003", "00200001", "[RCODE] 3 (Name Error)"},
      {"8004", "00200001", "[RCODE] 4 (Unsupported request error)"},
      {"8005", "00200001", "[RCODE] 5 (Refused error)"},
      {"8006", "00200001", "[RCODE] 6 (Active error)"},
      {"8008", "00200001", "[RCODE] 8 (Unknown)"},
      {"0000", "00010002", "[QUESTION_TYPE] 0x0001 (IP address Resource Record)"},
      {"0000", "00010002", "[CLASS] 2 (CSNET)"},
      {"0000", "00020003", "[QUESTION_TYPE] 0x0002 (Name Server Resource Record)"},
      {"0000", "00020003", "[CLASS] 3 (CHAOS)"},
      {"0000", "00200004", "[CLASS] 4 (Hesiod)"},
      {"0000", "002000FF", "[CLASS] 255 (any)"},
  };
  for (const Row& row : rows) {
    const auto message = bytes_of(std::string("0000") + row.flags + "0001000000000000 20 " +
                                  "'EGEJEMEFFDEFFCFGEFFCCACACACACACA' 00" + row.codes);
    const auto lines = decode_and_dump(NbnsAnalyze, Bytes(message.data(), static_cast<int32_t>(message.size())));
    EXPECT_NE(lines.find('|' + std::string(row.shown) + '|'), std::string::npos) << row.shown << " in\n" << lines;
  }
}

// A count of names does not lead past the capture; the statistics behind them are shown all the same.
TEST(Nbns, NodeNamesEndWithTheCapture) {
  const auto message = bytes_of("0000 8400 0000 0001 0000 0000 C00C 0021 0001 00000000 0000 FF 'FILESERV'");
  const auto lines = decode_and_dump(NbnsAnalyze, Bytes(message.data(), static_cast<int32_t>(message.size())));
  EXPECT_NE(lines.find("92 1 25-40 3,5 |[NODE_NAME -1-] FILESERV|"), std::string::npos) << lines;
  EXPECT_EQ(lines.find("[NODE_NAME -2-]"), std::string::npos) << lines;
  EXPECT_NE(lines.find("92 1 4615-4620 3,5 |[UNIT_ID] 00,00,00,00,00,00|"), std::string::npos) << lines;
}

// All counted records have their section lines, soon enough for a frame that only claims them.
TEST(Nbns, AsManyRecordsAsCanBeCounted) {
  auto message = bytes_of("0000 0000 0000 FFFF FFFF FFFF");
  message.resize(60, 0xC0);
  LineList list{};
  state().reset(WIRELINES_ASCII);
  NbnsAnalyze(list, Bytes(message.data(), static_cast<int32_t>(message.size())));
  ASSERT_GT(list.count, 3 * 65535);
  EXPECT_STREQ(static_cast<DisplayLine*>(list.data[list.count - 1])->text,
               "--- ADDITIONAL RECORDS SECTION 65535 --------");
  DelDspBuffer(&list);
}

}  // namespace

}  // namespace wirelines::test
