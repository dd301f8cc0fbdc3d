// What must hold of every decode, tried on every row of every table and on a frame of each shape of the traces.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "core/lines.hpp"
#include "support/cases.hpp"
#include "support/heap.hpp"
#include "support/samples.hpp"

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

void for_each(const std::function<void(const Decode&, const std::vector<uint8_t>&)>& run) {
  ASSERT_FALSE(tables().empty());
  for (const Table& table : tables()) {
    for (const Case& c : table.cases) {
      SCOPED_TRACE(std::string(table.suite) + ": " + c.name);
      run(table.decode, bytes_of(c.bytes));
    }
  }
  ASSERT_FALSE(samples().empty());
  for (const Sample& sample : samples()) {
    SCOPED_TRACE(sample.name);
    run(decode_frame, sample.bytes);
  }
}

// Decodes from a heap copy of exactly `length` bytes; each line can be read.
void decode_some(const Decode& decode, const std::vector<uint8_t>& bytes, std::size_t length, uint32_t mode) {
  const auto copy = exact_copy(bytes, length);
  FreedLines lines;
  state().reset(mode);
  decode(lines.list, Bytes(copy.get(), static_cast<int32_t>(length)));
  ASSERT_EQ(static_cast<uint32_t>(lines.list.count), state().lineCount);
  for (int32_t i = 0; i < lines.list.count; ++i) {
    ASSERT_LE(strnlen(static_cast<DisplayLine*>(lines.list.data[i])->text, kMaxText + 1), kMaxText);
  }
}

TEST(Drivers, EveryLengthInEveryMode) {
  for_each([](const Decode& decode, const std::vector<uint8_t>& bytes) {
    for (std::size_t length = 0; length <= bytes.size(); ++length) {
      decode_some(decode, bytes, length, static_cast<uint32_t>(length % 7));
    }
  });
}

TEST(Drivers, EachOfTheFirst200BytesIsAnother) {
  for_each([](const Decode& decode, const std::vector<uint8_t>& bytes) {
    auto changed = bytes;
    for (std::size_t i = 0; i < std::min<std::size_t>(200, bytes.size()); ++i) {
      for (const int value : {0x00, 0x7F, 0x80, 0xFF}) {
        changed[i] = static_cast<uint8_t>(value);
        decode_some(decode, changed, changed.size(), static_cast<uint32_t>(i % 7));
      }
      changed[i] = bytes[i];
    }
  });
}

// The exported analyzers over what lies at each offset of a frame, odd ones among them, which is seldom their protocol.
TEST(Drivers, EachAnalyzerAtOtherOffsets) {
  static constexpr decltype(&IpAnalyze) kAnalyzers[] = {
      IpAnalyze, Ip6Analyze, ArpAnalyze, UnKnownProtocol, IpxAnalyze, PPPoEDiscoveryAnalyze, PPPSessionAnalyze};
  for (const Sample& sample : samples()) {
    SCOPED_TRACE(sample.name);
    for (const auto analyze : kAnalyzers) {
      const Decode decode = [&](LineList& list, Bytes data) { analyze(&list, data.data(), data.size()); };
      for (std::size_t offset = 0; offset < std::min<std::size_t>(70, sample.bytes.size()); ++offset) {
        const std::vector<uint8_t> rest(sample.bytes.begin() + static_cast<std::ptrdiff_t>(offset), sample.bytes.end());
        decode_some(decode, rest, rest.size(), static_cast<uint32_t>(offset % 7));
      }
    }
  }
}

TEST(Drivers, EveryAllocationFails) {
  count_memory_messages();
  for_each([](const Decode& decode, const std::vector<uint8_t>& bytes) {
    const auto copy = exact_copy(bytes, bytes.size());
    const Bytes data(copy.get(), static_cast<int32_t>(bytes.size()));
    FreedLines whole;
    state().reset(WIRELINES_ASCII);
    decode(whole.list, data);
    for (int64_t allowed = 0;; ++allowed) {
      const auto messages = memory_messages();
      const auto blocks = live_blocks();
      {
        FreedLines lines;
        state().reset(WIRELINES_ASCII);
        fail_after(allowed);
        decode(lines.list, data);
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
  for_each([](const Decode& decode, const std::vector<uint8_t>& bytes) {
    const Bytes data(bytes.data(), static_cast<int32_t>(bytes.size()));
    for (uint32_t mode = 0; mode < 7; ++mode) {
      const auto blocks = live_blocks();
      const auto first = decode_and_dump(decode, data, mode);
      EXPECT_EQ(decode_and_dump(decode, data, mode), first);
      EXPECT_EQ(live_blocks(), blocks);
    }
  });
}

}  // namespace

}  // namespace wirelines::test
