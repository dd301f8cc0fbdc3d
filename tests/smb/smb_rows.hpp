// Rows of SMB messages: each is a header, made by the macros, and a command block; its lines are those of the block.
#pragma once

#include <gtest/gtest.h>

#include "smb/smb.hpp"
#include "support/cases.hpp"

#define SMB_HEADER(command, flags, flags2) \
  "FF'SMB' " command " 00000000 " flags " " flags2 " 000000000000000000000000 0100 0200 0300 0400 "
#define REQUEST(command) SMB_HEADER(command, "18", "0100")
#define RESPONSE(command) SMB_HEADER(command, "98", "0100")
#define UTF16_REQUEST(command) SMB_HEADER(command, "18", "0180")
#define UTF16_RESPONSE(command) SMB_HEADER(command, "98", "0180")

namespace wirelines::test {

// The lines behind those of the header, which end with the identifiers.
inline std::string without_header(const std::string& lines) {
  const auto last = lines.find("|[TID]");
  return last == std::string::npos ? lines : lines.substr(lines.find('\n', last) + 1);
}

inline std::string without_bits(const std::string& lines) {
  std::string rest;
  for (std::size_t i = 0; i < lines.size();) {
    const auto next = lines.find('\n', i) + 1;
    const auto line = lines.substr(i, next - i);
    if (line.find("|    [bit") == std::string::npos) rest += line;
    i = next;
  }
  return rest;
}

// A row that shows no bit line leaves them all out; each flag field has a row that shows its own.
inline void check_command_lines(const Decode& decode, std::span<const Case> cases) {
  for (const Case& c : cases) {
    const auto bytes = bytes_of(c.bytes);
    auto found = without_header(decode_and_dump(decode, Bytes(bytes.data(), static_cast<int32_t>(bytes.size()))));
    if (std::string_view(c.lines).find("|    [bit") == std::string_view::npos) found = without_bits(found);
    EXPECT_EQ(found, c.lines) << c.name << "\ngiven:  " << c.bytes;
  }
}

}  // namespace wirelines::test

// COMMAND_CASES(Suite, decode, cases): a test Suite.Lines over the table, known to the drivers too.
#define COMMAND_CASES(suite, decode, cases)                                               \
  static const ::wirelines::test::Register suite##_registered({#suite, (decode), cases}); \
  TEST(suite, Lines) {                                                                    \
    ::wirelines::test::check_command_lines((decode), cases);                              \
  }
