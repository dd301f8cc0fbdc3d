// The line list and line calls as a host sees them.
#include "core/lines.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "support/cases.hpp"
#include "support/heap.hpp"
#include "wirelines.h"

namespace wirelines::test {

namespace {

const DisplayLine& line(const LineList& list, int32_t i) {
  return *static_cast<DisplayLine*>(list.data[i]);
}

TEST(Lines, ARecordHoldsItsWords) {
  LineList list{};
  char* const text = GetLineBuf();
  std::strcpy(text, "text");
  EXPECT_EQ(AddString(&list, text, 1, 2, 3, 4, 5, 6), 0);
  NewLine(&list);
  EXPECT_EQ(dump(list), "1 2 3-4 5,6 |text|\n65535 65535 0-0 0,0 ||\n");
  EXPECT_EQ(line(list, 0).text, text);
  DelDspBuffer(&list);
  EXPECT_EQ(list.count, 0);
  EXPECT_EQ(list.data, nullptr);
}

TEST(Lines, TitlesAreRulesOf75) {
  for (const std::size_t n : {0U, 1U, 20U, 69U, 70U, 71U, 300U}) {
    const std::string text(n, 'T');
    LineList list{};
    EXPECT_EQ(DspTitle(&list, text.c_str(), 12, 0, 1, 2, 4, 9), 0);
    const std::string shown = text.substr(0, 70);
    EXPECT_EQ(line(list, 0).text, "--- " + shown + " " + std::string(70 - shown.size(), '-')) << n;
    DelDspBuffer(&list);
  }
}

TEST(Lines, Parentheses) {
  const char* const empty = "";
  EXPECT_EQ(AddParenthesis(empty), empty);
  EXPECT_STREQ(AddParenthesis("name"), "(name)");
  EXPECT_EQ(AddParenthesis(std::string(500, 'x').c_str()), "(" + std::string(117, 'x') + ")");
  EXPECT_STREQ(AddParenthesis(AddParenthesis("again")), "((again))");
}

TEST(Lines, AnalyzeInfoIsKeptForAllThreads) {
  const uint32_t in[5] = {1, 2, 3, 4, 0xFFFFFFFF};
  SetAnalyzeInfo(in);
  uint32_t out[5] = {};
  std::thread([&out] { GetAnalyzeInfo(out); }).join();
  EXPECT_EQ(std::vector<uint32_t>(out, out + 5), std::vector<uint32_t>(in, in + 5));
}

TEST(LineListCalls, GrowSetAndShrink) {
  LineList list{};
  int a = 0;
  int b = 0;
  EXPECT_EQ(list.SetAtGrow(2, &a), 0);
  EXPECT_EQ(list.count, 3);
  EXPECT_EQ(list.data[0], nullptr);
  EXPECT_EQ(list.data[2], &a);
  EXPECT_EQ(list.SetAtGrow(0, &b), 0);
  EXPECT_EQ(list.count, 3);
  EXPECT_EQ(list.SetSize(5, 7), 0);
  EXPECT_EQ(list.data[4], nullptr);
  EXPECT_EQ(list.growBy, 7);
  EXPECT_EQ(list.SetSize(1), 0);
  EXPECT_EQ(list.data[0], &b);
  EXPECT_EQ(list.growBy, 7);
  for (int32_t i = 1; i < 1000; ++i) ASSERT_EQ(LineListSetAtGrow(&list, i, &a), 0);
  EXPECT_EQ(LineListSetAtGrow(&list, -1, &a), 1);
  EXPECT_EQ(LineListSetAtGrow(&list, INT32_MAX, &a), 1);
  EXPECT_EQ(LineListSetSize(&list, -1, 0), 1);
  EXPECT_EQ(list.count, 1000);
  EXPECT_EQ(LineListSetSize(&list, 0, -1), 0);
  EXPECT_EQ(list.data, nullptr);
  EXPECT_EQ(list.capacity, 0);
  DelDspBuffer(&list);
}

// Every call that makes a line, with no memory at all, and with memory for the text only.
TEST(OutOfMemory, EachCallReportsOnceAndLeavesTheListWhole) {
  count_memory_messages();
  const uint8_t bytes[20] = {};
  struct {
    const char* name;
    std::function<int32_t(LineList*)> call;
    int32_t without_buffer;  // what comes back when no buffer could be had
  } const cases[] = {
      {"AddString",
       [](LineList* list) {
         char* const text = GetLineBuf();
         if (text == nullptr) return -1;
         text[0] = 0;
         return AddString(list, text, 0, 0, 0, 0, 0, 0);
       },
       -1},
      {"NewLine", [](LineList* list) { return NewLine(list); }, 0},
      {"DspTitle", [](LineList* list) { return DspTitle(list, "x", 0, 0, 0, 0, 0, 0); }, 0},
  };
  for (const auto& c : cases) {
    for (int64_t allowed = 0;; ++allowed) {
      LineList list{};
      const auto blocks = live_blocks();
      const auto messages = memory_messages();
      fail_after(allowed);
      const int32_t result = c.call(&list);
      fail_no_more();
      if (memory_messages() == messages) {
        EXPECT_EQ(result, 0) << c.name;
        EXPECT_EQ(list.count, 1) << c.name;
        EXPECT_GT(allowed, 1) << c.name;  // text and list storage at least
        DelDspBuffer(&list);
        break;
      }
      EXPECT_EQ(memory_messages(), messages + 1) << c.name;
      EXPECT_EQ(result, allowed == 0 ? c.without_buffer : 1) << c.name;
      EXPECT_EQ(list.count, 0) << c.name;
      LineListSetSize(&list, 0, -1);
      EXPECT_EQ(live_blocks(), blocks) << c.name;
    }
  }
  // A later call begins afresh.
  LineList list{};
  fail_after(0);
  EXPECT_EQ(AnalyzeOutput(&list, bytes, 20, 0, 0, 0), 0U);
  EXPECT_EQ(GetLineBuf(), nullptr);
  fail_no_more();
  EXPECT_EQ(NewLine(&list), 0);
  EXPECT_EQ(list.count, 1);
  DelDspBuffer(&list);
}

TEST(Threads, LinesMayBeFreedElsewhere) {
  const auto blocks = live_blocks();
  {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
      threads.emplace_back([t] {
        std::vector<uint8_t> frame(1514, static_cast<uint8_t>(t));
        std::vector<LineList> lists(20);
        for (LineList& list : lists) AnalyzeOutput(&list, frame.data(), 1514, 1700000000, 0, 0);
        std::thread([&lists] {
          for (std::size_t i = 0; i < lists.size(); i += 2) DelDspBuffer(&lists[i]);
        }).join();
        for (std::size_t i = 1; i < lists.size(); i += 2) DelDspBuffer(&lists[i]);
      });
    }
    for (auto& thread : threads) thread.join();
  }
  EXPECT_EQ(live_blocks(), blocks);
}

// Lines outlive the thread that made them.
TEST(Threads, LinesOutliveTheirThread) {
  const auto blocks = live_blocks();
  LineList list{};
  std::thread([&list] { NewLine(&list); }).join();
  EXPECT_STREQ(line(list, 0).text, "");
  DelDspBuffer(&list);
  EXPECT_EQ(live_blocks(), blocks);
}

}  // namespace

}  // namespace wirelines::test
