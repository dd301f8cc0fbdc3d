#include "netware/sap.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"a query is a data block", "0003 0004",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-3 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-3 1,10 |0000  00 03 00 04 20  0  0  0                            ....|\n"},
    {"Kept: an answer is called a request; one server has no heading",
     "0002 0004 'FILESERVER1' 0000000000000000 0000000000000000 0000000000000000 0000000000000000 "
     "0000000000 00000010 000000000001 0451 0001",
     "65535 65535 0-0 0,0 ||\n"
     "43 0 0-65 9,4 |--- SAP Packet [Informations] 1 -------------------------------------------|\n"
     "106 1 0-1 9,4 |[Packet Type] 0x0002 (General Service Request)|\n"
     "106 1 2-3 9,4 |[Server Type] 0x0004 (File Server)|\n"
     "106 1 4-51 9,4 |[Server Name] FILESERVER1|\n"
     "106 1 52-55 9,4 |[Network] 00000010|\n"
     "106 1 56-61 9,4 |[Node Address] 000000000001|\n"
     "106 1 62-63 9,4 |[Socket] 0x0451|\n"
     "106 1 64-65 9,4 |[Intermediate Network] 1|\n"},
    {"two servers, and bytes past them",
     "0004 0111 'TEST' 0000000000000000 0000000000000000 0000000000000000 0000000000000000 "
     "0000000000000000 00000000 00000010 000000000001 4005 0002 1234 "
     "'A NAME OF FORTY-EIGHT BYTES, NONE OF WHICH IS 0.' 0000A1B2 0000C0112233 8060 0010 AABB",
     "65535 65535 0-0 0,0 ||\n"
     "43 0 0-129 9,4 |--- SAP Packet [Informations] 2 -------------------------------------------|\n"
     "106 1 0-1 9,4 |[Packet Type] 0x0004 (Nearest Service Reply)|\n"
     "106 1 2-65 9,4 |--- SAP Information 1 -------------------|\n"
     "106 1 2-3 9,4 |[Server Type] 0x0111 (Test Server )|\n"
     "106 1 4-51 9,4 |[Server Name] TEST|\n"
     "106 1 52-55 9,4 |[Network] 00000010|\n"
     "106 1 56-61 9,4 |[Node Address] 000000000001|\n"
     "106 1 62-63 9,4 |[Socket] 0x4005|\n"
     "106 1 64-65 9,4 |[Intermediate Network] 2|\n"
     "106 1 66-129 9,4 |--- SAP Information 2 -------------------|\n"
     "106 1 66-67 9,4 |[Server Type] 0x1234 |\n"
     "106 1 68-115 9,4 |[Server Name] A NAME OF FORTY-EIGHT BYTES, NONE OF WHICH IS 0.|\n"
     "106 1 116-119 9,4 |[Network] 0000A1B2|\n"
     "106 1 120-125 9,4 |[Node Address] 0000C0112233|\n"
     "106 1 126-127 9,4 |[Socket] 0x8060|\n"
     "106 1 128-129 9,4 |[Intermediate Network] 16|\n"},
};
LINE_CASES(Sap, SapAnalyze, kPackets)

TEST(Sap, Operations) {
  for (const auto& [operation, line] : {
           std::pair{"0001", "[Packet Type] 0x0001 (General Service Reply)|"},
           std::pair{"0003", "[Packet Type] 0x0003 (Nearest Service Request)|"},
           std::pair{"0005", "[Packet Type] 0x0005 (Unknown)|"},
       }) {
    const auto bytes = bytes_of(operation + std::string(64 * 2, '0'));
    const auto lines = decode_and_dump(SapAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    EXPECT_NE(lines.find(line), std::string::npos) << lines;
  }
}

}  // namespace

}  // namespace wirelines::test
