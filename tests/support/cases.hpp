// Tables of decodes: a frame in hex and all its lines in one dump form. Every table is also picked up by the drivers,
// which cut each frame at each length, fail each allocation in turn, and decode it twice.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/bytes.hpp"
#include "wirelines.h"

namespace wirelines::test {

struct Case {
  const char* name;
  const char* bytes;  // hex digits, grouped as you like; 'text' in single quotes stands for its bytes
  const char* lines;  // one line each: "CODE LEVEL START-END STYLEINDEX,STYLEGROUP |TEXT|\n"
};

// What a table decodes with. The state of the decode has been reset, so that ranges count from 0.
using Decode = std::function<void(LineList&, Bytes)>;

struct Table {
  std::string_view suite;
  Decode decode;
  std::span<const Case> cases;
};

// All tables of the program.
std::vector<Table>& tables();

std::vector<uint8_t> bytes_of(std::string_view hex);

// The lines of a list, in the dump form. Bytes outside 0x20 to 0x7E and backslashes show as \xHH.
std::string dump(const LineList& list);

// Resets the decode state, decodes with `mode` as character set, dumps, and frees.
std::string decode_and_dump(const Decode& decode, Bytes data, uint32_t mode = WIRELINES_ASCII);

// A whole frame through the entry point, at 2023-11-14 22:13:20.123456 UTC (tests run in UTC).
void decode_frame(LineList& list, Bytes frame);

// Compares every case of a table with its lines.
void check_lines(const Table& table);

struct Register {
  explicit Register(Table table) { tables().push_back(std::move(table)); }
};

}  // namespace wirelines::test

// LINE_CASES(Suite, decode, cases): a test Suite.Lines over the table, known to the drivers too. `decode` is anything
// that takes (LineList&, Bytes).
#define LINE_CASES(suite, decode, cases)                                                    \
  static const ::wirelines::test::Register suite##_registered({#suite, (decode), (cases)}); \
  TEST(suite, Lines) {                                                                      \
    ::wirelines::test::check_lines({#suite, (decode), (cases)});                            \
  }
