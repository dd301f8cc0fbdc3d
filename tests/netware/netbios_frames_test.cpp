#include "netware/netbios_frames.hpp"

#include <gtest/gtest.h>

#include "core/datalink.hpp"
#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kNameFrames[] = {
    {"one byte", "2C",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-0 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-0 1,10 |0000  2C 20  0  0  0  0  0  0                            ,|\n"},
    {"datagram", "2C00 FFEF 08 00 0000 0000 0000 'STATION2       ' 00 'STATION1       ' 00 'hello'",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-43 3,5 |--- NetBIOS [STATION1       ] --> [STATION2       ] -----------------------|\n"
     "92 1 0-1 3,5 |[Header Length] 44 (0x2C) byte(s)|\n"
     "92 1 2-3 3,5 |[Deliminater] 0xEFFF|\n"
     "92 1 4-4 3,5 |[Command] 0x08 (DATAGRAM)|\n"
     "92 1 5-5 3,5 |[Optional Data1] 0x00|\n"
     "92 1 6-7 3,5 |[Optional Data2] 0x0000|\n"
     "92 1 8-9 3,5 |[Transmit Correlator] 0x0000|\n"
     "92 1 10-11 3,5 |[Response Correlator] 0x0000|\n"
     "92 1 12-27 3,5 |[Receiver's Name] STATION2       |\n"
     "92 1 28-43 3,5 |[Sender's Name] STATION1       |\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 44-48 1,10 |---[Data] 5 (0x0005) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 44-48 1,10 |0000  68 65 6C 6C 6F 20  0  0                            hello|\n"},
    {"unknown command, and a name that ends at a zero byte",
     "2C00 FFEF 55 07 01FF 3412 7856 00000000000000000000000000000000 'SIXTEEN-LETTERS!'",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-43 3,5 |--- NetBIOS [SIXTEEN-LETTERS] --> [] --------------------------------------|\n"
     "92 1 0-1 3,5 |[Header Length] 44 (0x2C) byte(s)|\n"
     "92 1 2-3 3,5 |[Deliminater] 0xEFFF|\n"
     "92 1 4-4 3,5 |[Command] 0x55 ()|\n"
     "92 1 5-5 3,5 |[Optional Data1] 0x07|\n"
     "92 1 6-7 3,5 |[Optional Data2] 0xFF01|\n"
     "92 1 8-9 3,5 |[Transmit Correlator] 0x1234|\n"
     "92 1 10-11 3,5 |[Response Correlator] 0x5678|\n"
     "92 1 12-27 3,5 |[Receiver's Name] |\n"
     "92 1 28-43 3,5 |[Sender's Name] SIXTEEN-LETTERS|\n"},
    {"a header longer than the capture", "2D00 FFEF 0A 00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-5 1,10 |---[Data] 6 (0x0006) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-5 1,10 |0000  FF EF 0A 00 00 00 20  0                            ......|\n"},
};
LINE_CASES(NetBiosNameFrames, NetBiosNameFrameAnalyze, kNameFrames)

const Case kSessionFrames[] = {
    {"last data", "0E00 FFEF 16 0C 0100 0300 0400 05 06 'hello'",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-13 3,5 |--- NetBIOS [6] --> [5] [ACK] 1 [Data] 1 [NoACK] 0 ------------------------|\n"
     "92 1 0-1 3,5 |[Header Length] 14 (0x0E) byte(s)|\n"
     "92 1 2-3 3,5 |[Deliminater] 0xEFFF|\n"
     "92 1 4-4 3,5 |[Command] 0x16 (DATA_ONLY_LAST)|\n"
     "92 1 5-5 3,5 |[Flags] [ACK] 1 [Data] 1 [NoACK] 0|\n"
     "92 1 8-9 3,5 |[Transmit Correlator] 0x0003|\n"
     "92 1 10-11 3,5 |[Response Correlator] 0x0004|\n"
     "92 1 12-12 3,5 |[Remote Session No] 5 (0x05)|\n"
     "92 1 13-13 3,5 |[Local Session No] 6 (0x06)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 14-18 1,10 |---[Data] 5 (0x0005) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 14-18 1,10 |0000  68 65 6C 6C 6F 20  0  0                            hello|\n"},
};
LINE_CASES(NetBiosSessionFrames, NetBiosSessionFrameAnalyze, kSessionFrames)

