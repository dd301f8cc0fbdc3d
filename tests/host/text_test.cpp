#include "host/text.hpp"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "files.hpp"
#include "host/ip6_text.hpp"
#include "host/plain.hpp"
#include "written.hpp"

namespace wirelines::host {
namespace {

std::string utf8(const std::string& bytes) {
  return written([&bytes](Output& out) { Text().append(out, bytes); });
}

TEST(Text, shows) {
  const struct {
    const char *what, *bytes, *shown;
  } kCases[] = {
      {"nothing", "", ""},
      {"plain", "[Time] ~ {x} \\", "[Time] ~ {x} \\"},
      {"two-byte", "\x93\xFA\x96\x7B [x]", "日本 [x]"},
      {"two-byte with an ASCII trail", "\x83\x5C\x95\x5C", "ソ表"},
      {"half-width katakana", "\xB6\xC0\xB6\xC5\xDF", "ｶﾀｶﾅﾟ"},
      {"full-width blank and signs", "\x81\x40\x81\x60\x81\x7C", "　～－"},
      {"vendor rows", "\x87\x40\xFA\x40\xED\x40", "①ⅰ纊"},
      {"control bytes", "a\x01\x1B[2J\x07\r\n\t\x1F\x7F", "a␁␛[2J␇␍␊␉␟␡"},
      {"bytes that are no character", "\x80\xA0\xFD\xFE\xFF", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"C1 control", "\x9B", "\uFFFD"},
      {"lead byte at the end", "ab\x93", "ab\uFFFD"},
      {"lead byte before ASCII that is no trail", "\x93!z", "\uFFFD!z"},
      {"lead byte before a control byte", "\x81\x1B[m", "\uFFFD␛[m"},
      {"lead byte before DEL", "\x81\x7F", "\uFFFD␡"},
      {"pair that is no character", "\x85\x40z", "\uFFFD@z"},
      {"UTF-8 read as code page 932", "\xC3\xA9", "ﾃｩ"},
  };
  for (const auto& c : kCases) EXPECT_EQ(utf8(c.bytes), c.shown) << c.what;
}

// Every byte, alone and in every pair, at every place of an eight-byte word: no control character gets through.
TEST(Text, no_control_gets_through) {
  const auto harmless = [](const std::string& text) {
    for (std::size_t i = 0; i < text.size(); i++) {
      const auto byte = static_cast<unsigned char>(text[i]);
      const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0xFF);
      if (byte < 0x20 || byte == 0x7F || (byte == 0xC2 && next < 0xA0)) return false;
    }
    return true;
  };
  for (int first = 0; first < 256; first++) {
    const auto byte = static_cast<char>(first);
    for (std::size_t place = 0; place < 17; place++) {
      std::string line(17, ' ');
      line[place] = byte;
      EXPECT_EQ(is_plain(line), first >= 0x20 && first < 0x7F) << first << " at " << place;
    }
    std::string pairs;
    for (int second = 0; second < 256; second++) pairs += {byte, static_cast<char>(second)};
    EXPECT_TRUE(harmless(utf8(pairs))) << first;
  }
}

TEST(Output, numbers) {
  const auto text = written([](Output& out) {
    for (const std::uint64_t n : {0ULL, 9ULL, 10ULL, 4294967295ULL, 18446744073709551615ULL}) {
      out.number(n);
      out.append(' ');
    }
    for (const std::uint64_t n : {0ULL, 7ULL, 123456ULL, 1234567ULL}) {
      out.number(n, 6);
      out.append(' ');
    }
  });
  EXPECT_EQ(text, "0 9 10 4294967295 18446744073709551615 000000 000007 123456 1234567 ");
}

// Pieces that do and do not fit, around the end of the 64 KiB buffer, come out in one piece.
TEST(Output, beyond_its_buffer) {
  const Folder folder;
  const auto path = folder.file("out", "");
  std::string wanted;
  {
    FILE* file = std::fopen(path.c_str(), "w");
    ASSERT_NE(file, nullptr);
    Output out(fileno(file));
    const auto put = [&](const std::string& text) {
      out.append(text);
      wanted += text;
    };
    put(std::string(65530, 'a'));
    put("0123456789");
    put(std::string(200000, 'b'));
    while (wanted.size() % 65536 != 65535) put("c");
    out.append('d');
    out.append('e');
    out.number(12345);
    wanted += "de12345";
    out.flush();
    std::fclose(file);
  }
  std::ifstream in(path, std::ios::binary);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), wanted);
}

// Every choice of words that are zero, so every run that may be left out.
TEST(Ip6Text, as_inet_ntop) {
  for (unsigned words = 0; words < 256; words++) {
    std::array<std::uint8_t, 16> address{};
    for (unsigned i = 0; i < 8; i++) {
      if ((words >> i & 1) != 0) address[2 * i + i % 2] = static_cast<std::uint8_t>(0x0A + 0x10 * i);
    }
    std::array<char, INET6_ADDRSTRLEN> text{};
    EXPECT_EQ(Ip6Text(address.data()).view(), inet_ntop(AF_INET6, address.data(), text.data(), text.size()));
  }
}

TEST(Output, remembers_the_first_error) {
  FILE* full = std::fopen("/dev/full", "w");
  ASSERT_NE(full, nullptr);
  Output out(fileno(full));
  out.append(std::string(100000, 'x'));
  out.append("more");
  out.flush();
  EXPECT_EQ(out.error(), ENOSPC);
  std::fclose(full);
}

}  // namespace
}  // namespace wirelines::host
