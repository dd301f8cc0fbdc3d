// Day numbers, and local time.
#pragma once

#include <ctime>

#include "core/bytes.hpp"

namespace wirelines {

struct Date {
  uint32_t year;   // from 1
  uint32_t month;  // 1 to 12
  uint32_t day;    // 1 to 31
};

Date date_of_day(uint32_t day_number);
uint32_t day_of_date(const Date& date);
uint32_t days_of_month(uint32_t month, uint32_t year);
uint32_t weekday_of_day(uint32_t day_number);

// The local calendar time of `seconds` since 1970, or null when the platform cannot convert it. The result is the
// calling thread's and good until its next call.
const std::tm* local_time(int64_t seconds);

}  // namespace wirelines
