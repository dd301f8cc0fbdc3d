#include "netware/ncp.hpp"

#include <gtest/gtest.h>

#include "netware/ncp_names.hpp"
#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"one byte", "22",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-0 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-0 1,10 |0000  22 20  0  0  0  0  0  0                            \"|\n"},
    {"create a service connection", "1111 00 FF 01 00 AABB",
     "65535 65535 0-0 0,0 ||\n"
     "38 0 0-1 3,4 |--- NCP Packet ------------------------------------------------------------|\n"
     "101 1 0-1 3,4 |[Request Type] 0x1111 (Create a service connection)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 2-7 1,10 |---[Data] 6 (0x0006) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 2-7 1,10 |0000  00 FF 01 00 AA BB 20  0                            ......|\n"},
    {"a subfunction behind a length", "2222 01 03 02 01 17 0010 00 AABB",
     "65535 65535 0-0 0,0 ||\n"
     "38 0 0-9 3,4 |--- NCP Packet ------------------------------------------------------------|\n"
     "101 1 0-1 3,4 |[Request Type] 0x2222 (Service request)|\n"
     "101 1 2-2 3,4 |[Sequence No] 1 (0x01)|\n"
     "101 1 3-3 3,4 |[Connection No] 3|\n"
     "101 1 4-4 3,4 |[Task No] 2|\n"
     "101 1 5-9 3,4 |[Function] 23 [Subfunction] 0 (Login User)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 10-11 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 10-11 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"},
    {"destroy the service connection", "5555 04 03 02 00 00",
     "65535 65535 0-0 0,0 ||\n"
     "38 0 0-5 3,4 |--- NCP Packet ------------------------------------------------------------|\n"
     "101 1 0-1 3,4 |[Request Type] 0x5555 (Destroy service connection)|\n"
     "101 1 2-2 3,4 |[Sequence No] 4 (0x04)|\n"
     "101 1 3-3 3,4 |[Connection No] 3|\n"
     "101 1 4-4 3,4 |[Task No] 2|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 6-6 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 6-6 1,10 |0000  00 20  0  0  0  0  0  0                            .|\n"},
    {"reply", "3333 01 03 02 00 89 10 'abc'",
     "65535 65535 0-0 0,0 ||\n"
     "38 0 0-7 3,4 |--- NCP Packet ------------------------------------------------------------|\n"
     "101 1 0-1 3,4 |[Reply Type] 0x3333 (Service reply)|\n"
     "101 1 2-2 3,4 |[Sequence No] 1 (0x01)|\n"
     "101 1 3-3 3,4 |[Connection No] 3|\n"
     "101 1 4-4 3,4 |[Task No] 2|\n"
     "101 1 6-6 3,4 |[Completion Code] 137|\n"
     "101 1 7-7 3,4 |[Connection Status] 16|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 8-10 1,10 |---[Data] 3 (0x0003) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 8-10 1,10 |0000  61 62 63 20  0  0  0  0                            abc|\n"},
    {"Kept: being processed is a data block", "9999 01 03 02 00 00 00",
     "65535 65535 0-0 0,0 ||\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-7 1,10 |---[Data] 8 (0x0008) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-7 1,10 |0000  99 99 01 03 02 00 00 00 -                          ........|\n"},
    {"Kept: a burst, its fields one byte early behind the sequence number",
     "7777 10 02 00000102 00000304 05 00000064 0007 0008 00000600 00000200 0400 0001 'burst'",
     "65535 65535 0-0 0,0 ||\n"
     "38 0 0-32 3,4 |--- NCP Packet ------------------------------------------------------------|\n"
     "101 1 0-1 3,4 |[Request Type] 0x7777 (Burst Mode)|\n"
     "101 1 2-2 3,4 |[Flags] 0x10|\n"
     "101 1 3-3 3,4 |[Stream Type] 0x02 (Big send burst)|\n"
     "101 1 4-7 3,4 |[Souce Connection ID] 258 (0x00000102)|\n"
     "101 1 8-11 3,4 |[Destination Connection ID]772 (0x00000304)|\n"
     "101 1 12-12 3,4 |[Sequence No] 5|\n"
     "101 1 13-16 3,4 |[Send Delay Type] 100 msec|\n"
     "101 1 17-18 3,4 |[Burst Sequesnce No] 7 (0x0007)|\n"
     "101 1 19-20 3,4 |[ACK Sequence No] 8 (0x0008)|\n"
     "101 1 21-24 3,4 |[Total Burst length] 1536 (0x00000600) byte(s)|\n"
     "101 1 25-28 3,4 |[Burst Offset] u (0x00000200) byte(s)|\n"
     "101 1 29-30 3,4 |[Burst Length] 1024 (0x0400) byte(s)|\n"
     "101 1 31-32 3,4 |[Fragment List Entries] 1 (0x0001)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 33-37 1,10 |---[Data] 5 (0x0005) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 33-37 1,10 |0000  62 75 72 73 74 20  0  0                            burst|\n"},
    {"a burst one byte short", "7777 10 02 00000102 00000304 05 00000064 0007 0008 00000600 00000200 0400 00",
     "65535 65535 0-0 0,0 ||\n"
     "38 0 0-32 3,4 |--- NCP Packet ------------------------------------------------------------|\n"},
};
LINE_CASES(Ncp, NcpAnalyze, kPackets)

