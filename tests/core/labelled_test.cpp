#include "core/labelled.hpp"

#include <gtest/gtest.h>

#include <string>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

constexpr LineAttributes kAttributes = {118, 1, 50, 50, 3, 2};
constexpr std::string_view kLabel = "[8 bytes]";  // 9 bytes: 66 a line

struct Shown {
  std::string lines;  // start-end and text of each line
  int32_t returned;
};

Shown title_string(std::string_view text, int32_t max_bytes, std::string_view label = kLabel) {
  LineList list{};
  state().reset(0);
  const Bytes bytes(reinterpret_cast<const uint8_t*>(text.data()), static_cast<int32_t>(text.size()));
  Shown shown{"", DspTitleString(list, label, bytes, max_bytes, kAttributes)};
  for (int32_t i = 0; i < list.count; ++i) {
    const auto& line = *static_cast<DisplayLine*>(list.data[i]);
    EXPECT_EQ(line.protocolCode, 118U);
    shown.lines += std::to_string(line.startOffset) + '-' + std::to_string(line.endOffset) + '|' + line.text + '\n';
  }
  DelDspBuffer(&list);
  return shown;
}

const std::string kBlanks(9, ' ');
const std::string kLine(66, 'x');

TEST(TitleString, LinesRangesAndCount) {
  const std::string label(kLabel);
  const auto zero = [](const std::string& text) { return text + '\0'; };
  struct {
    const char* name;
    std::string text;
    int32_t max_bytes;
    std::string lines;
    int32_t returned;
  } const cases[] = {
      {"no room", "abc", 0, "", 0},
      {"negative room", "abc", -5, "", 0},
      {"the terminator belongs to the range, not to the count", zero("abc"), 10, "50-53|" + label + "abc\n", 3},
      {"empty", zero(""), 10, "50-50|" + label + "\n", 0},
      {"cut by the room", "abcdef", 4, "50-53|" + label + "abcd\n", 4},
      {"a missing byte is a terminator", "abc", 10, "50-53|" + label + "abc\n", 3},
      {"one byte less than a line", zero(kLine.substr(1)), 100, "50-115|" + label + kLine.substr(1) + "\n", 65},
      {"a whole line: blanks for the terminator", zero(kLine), 100,
       "50-115|" + label + kLine + "\n116-116|" + kBlanks + "\n", 66},
      {"a whole line and no room for more", zero(kLine), 66, "50-115|" + label + kLine + "\n", 66},
      {"three lines", zero(kLine + kLine + "0123456789abcdefgh"), 200,
       "50-115|" + label + kLine + "\n116-181|" + kBlanks + kLine + "\n182-200|" + kBlanks + "0123456789abcdefgh\n",
       150},
  };
  for (const auto& c : cases) {
    const Shown shown = title_string(c.text, c.max_bytes);
    EXPECT_EQ(shown.lines, c.lines) << c.name;
    EXPECT_EQ(shown.returned, c.returned) << c.name;
  }
}

TEST(TitleString, CapacityIsEvenAndLabelsOfAnyLengthEnd) {
  EXPECT_EQ(title_string(std::string(100, 'y'), 68, "[7bytes]").lines, "50-117|[7bytes]" + std::string(68, 'y') + '\n');
  EXPECT_EQ(title_string(std::string(9, 'y'), 9, std::string(74, 'L')).returned, 9);
  EXPECT_EQ(title_string(std::string(9, 'y'), 9, std::string(90, 'L')).returned, 0);
}

TEST(TitleString, ReadsNothingBehindTheTerminator) {
  char text[4] = {'a', 'b', 'c', 0};  // the host says more than there is, as it may for a terminated text
  LineList list{};
  EXPECT_EQ(::DspTitleString(&list, "[Label] ", text, 4000, 1, 1, 0, 0, 0), 3);
  EXPECT_STREQ(static_cast<DisplayLine*>(list.data[0])->text, "[Label] abc");
  DelDspBuffer(&list);
}

void labelled(LineList& list, Bytes text) {
  DspLabelledText(list, "[Host Name] ", text, {94, 1, 50, 50, 6, 5});
}

const Case kTexts[] = {
    {"empty", "", ""},
    {"bytes as they stand", "41 07 FF", "94 1 50-52 6,5 |[Host Name] A\\x07\\xFF|\n"},
    {"Kept: the text ends at a zero byte, the range does not", "41 00 42 43 44", "94 1 50-54 6,5 |[Host Name] A|\n"},
    {"exactly one line", "'1234567890123456789012345678901234567890123456789012345678901234'",
     "94 1 50-113 6,5 |[Host Name] 1234567890123456789012345678901234567890123456789012345678901234|\n"},
    {"two lines", "'1234567890123456789012345678901234567890123456789012345678901234''x'",
     "94 1 50-113 6,5 |[Host Name] 1234567890123456789012345678901234567890123456789012345678901234|\n"
     "94 1 114-114 6,5 |            x|\n"},
};
LINE_CASES(LabelledText, labelled, kTexts)

}  // namespace

}  // namespace wirelines::test