const Case kIpxPackets[] = {
    {"one byte short of any", "50 06 0100 FFFF 0000 0000 0000 0000 0000 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-16 1,10 |---[Data] 17 (0x0011) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  50 06 01 00 FF FF 00 00 - 00 00 00 00 00 00 00 00  P...............|\n"
     "63 1 0-16 1,10 |0010  00 20  0  0  0  0  0  0                            .|\n"},
    {"directed datagram", "00 0B 'STATION1       ' 00 'STATION2       ' 20 'hi'",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-33 3,5 |--- NetBIOS Directed Datagram ---------------------------------------------|\n"
     "92 1 1-1 3,5 |[Data Stream Type] 11 (Directed Datagram)|\n"
     "92 1 2-17 3,5 |[Sender's Name] STATION1       |\n"
     "92 1 18-33 3,5 |[Receiver's Name] STATION2       |\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 34-35 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 34-35 1,10 |0000  68 69 20  0  0  0  0  0                            hi|\n"},
    {"a datagram behind other flags is none", "80 0B 0000 0000 0000 0000 0000 0000 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-17 1,10 |---[Data] 18 (0x0012) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  80 0B 00 00 00 00 00 00 - 00 00 00 00 00 00 00 00  ................|\n"
     "63 1 0-17 1,10 |0010  00 00 20  0  0  0  0  0                            ..|\n"},
    {"session data", "A8 06 0100 FFFF 0200 0300 0400 0500 0600 0080 'ok'",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-17 3,5 |--- NetBIOS Session Data [1] --> [65535] ----------------------------------|\n"
     "92 1 0-0 3,5 |[Connection control] 0xA8|\n"
     "92 2 0-0 3,5 |    [bit7] System packet = 1|\n"
     "92 2 0-0 3,5 |    [bit6] Acknowledgement required = 0|\n"
     "92 2 0-0 3,5 |    [bit5] Attention = 1|\n"
     "92 2 0-0 3,5 |    [bit4] End of message = 0|\n"
     "92 2 0-0 3,5 |    [bit3] Resend = 1|\n"
     "92 1 1-1 3,5 |[Data Stream Type] 6 (Session Data)|\n"
     "92 1 2-3 3,5 |[Source Connection ID] 1 (0x0001)|\n"
     "92 1 4-5 3,5 |[Destination Connection ID] 65535 (0xFFFF)|\n"
     "92 1 6-7 3,5 |[Sequence No.] 2 (0x0002)|\n"
     "92 1 8-9 3,5 |[Total Length] 3 (0x0003) byte(s)|\n"
     "92 1 10-11 3,5 |[Offset] 4 (0x0004)|\n"
     "92 1 12-13 3,5 |[Data length] 5 (0x0005) byte(s)|\n"
     "92 1 14-15 3,5 |[ACK Sequence No.] 6 (0x0006)|\n"
     "92 1 16-17 3,5 |[Bytes Received] 32768 (0x8000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 18-19 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 18-19 1,10 |0000  6F 6B 20  0  0  0  0  0                            ok|\n"},
    {"session end", "50 07 0100 0200 0300 0000 0000 0000 0300 0000",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-5 3,5 |--- NetBIOS Session End ---------------------------------------------------|\n"
     "92 1 0-0 3,5 |[Connection control] 0x50|\n"
     "92 2 0-0 3,5 |    [bit7] System packet = 0|\n"
     "92 2 0-0 3,5 |    [bit6] Acknowledgement required = 1|\n"
     "92 2 0-0 3,5 |    [bit5] Attention = 0|\n"
     "92 2 0-0 3,5 |    [bit4] End of message = 1|\n"
     "92 2 0-0 3,5 |    [bit3] Resend = 0|\n"
     "92 1 1-1 3,5 |[Data Stream Type] 7 (Session End)|\n"
     "92 1 2-3 3,5 |[Source Connection ID] 1 (0x0001)|\n"
     "92 1 4-5 3,5 |[Destination Connection ID] 2 (0x0002)|\n"},
    {"Kept: networks in reverse order, and bit 7 as a unique name",
     "00000010 00000000 0000A1B2 00000000 00000000 00000000 00000000 00000000 85 01 'STATION1       ' 00",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-49 3,5 |--- NetBIOS Find Name -----------------------------------------------------|\n"
     "92 1 0-3 3,5 |[Broadcast Network] 0x10000000|\n"
     "92 1 8-11 3,5 |[Broadcast Network] 0xB2A10000|\n"
     "92 1 32-32 3,5 |[Name type flag] 0x85|\n"
     "92 2 32-32 3,5 |    [bit7] 1 (Unique name)|\n"
     "92 2 32-32 3,5 |    [bit6] 0 (Name not used)|\n"
     "92 2 32-32 3,5 |    [bit2] 1 (Name registered)|\n"
     "92 2 32-32 3,5 |    [bit1] 0 (Name not duplicated)|\n"
     "92 2 32-32 3,5 |    [bit0] 1 (Name deregistered)|\n"
     "92 1 33-33 3,5 |[Data Stream Type] 1 (Find Name)|\n"
     "92 1 34-49 3,5 |[Claim name] STATION1       |\n"},
    {"names go as far as the data holds them whole",
     "00000010 00000000 00000000 00000000 00000000 00000000 00000000 00000000 42 02 'STATION1       ' 20 "
     "'STATION2       ' 20 'STATION3       '",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-49 3,5 |--- NetBIOS Name Recognized -----------------------------------------------|\n"
     "92 1 0-3 3,5 |[Route] 0x10000000|\n"
     "92 1 32-32 3,5 |[Name type flag] 0x42|\n"
     "92 2 32-32 3,5 |    [bit7] 0 (Group name)|\n"
     "92 2 32-32 3,5 |    [bit6] 1 (Name in use)|\n"
     "92 2 32-32 3,5 |    [bit2] 0 (Name not registered)|\n"
     "92 2 32-32 3,5 |    [bit1] 1 (Name duplicated)|\n"
     "92 2 32-32 3,5 |    [bit0] 0 (Name not deregistered)|\n"
     "92 1 33-33 3,5 |[Data Stream Type] 2 (Name Recognized)|\n"
     "92 1 34-49 3,5 |[Claim name] STATION1       |\n"
     "92 1 50-65 3,5 |[Claim name] STATION2       |\n"},
    {"deregister name, without the flag",
     "00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000 01 05 'STATION1       ' 20 "
     "00000000000000000000000000000000 'STATION2       ' 20",
     "65535 65535 0-0 0,0 ||\n"
     "29 0 0-49 3,5 |--- NetBIOS Deregister Name -----------------------------------------------|\n"
     "92 1 33-33 3,5 |[Data Stream Type] 5 (Deregister Name)|\n"
     "92 1 34-49 3,5 |[Claim name] STATION1       |\n"},
    {"a name packet one byte short",
     "00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000 40 03 'STATION1       '",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-48 1,10 |---[Data] 49 (0x0031) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  00 00 00 00 00 00 00 00 - 00 00 00 00 00 00 00 00  ................|\n"
     "63 1 0-31 1,10 |0010  00 00 00 00 00 00 00 00 - 00 00 00 00 00 00 00 00  ................|\n"
     "63 1 0-47 1,10 |0020  40 03 53 54 41 54 49 4F - 4E 31 20 20 20 20 20 20  @.STATION1      |\n"
     "63 1 0-48 1,10 |0030  20 20  0  0  0  0  0  0                             |\n"},
};
LINE_CASES(IpxNetBios, IpxNetBiosAnalyze, kIpxPackets)

