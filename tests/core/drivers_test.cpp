// What must hold of every decode, tried on every row of every table.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "core/lines.hpp"
#include "support/cases.hpp"
#include "support/heap.hpp"

namespace wirelines::test {

namespace {

struct FreedLines {
  LineList list{};
  ~FreedLines() { DelDspBuffer(&list); }
};

// A heap copy of exactly the bytes, so that the sanitizers see a read past them.
std::unique_ptr<uint8_t[]> exact_copy(const std::vector<uint8_t>& bytes, std::size_t length) {
  auto copy = std::make_unique<uint8_t[]>(length);
  if (length != 0) std::memcpy(copy.get(), bytes.data(), length);
  return copy;
}

void for_each_case(const std::function<void(const Table&, const Case&, const std::vector<uint8_t>&)>& run) {
  ASSERT_FALSE(tables().empty());
  for (const Table& table : tables()) {
    for (const Case& c : table.cases) {
      SCOPED_TRACE(std::string(table.suite) + ": " + c.name);
      run(table, c, bytes_of(c.bytes));
    }
  }
}

TEST(Drivers, EveryLengthInEveryMode) {
  for_each_case([](const Table& table, const Case&, const std::vector<uint8_t>& bytes) {
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
      const auto copy = exact_copy(bytes, length);
      FreedLines lines;
      state().reset(static_cast<uint32_t>(length % 7));
      table.decode(lines.list, Bytes(copy.get(), static_cast<int32_t>(length)));
      ASSERT_EQ(static_cast<uint32_t>(lines.list.count), state().lineCount) << "at length " << length;
      for (int32_t i = 0; i < lines.list.count; ++i) {
        ASSERT_LE(std::strlen(static_cast<DisplayLine*>(lines.list.data[i])->text), kMaxText) << "at length " << length;
      }
    }
  });
}

TEST(Drivers, EveryAllocationFails) {
  count_memory_messages();
  for_each_case([](const Table& table, const Case&, const std::vector<uint8_t>& bytes) {
    const auto copy = exact_copy(bytes, bytes.size());
    const Bytes data(copy.get(), static_cast<int32_t>(bytes.size()));
    FreedLines whole;
    state().reset(WIRELINES_ASCII);
    table.decode(whole.list, data);
    for (int64_t allowed = 0;; ++allowed) {
      const auto messages = memory_messages();
      const auto blocks = live_blocks();
      {
        FreedLines lines;
        state().reset(WIRELINES_ASCII);
        fail_after(allowed);
        table.decode(lines.list, data);
        fail_no_more();
        const bool failed = state().out_of_memory;
        ASSERT_EQ(memory_messages() - messages, failed ? 1 : 0) << "after " << allowed << " allocations";
        // What was made before is what a whole decode begins with.
        ASSERT_LE(lines.list.count, whole.list.count);
        for (int32_t i = 0; i < lines.list.count; ++i) {
          ASSERT_STREQ(static_cast<DisplayLine*>(lines.list.data[i])->text,
                       static_cast<DisplayLine*>(whole.list.data[i])->text);
        }
        if (!failed) {
          ASSERT_EQ(lines.list.count, whole.list.count);
          return;
        }
      }
      ASSERT_EQ(live_blocks(), blocks) << "leaked after " << allowed << " allocations";
    }
  });
}

TEST(Drivers, TwiceTheSameAndNothingKept) {
  for_each_case([](const Table& table, const Case&, const std::vector<uint8_t>& bytes) {
    const Bytes data(bytes.data(), static_cast<int32_t>(bytes.size()));
    for (uint32_t mode = 0; mode < 7; ++mode) {
      const auto blocks = live_blocks();
      const auto first = decode_and_dump(table.decode, data, mode);
      EXPECT_EQ(decode_and_dump(table.decode, data, mode), first);
      EXPECT_EQ(live_blocks(), blocks);
    }
  });
}

}  // namespace

}  // namespace wirelines::test
