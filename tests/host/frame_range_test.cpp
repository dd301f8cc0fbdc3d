#include "host/frame_range.hpp"

#include <gtest/gtest.h>

namespace wirelines::host {
namespace {

TEST(FrameRanges, choose) {
  struct Case {
    const char* text;
    const char* chosen;  // of frames 1 to 10
    std::uint64_t end;   // the first frame from which on nothing is chosen; 0: there is none
  };
  const Case kCases[] = {
      {"1", "1.........", 2},      {"3", "..3.......", 4},
      {"3-5", "..345.....", 6},    {"4-4", "...4......", 5},
      {"8-", ".......890", 0},     {"3,7-9", "..3...789.", 10},
      {"7-9,3", "..3...789.", 10}, {"2-4,3-5", ".2345.....", 6},
      {"9-,2", ".2......90", 0},   {"18446744073709551615", "..........", 0},
  };
  for (const auto& c : kCases) {
    FrameRanges ranges;
    ASSERT_EQ(ranges.add(c.text), "") << c.text;
    std::string chosen;
    for (std::uint64_t n = 1; n <= 10; n++) chosen += ranges.contains(n) ? static_cast<char>('0' + n % 10) : '.';
    EXPECT_EQ(chosen, c.chosen) << c.text;
    for (std::uint64_t n = 1; n <= 11; n++) EXPECT_EQ(ranges.ends_before(n), c.end != 0 && n >= c.end) << c.text << n;
  }
}

TEST(FrameRanges, without_a_choice_every_frame) {
  const FrameRanges ranges;
  EXPECT_TRUE(ranges.contains(1));
  EXPECT_FALSE(ranges.ends_before(1000000));
}

TEST(FrameRanges, several_choices_add_up) {
  FrameRanges ranges;
  EXPECT_EQ(ranges.add("2"), "");
  EXPECT_EQ(ranges.add("4"), "");
  EXPECT_TRUE(ranges.contains(2) && !ranges.contains(3) && ranges.contains(4));
  EXPECT_FALSE(ranges.ends_before(4));
  EXPECT_TRUE(ranges.ends_before(5));
}

TEST(FrameRanges, refuse) {
  for (const char* text : {"", "0", "-", "-5", "0-3", "5-3", "x", "3x", "3-x", "3,,4", "3,", ",3", " 3", "+3", "3--5",
                           "3-5-7", "1.5", "18446744073709551616"}) {
    FrameRanges ranges;
    EXPECT_NE(ranges.add(text), "") << text;
    EXPECT_TRUE(ranges.contains(1)) << text << ": nothing was to be chosen";
  }
}

}  // namespace
}  // namespace wirelines::host
