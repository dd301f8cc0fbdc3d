#include "core/format.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace wirelines::test {

namespace {

// Every string literal with a '%' in the library's source, adjacent literals joined.
std::set<std::string> formats_in_source() {
  std::set<std::string> formats;
  const std::regex literal(R"re("((?:[^"\\\n]|\\.)*)"(?:\s*"((?:[^"\\\n]|\\.)*)")?)re");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(SOURCE_DIR "/src")) {
    if (entry.path().extension() != ".cpp" && entry.path().extension() != ".hpp") continue;
    std::ifstream file(entry.path());
    std::string text;
    for (std::string line; std::getline(file, line);) {
      const auto first = line.find_first_not_of(' ');
      if (first == std::string::npos || line.compare(first, 2, "//") == 0 || line[first] == '#') continue;
      text += line + '\n';
    }
    for (std::sregex_iterator m(text.begin(), text.end(), literal), end; m != end; ++m) {
      const std::string format = (*m)[1].str() + (*m)[2].str();
      if (format.find('%') == std::string::npos || format.find('\\') != std::string::npos) continue;
      formats.insert(format);
    }
  }
  return formats;
}

// One conversion after another through snprintf; what is no conversion stands as it is.
class Reference {
 public:
  explicit Reference(uint32_t seed) : random_(seed) {}

  void format(const std::string& text) {
    static const std::regex conversion("%0?[0-9]*(?:[.][0-9]*)?(l?)([uXdsf])");
    auto from = text.begin();
    for (std::sregex_iterator m(text.begin(), text.end(), conversion), end; m != end; ++m) {
      expected.append(from, text.begin() + m->position());
      from = text.begin() + m->position() + m->length();
      add(m->str(), (*m)[1].length() != 0, *(*m)[2].first);
    }
    expected.append(from, text.end());
  }

  std::string expected;
  std::vector<Value> values;

 private:
  void add(const std::string& conversion, bool is_long, char kind) {
    static constexpr const char* kTexts[] = {"", "x", "a name", "a name of more than sixteen bytes, for the copy"};
    char out[512];
    // Numbers of every width, as fields are.
    const auto number = static_cast<uint32_t>(static_cast<uint64_t>(random_()) >> (random_() % 33));
    if (kind == 's') {
      const char* const text = kTexts[random_() % 4];
      std::snprintf(out, sizeof out, conversion.c_str(), text);
      values.emplace_back(text);
    } else if (kind == 'f') {
      const double real = static_cast<int32_t>(number) / 65536.0;
      std::snprintf(out, sizeof out, conversion.c_str(), real);
      values.emplace_back(real);
    } else if (is_long) {
      std::snprintf(out, sizeof out, conversion.c_str(), static_cast<unsigned long>(number));
      values.emplace_back(number);
    } else {
      std::snprintf(out, sizeof out, conversion.c_str(), number);
      values.emplace_back(number);
    }
    expected += out;
  }

  std::mt19937 random_;
};

std::string rendered(const FormatPieces& format, const std::vector<Value>& values) {
  char out[kMaxText + 1];
  const uint32_t length = render(out, format, values.data(), 1);
  EXPECT_EQ(length, std::strlen(out));
  return out;
}

void compare_with_snprintf(const std::string& format) {
  for (uint32_t seed = 0; seed < 200; ++seed) {
    Reference reference(seed);
    reference.format(format);
    const FormatPieces pieces{std::string_view(format)};
    ASSERT_EQ(pieces.count, reference.values.size()) << format;
    reference.values.emplace_back(0);
    ASSERT_EQ(rendered(pieces, reference.values), reference.expected.substr(0, kMaxText)) << format;
  }
}

TEST(Format, EveryFormatInTheSourceAsSnprintfPrintsIt) {
  const auto formats = formats_in_source();
  ASSERT_GT(formats.size(), 15U);
  for (const std::string& format : formats) compare_with_snprintf(format);
}

TEST(Format, ConversionsAsSnprintfPrintsThem) {
  for (const char* format : {"%u", "%0.4X", "%0.8X", "%X", "%d", "%2.2u", "%04X", "%0.3u", "%lu", "%f", "%s|%s", "a%ub",
                             "%u%u%u%u%u%u%u%u%u%u%u%u%u", "no conversion"}) {
    compare_with_snprintf(format);
  }
}

TEST(Format, MalformedConversionsPrintAsTheyStandAndTakeNoValue) {
  EXPECT_EQ(TextBuffer("[TS Value] %d (0x0.4X) ", 7).view(), "[TS Value] 7 (0x0.4X) ");
  EXPECT_EQ(TextBuffer("%0.2/%0.2u %u", 1, 2).view(), "%0.2/01 2");
  EXPECT_EQ(TextBuffer("100%").view(), "100%");
  EXPECT_EQ(TextBuffer("%").view(), "%");
  EXPECT_EQ(TextBuffer("%q %5u%u", 3).view(), "%q %5u3");
}

TEST(Format, ANumberFormatGivesOneValueToEachConversion) {
  const NumberFormat format("%u (0x%0.4X) %d");
  const Value value(0xFFFFFFFFU);
  char out[kMaxText + 1];
  render(out, format.pieces, &value, 0);
  EXPECT_STREQ(out, "4294967295 (0xFFFFFFFF) -1");
}

TEST(Format, TextsEndAtAZeroByteAndParenthesesNeedAText) {
  EXPECT_EQ(TextBuffer("%s|%s|", std::string_view("ab\0cd", 5), parens("x")).view(), "ab|(x)|");
  EXPECT_EQ(TextBuffer("%s|%s|", parens(""), parens(std::string_view("\0x", 2))).view(), "||");
  const uint8_t bytes[] = {'h', 'i', 0, 'x'};
  EXPECT_EQ(TextBuffer("%s", Bytes(bytes, 2)).view(), "hi");
  EXPECT_EQ(TextBuffer("%s", Bytes()).view(), "");
}

TEST(Format, LinesAreCutAt128BytesBetweenCharacters) {
  const std::string stops(126, '.');
  struct {
    std::string text;
    std::size_t kept;
  } const cases[] = {
      {stops + "ab", 128},
      {stops + "abc", 128},
      {stops + "\x82\xA0", 128},      // a character that just fits
      {stops + "a\x82\xA0", 127},     // one that would be divided
      {stops + "\x82\xA0\xA0", 128},  // a lead byte in front of the cut, but it has its trail byte
      {stops + "a\x82\x0A", 128},     // no trail byte: not a character
      {stops.substr(1) + "\x82\x82\x82\xA0", 127},
      {std::string(200, '\x82'), 128},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(TextBuffer("%s", c.text).view(), c.text.substr(0, c.kept)) << c.text.substr(120);
    // The cut also falls right between two pieces of a line.
    EXPECT_EQ(TextBuffer("%s%s", c.text.substr(0, 127), c.text.substr(127)).view(), c.text.substr(0, c.kept));
  }
}

}  // namespace

}  // namespace wirelines::test
