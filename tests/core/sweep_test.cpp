// Real traces, when they are there: every frame in every character set, from a heap copy of exactly its size.
#include <gtest/gtest.h>

#include <cstring>

#include "core/format.hpp"
#include "support/traces.hpp"
#include "wirelines.h"

namespace wirelines::test {

namespace {

TEST(Sweep, EveryFrameOfEveryTraceInEveryMode) {
  if (!traces_there()) GTEST_SKIP() << "no traces at " << kTraces;
  const int frames = for_each_trace_frame([](const std::string& place, Bytes frame, const timeval& time) {
    for (uint32_t mode = 0; mode < 7; ++mode) {
      LineList list{};
      const uint32_t top = AnalyzeOutput(&list, frame.data(), frame.size(), static_cast<uint32_t>(time.tv_sec),
                                         static_cast<uint32_t>(time.tv_usec), mode);
      ASSERT_LT(top, static_cast<uint32_t>(list.count)) << place;
      for (int32_t i = 0; i < list.count; ++i) {
        ASSERT_LE(std::strlen(static_cast<DisplayLine*>(list.data[i])->text), kMaxText) << place;
      }
      ASSERT_EQ(static_cast<DisplayLine*>(list.data[top])->level, 0U) << place;
      DelDspBuffer(&list);
    }
  });
  EXPECT_GT(frames, 0);
}

}  // namespace

}  // namespace wirelines::test
