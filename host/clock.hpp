// The wall clock: seconds since 1970 as a date and a time of day, in the zone of TZ.
#pragma once

#include <cstdint>
#include <ctime>

namespace wirelines::host {

// Frames come in time order, nearly: the calendar is asked once a minute.
class Clock {
 public:
  // Good until the next call.
  const std::tm& at(std::int64_t seconds) {
    constexpr std::int64_t kMinute = 60;
    if (seconds / kMinute != minute_) {
      const std::time_t time = seconds;
      if (localtime_r(&time, &broken_down_) == nullptr) broken_down_ = {};  // a year that no tm can hold
      // Long ago some zones were not whole minutes away from UTC: such times are asked for one by one.
      minute_ = broken_down_.tm_sec == seconds % kMinute ? seconds / kMinute : -1;
    } else {
      broken_down_.tm_sec = static_cast<int>(seconds % kMinute);
    }
    return broken_down_;
  }

 private:
  std::int64_t minute_ = -1;  // that broken_down_ stands for
  std::tm broken_down_{};
};

}  // namespace wirelines::host
