#include "support/cases.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <ctime>

#include "core/datalink.hpp"
#include "core/lines.hpp"

namespace wirelines::test {

namespace {

// Times are shown in local time; the tests' is UTC.
const bool kUtc = [] {
  setenv("TZ", "UTC0", 1);
  tzset();
  return true;
}();

uint8_t digit(char c) {
  const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return static_cast<uint8_t>(lower <= '9' ? lower - '0' : lower - 'a' + 10);
}

}  // namespace

std::vector<Table>& tables() {
  static std::vector<Table> all;
  return all;
}

std::vector<uint8_t> bytes_of(std::string_view hex) {
  std::vector<uint8_t> bytes;
  int half = -1;
  for (std::size_t i = 0; i < hex.size(); ++i) {
    if (hex[i] == '\'') {
      for (++i; i < hex.size() && hex[i] != '\''; ++i) bytes.push_back(static_cast<uint8_t>(hex[i]));
    } else if (std::isxdigit(static_cast<unsigned char>(hex[i])) != 0) {
      if (half < 0) {
        half = digit(hex[i]);
      } else {
        bytes.push_back(static_cast<uint8_t>(half << 4 | digit(hex[i])));
        half = -1;
      }
    } else if (std::isspace(static_cast<unsigned char>(hex[i])) == 0) {
      ADD_FAILURE() << "not hex: " << hex.substr(i);
      break;
    }
  }
  EXPECT_EQ(half, -1) << "half a byte in " << hex;
  return bytes;
}

std::string dump(const LineList& list) {
  std::string out;
  for (int32_t i = 0; i < list.count; ++i) {
    const auto& line = *static_cast<const DisplayLine*>(list.data[i]);
    out += std::to_string(line.protocolCode) + ' ' + std::to_string(line.level) + ' ' +
           std::to_string(line.startOffset) + '-' + std::to_string(line.endOffset) + ' ' +
           std::to_string(line.styleIndex) + ',' + std::to_string(line.styleGroup) + " |";
    for (const char c : std::string_view(line.text)) {
      if (c >= 0x20 && c <= 0x7E && c != '\\') {
        out += c;
      } else {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(static_cast<uint8_t>(c)));
        out += escape;
      }
    }
    out += "|\n";
  }
  return out;
}

std::string decode_and_dump(const Decode& decode, Bytes data, uint32_t mode) {
  LineList list{};
  state().reset(mode);
  decode(list, data);
  std::string text = dump(list);
  DelDspBuffer(&list);
  return text;
}

void decode_frame(LineList& list, Bytes frame) {
  FrameAnalyze(list, frame, 1700000000, 123456, state().charSetMode);
}

void check_lines(const Table& table) {
  for (const Case& c : table.cases) {
    const auto bytes = bytes_of(c.bytes);
    const auto found = decode_and_dump(table.decode, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    EXPECT_EQ(found, c.lines) << table.suite << ": " << c.name << "\ngiven:  " << c.bytes;
  }
}

}  // namespace wirelines::test