TEST(NetBiosFrames, LlcLeadsHere) {
  const auto lines_of = [](const char* control) {
    const auto bytes = bytes_of(std::string("030000000001 0A0B0C0D0E0F 0030 F0F0") + control + "0200 FFEF 1F");
    return decode_and_dump(decode_frame, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  };
  EXPECT_NE(lines_of("03").find("29 0 17-18 3,5 |--- NetBIOS [] --> []"), std::string::npos);
  EXPECT_NE(lines_of("02 04").find("29 0 18-19 3,5 |--- NetBIOS [0] --> [0]"), std::string::npos);
  EXPECT_NE(lines_of("7F").find("0 0 17-21 1,10 |---[Data] 5"), std::string::npos);
}

TEST(IpxNetBios, TitlesOfTheOtherPackets) {
  for (const auto& [head, title] : {
           std::pair{"8008", "29 0 0-5 3,5 |--- NetBIOS Session End ACK -"},
           std::pair{"0003", "29 0 0-49 3,5 |--- NetBIOS Check Name -"},
       }) {
    auto bytes = bytes_of(head + std::string(48 * 2, '0'));
    bytes[33] = bytes[1];
    const auto lines = decode_and_dump(IpxNetBiosAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    EXPECT_NE(lines.find(title), std::string::npos) << lines;
  }
}

TEST(IpxNetBios, TenNamesAtMost) {
  const auto bytes = bytes_of(std::string(33 * 2, '0') + "01" + std::string(11 * 16 * 2, '4'));
  const auto lines = decode_and_dump(IpxNetBiosAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  EXPECT_NE(lines.find("92 1 178-193 3,5 |[Claim name] DDDDDDDDDDDDDDD|"), std::string::npos);
  EXPECT_EQ(lines.find("194-209"), std::string::npos);
}

}  // namespace

}  // namespace wirelines::test
