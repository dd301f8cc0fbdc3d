// What a frame can cost at most: the frames that make the most lines, as docs/limits.md tells of them.
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <vector>

#include "core/lines.hpp"
#include "support/cases.hpp"
#include "support/heap.hpp"

namespace wirelines::test {

namespace {

constexpr std::size_t kEthernet = 1514;
constexpr std::size_t kLongest = 65535;

void put16(std::vector<uint8_t>& bytes, std::size_t at, std::size_t value) {
  bytes[at] = static_cast<uint8_t>(value >> 8);
  bytes[at + 1] = static_cast<uint8_t>(value);
}

// `head`, then `unit` again and again, and the lengths of IPv4 and UDP as they then are.
std::vector<uint8_t> filled(const std::string& head, const std::string& unit, std::size_t size) {
  auto frame = bytes_of(head);
  const auto piece = bytes_of(unit);
  for (std::size_t i = 0; frame.size() < size; ++i) frame.push_back(piece[i % piece.size()]);
  put16(frame, 16, size - 14);
  if (frame[23] == 17) put16(frame, 38, size - 34);
  return frame;
}

const std::string kTcp =
    "00005E005301 00005E005302 0800 4500 0000 0001 0000 40 06 0000 C0000201 C0000202"
    "C001 008B 00000001 00000002 50 18 2000 0000 0000 ";
const std::string kUdp = "00005E005301 00005E005302 0800 4500 0000 0001 0000 40 11 0000 C0000201 C0000202 ";

// A LockingAndX request each four bytes, whose ranges to unlock take all the bytes behind it.
std::vector<uint8_t> overlapping_locks(std::size_t size) {
  return filled(kTcp + "00 00 0000 FF534D42 24 00000000 00 0000" + std::string(40, '0'), "00240024", size);
}

// NODE STATUS records of twelve bytes, each with the 192 names that its neighbour's pointer counts.
std::vector<uint8_t> overlapping_names(std::size_t size) {
  return filled(kUdp + "0089 0089 0000 0000 0001 8400 0000 FFFF FFFF FFFF", "C000 0021 0001 00000000 0000", size);
}

// Record sections of which there is nothing but their number.
std::vector<uint8_t> counted_records(std::size_t size) {
  return filled(kUdp + "0089 0089 0000 0000 0001 8400 0000 FFFF FFFF FFFF", "00", size);
}

// Questions whose names point to one that goes round to its greatest length.
std::vector<uint8_t> pointed_names(std::size_t size) {
  const std::string name = "3F" + std::string(126, '6') + "C00C";
  return filled(kUdp + "C001 0035 0000 0000 0001 0100 FFFF FFFF FFFF FFFF" + name + "0001 0001", "C00C 0001 0001",
                size);
}

// Blocks whose UTF-16 names reach to the end of the frame: few lines, and most time.
std::vector<uint8_t> overlapping_strings(std::size_t size) {
  return filled(kTcp + "00 00 0000 FF534D42 A2 00000000 00 0080" + std::string(40, '0'), "01A2012500", size);
}

TEST(Limits, FramesThatMakeTheMostLines) {
  const struct {
    const char* name;
    std::vector<uint8_t> frame;
    int32_t lines;
  } rows[] = {
      {"SMB, 1,514 bytes", overlapping_locks(kEthernet), 79332},
      {"SMB, 65,535 bytes", overlapping_locks(kLongest), kMostLines},
      {"SMB strings, 65,535 bytes", overlapping_strings(kLongest), 994075},
      {"NetBIOS names, 1,514 bytes", overlapping_names(kEthernet), 239363},
      {"NetBIOS names, 65,535 bytes", overlapping_names(kLongest), kMostLines},
      {"NetBIOS records, 60 bytes", counted_records(60), 196651},
      {"NetBIOS records, 65,535 bytes", counted_records(kLongest), 205579},
      {"DNS, 1,514 bytes", pointed_names(kEthernet), 5629},
      {"DNS, 65,535 bytes", pointed_names(kLongest), 261709},
  };
  count_memory_messages();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const auto messages = memory_messages();
    LineList list{};
    const auto start = std::clock();
    AnalyzeOutput(&list, row.frame.data(), static_cast<int32_t>(row.frame.size()), 0, 0, WIRELINES_ASCII);
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 20) << "seconds, and a fraction of one where it is shipped";
    EXPECT_EQ(list.count, row.lines);
    EXPECT_EQ(memory_messages() - messages, row.lines == kMostLines ? 1 : 0);
    DelDspBuffer(&list);
  }
}

TEST(Limits, CountTheLinesOfOneCall) {
  LineList list{};
  state().lineCount = UINT32_MAX - 1;  // after many calls on their own
  for (int i = 0; i < 4; ++i) EXPECT_EQ(NewLine(&list), 0);
  EXPECT_EQ(state().lineCount, 2U);
  EXPECT_EQ(list.count, 4);
  DelDspBuffer(&list);

  const std::vector<uint8_t> many(16 * (kMostLines + 1));
  HexDump(&list, many.data(), static_cast<int32_t>(many.size()), 63, 1, 0, 0, 1, 10);
  EXPECT_EQ(list.count, static_cast<int32_t>(kMostLines));
  HexDump(&list, many.data(), 17, 63, 1, 0, 0, 1, 10);
  EXPECT_EQ(list.count, static_cast<int32_t>(kMostLines) + 2);
  DelDspBuffer(&list);
}

}  // namespace

}  // namespace wirelines::test
