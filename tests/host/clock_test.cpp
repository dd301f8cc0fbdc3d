#include "host/clock.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace wirelines::host {
namespace {

std::string text(const std::tm& time) {
  char text[64];
  return {text, std::strftime(text, sizeof text, "%F %T", &time)};
}

// What is kept from one call to the next changes nothing, in whatever order the times come.
TEST(Clock, is_that_of_the_system) {
  const char* const kZones[] = {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "ODD0:44:30", "NST3:30"};
  for (const char* zone : kZones) {
    setenv("TZ", zone, 1);
    tzset();
    Clock clock;
    for (const std::int64_t base : {0, 1711846800 - 100, 1729990800 - 100, 1714557661}) {
      for (const int step : {0, 1, 59, 60, 61, 90, 89, 3600, 200, 30, 0}) {
        const std::time_t time = base + step;
        std::tm wanted{};
        localtime_r(&time, &wanted);
        EXPECT_EQ(text(clock.at(time)), text(wanted)) << zone << ' ' << time;
      }
    }
  }
}

TEST(Clock, takes_any_time) {
  Clock clock;
  EXPECT_EQ(clock.at(INT64_MAX).tm_hour, 0);
  EXPECT_EQ(text(clock.at(0)).size(), 19U);
}

}  // namespace
}  // namespace wirelines::host