TEST(Ncp, FunctionLines) {
  for (const auto& [request, line] : {
           std::pair{"57 01 0004", "101 1 5-8 3,4 |[Function] 87 [Subfunction] 1 (Open/Create File or Subdirectory)|"},
           std::pair{"16 0004 34", "101 1 5-9 3,4 |[Function] 22 [Subfunction] 52 (Get Mount Volume List)|"},
           std::pair{"68 09 0000", "101 1 5-8 3,4 |[Function] 104 [Subfunction] 9 |"},
           std::pair{"C8 01 0000", "101 1 6-6 3,4 |[Function Code] 200 |"},
           // Kept: a base name hides the names of the subfunctions.
           std::pair{"15 0A 0000", "101 1 6-6 3,4 |[Function Code] 21 (Send Broadcast Message)|"},
       }) {
    const auto bytes = bytes_of(std::string("2222 01 03 02 00") + request);
    const auto lines = decode_and_dump(NcpAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    EXPECT_NE(lines.find(line), std::string::npos) << lines;
  }
}

TEST(NcpNames, TheWholeTable) {
  // Rows of the functions whose requests carry a subfunction; function 123 has two rows for subfunction 22.
  const std::pair<uint32_t, int> rows[] = {{22, 50}, {23, 141}, {34, 11}, {35, 19},  {86, 5},  {87, 42}, {88, 26},
                                           {90, 13}, {104, 29}, {114, 5}, {123, 50}, {128, 1}, {131, 7}};
  int named = 0;
  int with_subfunctions = 0;
  for (uint32_t f = 0; f < 256; ++f) {
    const auto function = static_cast<uint8_t>(f);
    int count = 0;
    for (uint32_t sub = 0; sub < 256; ++sub) count += !NcpFunctionToName(function, static_cast<uint8_t>(sub)).empty();
    named += count != 0;
    with_subfunctions += ncp_has_subfunctions(function);
    const auto* const row = std::find_if(std::begin(rows), std::end(rows), [f](auto& r) { return r.first == f; });
    EXPECT_EQ(ncp_has_subfunctions(function), row != std::end(rows)) << f;
    EXPECT_EQ(count, row != std::end(rows) ? row->second : count == 0 ? 0 : 256) << f;
  }
  EXPECT_EQ(named, 75);
  EXPECT_EQ(with_subfunctions, 13);
}

TEST(NcpNames, TheFirstRowThatFits) {
  EXPECT_EQ(NcpFunctionToName(1, 0), "File Set Lock");
  EXPECT_EQ(NcpFunctionToName(17, 1), "Write to Spool File");
  EXPECT_EQ(NcpFunctionToName(23, 254), "Clear Connection Number");
  EXPECT_EQ(NcpFunctionToName(104, 206), "");
  EXPECT_EQ(NcpFunctionToName(128, 206), "Disable Container Auditing");
  EXPECT_EQ(NcpFunctionToName(104, 231), "External Audit Append To File");
  EXPECT_EQ(NcpFunctionToName(123, 22), "LAN Common Counters Information");
  EXPECT_EQ(NcpFunctionToName(131, 7), "RPC Execute NCF File");
  EXPECT_EQ(NcpFunctionToName(255, 255), "");
}

}  // namespace

}  // namespace wirelines::test
