#include "host/timeline.hpp"

#include <gtest/gtest.h>

#include <numeric>

namespace wirelines::host {
namespace {

constexpr std::uint64_t kSecond = 1'000'000'000;

Count sum(const Timeline::Columns& columns) {
  return std::accumulate(columns.counts.begin(), columns.counts.end(), Count{},
                         [](Count all, const Count& count) { return all += count; });
}

TEST(Timeline, frames_come_into_round_columns) {
  const struct {
    const char* what;
    std::vector<std::uint64_t> times;
    std::size_t most;
    std::uint64_t start, width;
    std::vector<std::uint64_t> frames;
  } kCases[] = {
      {"nothing", {}, 10, 0, 0, {}},
      {"one frame", {1500}, 10, 1000, 1000, {1}},
      {"microseconds", {1000, 3999, 2000}, 10, 1000, 1000, {1, 1, 1}},
      {"to the limit", {0, 9000}, 10, 0, 1000, {1, 0, 0, 0, 0, 0, 0, 0, 0, 1}},
      {"twos", {0, 10000}, 10, 0, 2000, {1, 0, 0, 0, 0, 1}},
      {"the ends lie across two columns", {1000, 20000}, 10, 0, 5000, {1, 0, 0, 0, 1}},
      {"half seconds",
       {5 * kSecond, 9 * kSecond, 6 * kSecond + 1},
       10,
       5 * kSecond,
       kSecond / 2,
       {1, 0, 1, 0, 0, 0, 0, 0, 1}},
      {"earlier frames later",
       {9 * kSecond, 8 * kSecond, 5 * kSecond},
       10,
       5 * kSecond,
       kSecond / 2,
       {1, 0, 0, 0, 0, 0, 1, 0, 1}},
      {"minutes", {0, 600 * kSecond}, 10, 0, 100 * kSecond, {1, 0, 0, 0, 0, 0, 1}},
      {"all of time", {0, 9'000'000'000 * kSecond + 4'294'967'295}, 2, 0, 100'000ULL * 86400 * kSecond, {1, 1}},
  };
  for (const auto& c : kCases) {
    Timeline timeline;
    for (const auto time : c.times) timeline.add(time, 60);
    const auto columns = timeline.columns(c.most);
    std::vector<std::uint64_t> frames;
    for (const auto& count : columns.counts) frames.push_back(count.frames);
    EXPECT_EQ(columns.start, c.start) << c.what;
    EXPECT_EQ(columns.width, c.width) << c.what;
    EXPECT_EQ(frames, c.frames) << c.what;
  }
}

// However times jump, nothing is lost, and the columns are never too many.
TEST(Timeline, totals_hold) {
  Timeline timeline;
  std::uint64_t time = 1'700'000'000 * kSecond;
  std::uint64_t random = 1;
  Count all;
  for (int i = 0; i < 20000; i++) {
    random = random * 6364136223846793005 + 1442695040888963407;
    const auto jump = (random >> 33) << (random >> 29 & 15);
    time = (random & 0x10000000) != 0 ? time + jump : time - jump;
    timeline.add(time, static_cast<std::uint32_t>(random >> 50));
    all.add(static_cast<std::uint32_t>(random >> 50));
    if (i % 100 != 0) continue;
    for (const std::size_t most : {1U, 2U, 7U, 80U, 1000U}) {
      const auto columns = timeline.columns(most);
      ASSERT_EQ(sum(columns), all) << i;
      ASSERT_LE(columns.counts.size(), most) << i;
    }
  }
}

}  // namespace
}  // namespace wirelines::host
