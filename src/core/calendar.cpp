// The calendar of the time lines.
#include "core/calendar.hpp"

namespace wirelines {

namespace {

constexpr uint32_t kMonthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

bool is_leap_year(uint32_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

uint32_t leap_days_before(uint32_t years) {
  return years / 4 - years / 100 + years / 400;
}

}  // namespace

uint32_t days_of_month(uint32_t month, uint32_t year) {
  if (month < 1 || month > 12) return 0;
  return kMonthDays[month - 1] + (month == 2 && is_leap_year(year) ? 1 : 0);
}

Date date_of_day(uint32_t day_number) {
  uint32_t years = day_number / 365;
  uint32_t rest = day_number % 365;
  // Each round takes back one year of 365 days; far day numbers take back about one year in 1,500.
  while (leap_days_before(years) > rest) {
    rest += 365;
    --years;
  }
  Date date{years + 1, 1, 0};
  rest -= leap_days_before(years);
  for (uint32_t length = 0; rest >= (length = days_of_month(date.month, date.year)) && date.month < 12; ++date.month) {
    rest -= length;
  }
  date.day = rest + 1;
  return date;
}

uint32_t day_of_date(const Date& date) {
  const uint32_t years = date.year - 1;
  uint32_t days = years * 365 + leap_days_before(years) + (date.day - 1);
  for (uint32_t month = 1; month < date.month; ++month) {
    const uint32_t length = days_of_month(month, date.year);
    if (length == 0) break;  // past December
    days += length;
  }
  return days;
}

uint32_t weekday_of_day(uint32_t day_number) {
  return (day_number + 1) % 7;
}

const std::tm* local_time(int64_t seconds) {
  // A trace's frames follow each other closely and the platform's conversion is slow, so the last minute is kept:
  // within a minute of local time only the second changes.
  struct Minute {
    int64_t begin = 0;
    int64_t end = 0;
    std::tm time{};
  };
  thread_local Minute minute;
  if (seconds < minute.begin || seconds >= minute.end) {
    const auto t = static_cast<std::time_t>(seconds);
    minute.begin = minute.end = 0;
    if (localtime_r(&t, &minute.time) == nullptr) return nullptr;
    minute.begin = seconds - minute.time.tm_sec;
    minute.end = minute.begin + 60;
  }
  minute.time.tm_sec = static_cast<int>(seconds - minute.begin);
  return &minute.time;
}

}  // namespace wirelines
