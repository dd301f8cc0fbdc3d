#include "core/datablock.hpp"

#include <gtest/gtest.h>

#include <string>

#include "core/charset.hpp"
#include "core/codepage932.hpp"
#include "support/cases.hpp"

namespace wirelines::test {

namespace {

void block(LineList& list, Bytes data) {
  remainder(list, data);
}

const Case kBlocks[] = {
    {"nothing", "", ""},
    {"a whole line", "00 01 20 41 7E 7F 80 FF 30 31 32 33 34 35 36 37",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-15 1,10 |---[Data] 16 (0x0010) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-15 1,10 |0000  00 01 20 41 7E 7F 80 FF - 30 31 32 33 34 35 36 37  .. A~...01234567|\n"},
};
LINE_CASES(DataBlock, block, kBlocks)

void dump_at_100(LineList& list, Bytes data) {
  hex_dump(list, data, {92, 2, 100, 100 + 23, 3, 5});
}

const Case kDumps[] = {
    {"a line and a half: the separator stays", "000102030405060708090A0B0C0D0E0F 1011121314151617",
     "92 2 100-115 3,5 |0000  00 01 02 03 04 05 06 07 - 08 09 0A 0B 0C 0D 0E 0F  ................|\n"
     "92 2 116-123 3,5 |0010  10 11 12 13 14 15 16 17 -                          ........|\n"},
    {"Kept: 7 bytes lose the separator", "41424344454647",
     "92 2 100-106 3,5 |0000  41 42 43 44 45 46 47 20                            ABCDEFG|\n"},
    {"Kept: 1 byte leaves parts of the fill", "41",
     "92 2 100-100 3,5 |0000  41 20  0  0  0  0  0  0                            A|\n"},
    {"15 bytes", "414141414141414141414141414141",
     "92 2 100-114 3,5 |0000  41 41 41 41 41 41 41 41 - 41 41 41 41 41 41 41     AAAAAAAAAAAAAAA|\n"},
};
LINE_CASES(HexLines, dump_at_100, kDumps)

// Reference for short lines: print all sixteen pairs, then blank pairs from the right in steps of three columns.
TEST(HexLines, EveryShortLine) {
  const uint8_t bytes[16] = {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'};
  for (uint32_t n = 1; n <= 16; ++n) {
    char pairs[16][4];
    for (uint32_t i = 0; i < 16; ++i)
      std::snprintf(pairs[i], 4, "%02X", i < n ? static_cast<unsigned>(bytes[i]) : 0x20U);
    std::string line = "0000  ";
    for (uint32_t i = 0; i < 16; ++i) line += std::string(pairs[i]) + (i == 7 ? " - " : i == 15 ? "  " : " ");
    ASSERT_EQ(line.size(), 57U);
    for (uint32_t i = 0; n < 16 && i <= 15 - n; ++i) line[53 - 3 * i] = line[54 - 3 * i] = ' ';
    line.append(reinterpret_cast<const char*>(bytes), n);
    LineList list{};
    hex_dump(list, Bytes(bytes, static_cast<int32_t>(n)), {});
    ASSERT_EQ(list.count, 1);
    EXPECT_EQ(static_cast<DisplayLine*>(list.data[0])->text, line) << n;
    DelDspBuffer(&list);
  }
}

TEST(HexLines, KeptRangesThatBeginOrEndAtZero) {
  const uint8_t bytes[20] = {};
  struct {
    uint32_t start, end;
    uint32_t second_start, second_end;
  } const cases[] = {{0, 0, 0, 0}, {0, 19, 0, 19}, {5, 0, 21, 0}, {5, 24, 21, 24}};
  for (const auto& c : cases) {
    LineList list{};
    HexDump(&list, bytes, 20, 1, 2, c.start, c.end, 3, 4);
    ASSERT_EQ(list.count, 2);
    const auto& line = *static_cast<DisplayLine*>(list.data[1]);
    EXPECT_EQ(line.startOffset, c.second_start) << c.start;
    EXPECT_EQ(line.endOffset, c.second_end) << c.start;
    DelDspBuffer(&list);
  }
}

TEST(HexLines, OffsetsOfFiveDigitsMoveTheColumns) {
  const std::vector<uint8_t> bytes(0x10003, 'A');
  LineList list{};
  HexOutput(&list, bytes.data(), static_cast<int32_t>(bytes.size()), WIRELINES_ASCII);
  ASSERT_EQ(list.count, 0x1001);
  EXPECT_STREQ(static_cast<DisplayLine*>(list.data[0xFFF])->text,
               "FFF0  41 41 41 41 41 41 41 41 - 41 41 41 41 41 41 41 41  AAAAAAAAAAAAAAAA");
  EXPECT_STREQ(static_cast<DisplayLine*>(list.data[0x1000])->text,
               "10000  41 41 41 20  0  0  0  0                            AAA");
  DelDspBuffer(&list);
}

TEST(DataBlock, HeadingNamesTheCharacterSet) {
  const std::string hyphens(75, '-');
  for (const auto& [mode, label] : {std::pair{1U, " SJIS "},
                                    {2U, " JIS "},
                                    {3U, " Unicode "},
                                    {4U, " EUC "},
                                    {5U, " EBCDIC "},
                                    {6U, ""},
                                    {0xFFFFFFFFU, ""}}) {
    std::string heading = hyphens;
    heading.replace(3, 26, "[Data] 1 (0x0001) byte(s) ");
    heading.replace(62, std::strlen(label), label);
    const auto lines = decode_and_dump(block, Bytes(reinterpret_cast<const uint8_t*>("A"), 1), mode);
    EXPECT_NE(lines.find("|" + heading + "|\n"), std::string::npos) << lines;
  }
}

TEST(CharacterSets, TextColumn) {
  struct {
    const char* name;
    uint32_t mode;
    const char* bytes;
    const char* text;
  } const cases[] = {
      {"ASCII", 0, "00 1F 20 7E 7F 80 A0 FF", "2E 2E 20 7E 2E 2E 2E 2E"},
      {"half-width katakana stay", 1, "A0 A1 DF 80 FD", "2E A1 DF 2E 2E"},
      {"a character stays, its lead byte alone does not", 1, "82A0 82 0A 82 20 FC FC 82", "82A0 2E2E 2E20 FC FC 2E"},
      {"a lead byte before katakana is a character", 1, "82 B1 41", "82 B1 41"},
      {"a bad trail byte that shows by itself stays", 1, "82 31 E0 7F 41", "2E 31 2E 2E 41"},
      {"JIS pairs", 2, "2422 2522 7E7E 41", "82A0 8341 EFFC 41"},
      {"no JIS pair", 2, "2420 2022 217F 2180", "2E2E 2E2E 2E2E 2E2E"},
      {"an odd last byte is left to the last pass", 2, "2422 82", "82A0 2E"},
      {"UTF-16", 3, "4100 4230 FEFF", "412E 82A0 3F2E"},
      {"UTF-16: surrogate halves and zero", 3, "3DD8 00DC 0000", "3F2E 3F2E 2E2E"},
      {"UTF-16: half-width katakana, and an odd last byte", 3, "71FF 82", "B12E 2E"},
      {"EUC", 4, "A4A2 41A4 A441 FEFE", "82A0 41 A4 A4 41 EFFC"},
      {"EUC: no such row", 4, "A1FF A2", "2E2E A2"},
      {"EBCDIC", 5, "40 C1 C9 81 A1 A2 F0 6A 7F 50 5F 00", "20 41 49 61 7E 73 30 5E 22 2E 2E 2E"},
      {"any other mode", 6, "00 FF 41 82", "00 FF 41 82"},
  };
  for (const auto& c : cases) {
    auto bytes = bytes_of(c.bytes);
    render_charset(bytes.data(), static_cast<uint32_t>(bytes.size()), c.mode);
    EXPECT_EQ(bytes, bytes_of(c.text)) << c.name;
  }
}

TEST(CharacterSets, RawBytesEndTheLineAtAZero) {
  const uint8_t bytes[] = {'A', 'B', 0, 'C'};
  const auto lines = decode_and_dump([](LineList& list, Bytes data) { hex_dump(list, data, {}); }, Bytes(bytes, 4), 6);
  EXPECT_EQ(lines, "0 0 0-0 0,0 |0000  41 42 00 43 20  0  0  0                            AB|\n");
}

TEST(CodePage932, JisCodesMakeDistinctCharacters) {
  std::vector<bool> seen(65536);
  for (uint32_t high = 0x21; high <= 0x7E; ++high) {
    for (uint32_t low = 0x21; low <= 0x7E; ++low) {
      const uint16_t code = jis_to_sjis(static_cast<uint16_t>(high << 8 | low));
      EXPECT_TRUE(is_lead_byte(static_cast<char>(code >> 8)) && is_trail_byte(static_cast<char>(code))) << code;
      EXPECT_FALSE(seen[code]) << code;
      seen[code] = true;
    }
  }
  EXPECT_EQ(jis_to_sjis(0x3021), 0x889F);
  EXPECT_EQ(jis_to_sjis(0x5F21), 0xE040);
}

TEST(CodePage932, UnitsOfUtf16) {
  EXPECT_EQ(utf16_to_codepage932('A'), 'A');
  EXPECT_EQ(utf16_to_codepage932(0x3042), 0x82A0);
  EXPECT_EQ(utf16_to_codepage932(0xFF71), 0xB1);
  EXPECT_EQ(utf16_to_codepage932(0x4E9C), 0x889F);
  for (const uint32_t unit : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0x0E01U, 0xFFFFU}) {
    EXPECT_EQ(utf16_to_codepage932(static_cast<uint16_t>(unit)), '?') << unit;
  }
}

}  // namespace

}  // namespace wirelines::test
