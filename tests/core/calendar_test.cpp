#include "core/calendar.hpp"

#include <gtest/gtest.h>

#include "wirelines.h"

namespace wirelines::test {

namespace {

TEST(Calendar, KnownDays) {
  struct {
    uint32_t number, year, month, day;
  } const cases[] = {
      {0, 1, 1, 1},       {30, 1, 1, 31},     {31, 1, 2, 1},         {58, 1, 2, 28},
      {59, 1, 3, 1},      {364, 1, 12, 31},   {365, 2, 1, 1},        {1154, 4, 2, 29},
      {1155, 4, 3, 1},    {1460, 4, 12, 31},  {1461, 5, 1, 1},       {36158, 99, 12, 31},
      {36524, 101, 1, 1}, {36583, 101, 3, 1}, {146096, 400, 12, 31}, {146097, 401, 1, 1},
  };
  for (const auto& c : cases) {
    uint32_t year = 0, month = 0, day = 0;
    gdate_daytodmy(c.number, &year, &month, &day);
    EXPECT_EQ(year, c.year) << c.number;
    EXPECT_EQ(month, c.month) << c.number;
    EXPECT_EQ(day, c.day) << c.number;
    EXPECT_EQ(gdate_dmytoday(c.year, c.month, c.day), c.number);
  }
  gdate_daytodmy(365, nullptr, nullptr, nullptr);
}

TEST(Calendar, DaysFollowEachOther) {
  Date last = date_of_day(0);
  for (uint32_t n = 1; n < 800 * 366; ++n) {
    const Date date = date_of_day(n);
    const bool same_month = date.day == last.day + 1 && date.month == last.month && date.year == last.year;
    const bool first = date.day == 1 && last.day == days_of_month(last.month, last.year) &&
                       date.year * 12 + date.month == last.year * 12 + last.month + 1;
    ASSERT_TRUE(same_month || first) << n;
    ASSERT_EQ(day_of_date(date), n);
    last = date;
  }
}

TEST(Calendar, FarDaysAndBadMonths) {
  const Date far = date_of_day(0xFFFFFFFF);
  EXPECT_EQ(day_of_date(far), 0xFFFFFFFF);
  EXPECT_EQ(gdate_monthdays(2, 4), 29U);
  EXPECT_EQ(gdate_monthdays(2, 100), 28U);
  EXPECT_EQ(gdate_monthdays(2, 400), 29U);
  EXPECT_EQ(gdate_monthdays(0, 4), 0U);
  EXPECT_EQ(gdate_monthdays(13, 4), 0U);
  gdate_dmytoday(1, 0xFFFFFFFF, 1);
  EXPECT_EQ(gdate_weekday(5), 6U);
  EXPECT_EQ(gdate_weekday(6), 0U);
}

TEST(Calendar, LocalTimeWithinAndAcrossMinutes) {
  for (const int64_t t : {1700000000L, 1700000001L, 1700000039L, 1700000040L, 1699999999L, 0x7FFFFFFFL, 0x100001L}) {
    const auto seconds = static_cast<std::time_t>(t);
    std::tm expected{};
    localtime_r(&seconds, &expected);
    const std::tm* const found = local_time(t);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(std::mktime(&expected), t);
    EXPECT_EQ(found->tm_sec, expected.tm_sec) << t;
    EXPECT_EQ(found->tm_min, expected.tm_min) << t;
    EXPECT_EQ(found->tm_hour, expected.tm_hour) << t;
    EXPECT_EQ(found->tm_mday, expected.tm_mday) << t;
  }
  EXPECT_EQ(local_time(INT64_MAX), nullptr);
}

}  // namespace

}  // namespace wirelines::test
