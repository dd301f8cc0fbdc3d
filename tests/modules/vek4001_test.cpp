#include "vek4001.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <string>
#include <thread>
#include <vector>

#include "modules/allocation.hpp"

namespace {

struct Seen {
  int calls = 0;
  std::int32_t code = 0;
  std::string text;
};

void remember(std::int32_t code, const char* text, void* context) {
  auto& seen = *static_cast<Seen*>(context);
  ++seen.calls;
  seen.code = code;
  seen.text = text;
}

struct Case {
  std::int32_t code;
  const char* text;
};

const Case kCases[] = {
    {VEK4001_OUT_OF_MEMORY, "Memory is exhausted: not everything could be decoded."},
    {0, "Error 0."},
    {102, "Error 102."},
    {INT32_MAX, "Error 2147483647."},
    {INT32_MIN, "Error -2147483648."},
};

TEST(Vek4001, TextsGoToTheHandlerAndOtherwiseToStandardError) {
  for (const auto& c : kCases) {
    Seen seen;
    SetErrMessageHandler(remember, &seen);
    testing::internal::CaptureStderr();
    ErrMessage(c.code);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(seen.code, c.code);
    EXPECT_EQ(seen.text, c.text);

    SetErrMessageHandler(nullptr, nullptr);
    testing::internal::CaptureStderr();
    ErrMessage(c.code);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string("wirelines: ") + c.text + "\n");
    EXPECT_EQ(seen.calls, 1);
  }
}

TEST(Vek4001, AllocatesNothingAndKeepsErrno) {
  SKIP_IF_ALLOCATIONS_HIDDEN();
  testing::internal::CaptureStderr();
  const int before = g_allocations;
  errno = ENOSPC;
  ErrMessage(VEK4001_OUT_OF_MEMORY);
  ErrMessage(-5);
  const int error = errno;
  const int after = g_allocations;
  EXPECT_NE(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(error, ENOSPC);
  EXPECT_EQ(after, before);
}

TEST(Vek4001, HandlerMayCallTheModule) {
  Seen inner;
  SetErrMessageHandler(
      [](std::int32_t, const char*, void* context) {
        SetErrMessageHandler(remember, context);
        ErrMessage(7);
      },
      &inner);
  ErrMessage(VEK4001_OUT_OF_MEMORY);
  SetErrMessageHandler(nullptr, nullptr);
  EXPECT_EQ(inner.text, "Error 7.");
}

// Two handlers take turns while others report: each must be called with the context that was set with it.
struct Turn {
  int tag;
  std::atomic<int> right = 0;
  std::atomic<int> wrong = 0;
};

template <int kTag>
void check_tag(std::int32_t, const char*, void* context) {
  auto& turn = *static_cast<Turn*>(context);
  ++(turn.tag == kTag ? turn.right : turn.wrong);
}

TEST(Vek4001, HandlerAndContextChangeTogether) {
  constexpr int kCalls = 20000;
  constexpr int kThreads = 3;
  Turn first{1};
  Turn second{2};
  SetErrMessageHandler(check_tag<1>, &first);
  std::vector<std::thread> reporters;
  reporters.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    reporters.emplace_back([] {
      for (int n = 0; n < kCalls; ++n) ErrMessage(VEK4001_OUT_OF_MEMORY);
    });
  }
  for (int n = 0; n < kCalls; ++n) {
    SetErrMessageHandler(check_tag<2>, &second);
    SetErrMessageHandler(check_tag<1>, &first);
  }
  for (auto& reporter : reporters) reporter.join();
  SetErrMessageHandler(nullptr, nullptr);
  EXPECT_EQ(first.wrong + second.wrong, 0);
  EXPECT_EQ(first.right + second.right, kThreads * kCalls);
}

}  // namespace
