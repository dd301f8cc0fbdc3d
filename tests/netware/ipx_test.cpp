#include "netware/ipx.hpp"

#include <gtest/gtest.h>

#include "core/datalink.hpp"
#include "core/lines.hpp"
#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kPackets[] = {
    {"one byte short of a header", "FFFF 001E 01 04 00000010 FFFFFFFFFFFF 4003 00000020 0000C0112233 40",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-28 1,10 |---[Data] 29 (0x001D) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  FF FF 00 1E 01 04 00 00 - 00 10 FF FF FF FF FF FF  ................|\n"
     "63 1 0-28 1,10 |0010  40 03 00 00 00 20 00 00 - C0 11 22 33 40           @.... ....\"3@|\n"},
    {"Kept: the destination node has the network's label",
     "FFFF 001E 01 04 00000010 00001B1E2F3A 4003 00000020 0000C0112233 9001",
     "65535 65535 0-0 0,0 ||\n"
     "36 0 0-29 1,4 |--- IPX Header [00000020-0000C0112233] --> [00000010-00001B1E2F3A] --------|\n"
     "99 1 0-1 1,4 |[Header Checksum] 0xFFFF|\n"
     "99 1 2-3 1,4 |[Packet Length] 30 (0x001E) byte(s)|\n"
     "99 1 4-4 1,4 |[Transport Control ] 1 hop(s)|\n"
     "99 1 5-5 1,4 |[Packet Type] 4 (IPX)|\n"
     "99 1 6-9 1,4 |[Destination Network Address] 00000010|\n"
     "99 1 10-15 1,4 |[Destination Network Address] 00001B1E2F3A|\n"
     "99 1 16-17 1,4 |[Destination Socket] 16387 (0x4003) |\n"
     "99 1 18-21 1,4 |[Souce Network Address] 00000020|\n"
     "99 1 22-27 1,4 |[Souce Node Address] 0000C0112233|\n"
     "99 1 28-29 1,4 |[Souce Socket] 36865 (0x9001) (NLSP)|\n"},
};
LINE_CASES(Ipx, IpxAnalyze, kPackets)

// The line at topLineIndex.
std::string top_line(const Decode& decode, const std::string& hex) {
  const auto bytes = bytes_of(hex);
  LineList list{};
  state().reset(WIRELINES_ASCII);
  decode(list, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  std::string text = static_cast<DisplayLine*>(list.data[state().topLineIndex])->text;
  DelDspBuffer(&list);
  return text;
}

#define NODES "00000010 0000C0445566 "
#define FROM " 00000020 0000C0112233 "

TEST(Ipx, TheTypeComesBeforeTheSocket) {
  struct {
    const char* type;
    const char* to;
    const char* from;
    const char* title;
  } const cases[] = {
      {"05", "0455", "0452", "--- SPX/SPX2 Header"}, {"11", "0452", "0452", "--- NCP Packet"},
      {"01", "0452", "0455", "--- RIP Packet"},      {"04", "0452", "4003", "--- SAP Packet"},
      {"00", "4003", "0452", "--- SAP Packet"},      {"14", "0455", "0452", "--- SAP Packet"},
      {"14", "0455", "4003", "--- NetBIOS Find"},    {"04", "4003", "0455", "--- NetBIOS Find"},
      {"00", "0553", "4003", "--- NetBIOS Find"},    {"04", "4003", "0553", "--- NetBIOS Find"},
      {"03", "0451", "0453", "--- IPX Header"},
  };
  // A payload that every decoder takes for one of its own: NetBIOS looks at byte 33.
  const std::string payload = "2222" + std::string(31 * 2, '0') + "01" + std::string(32 * 2, '0');
  for (const auto& c : cases) {
    const auto packet = std::string("FFFF 0060 00 ") + c.type + NODES + c.to + FROM + c.from;
    EXPECT_EQ(top_line(IpxAnalyze, packet + payload).find(c.title), 0U) << c.type << ' ' << c.to << ' ' << c.from;
  }
}

TEST(Ipx, ThePacketsOwnLengthCounts) {
  const auto data_of = [](const char* length, const char* type) {
    const auto bytes = bytes_of(std::string("FFFF ") + length + "00" + type + NODES "0001" FROM "0001 2222010203");
    const auto lines = decode_and_dump(IpxAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    const auto begin = lines.find("[Data]");
    return begin == std::string::npos ? "" : lines.substr(begin, lines.find(" -", begin) - begin);
  };
  EXPECT_EQ(data_of("0020", "04"), "[Data] 2 (0x0002) byte(s)");
  EXPECT_EQ(data_of("FFFF", "04"), "[Data] 5 (0x0005) byte(s)");
  EXPECT_EQ(data_of("001E", "04"), "");
  EXPECT_EQ(data_of("001D", "04"), "");
  EXPECT_EQ(data_of("001D", "11"), "");
}

TEST(Ipx, EveryFramingLeadsHere) {
  const std::string packet = "FFFF 001E 00 00 " NODES "0001" FROM "0001";
  struct {
    const char* framing;
    const char* title;
  } const cases[] = {
      {"8137", "--- IPX Header"},
      {"001E", "--- IPX Header"},
      {"0021 E0E0 03", "--- IPX Header"},
      {"0026 AAAA 03 000000 8137", "--- IPX Header"},
      {"8138", "--- MAC"},
      {"0021 E0E0 02", "--- MAC"},
      {"0021 E0F0 03", "--- MAC"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(top_line(decode_frame, std::string("030405060708 0A0B0C0D0E0F") + c.framing + packet).find(c.title), 0U)
        << c.framing;
  }
}

TEST(Ipx, TheExportedCallGoesOnFromTheFrameOffset) {
  const auto packet = bytes_of("FFFF 001F 00 00 " NODES "0001" FROM "0001 AA");
  LineList list{};
  HexOutput(&list, nullptr, 0, WIRELINES_ASCII);
  ::IpxAnalyze(&list, packet.data(), static_cast<int32_t>(packet.size()));
  EXPECT_EQ(static_cast<DisplayLine*>(list.data[1])->startOffset, 0U);
  EXPECT_EQ(static_cast<DisplayLine*>(list.data[13])->startOffset, 30U);
  DelDspBuffer(&list);
}

}  // namespace

}  // namespace wirelines::test
