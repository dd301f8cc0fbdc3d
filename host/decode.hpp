// From a frame to its lines.
#pragma once

#include <wirelines.h>

#include "lift.hpp"
#include "trace.hpp"

namespace wirelines::host {

// The lines of one frame at a time.
class Lines {
 public:
  explicit Lines(bool lift_tags = true) : lift_(lift_tags) {}
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;
  ~Lines() { DelDspBuffer(&list_); }

  // Each takes the place of the lines before, and returns what the library's call returns.
  std::uint32_t decode(const Frame& frame, std::uint32_t charset) {
    DelDspBuffer(&list_);
    lift_.take(frame);
    const auto top_line = AnalyzeOutput(&list_, lift_.data(), lift_.length(), static_cast<std::uint32_t>(frame.seconds),
                                        frame.nanoseconds / 1000, charset);
    return lift_.correct(list_, top_line);
  }
  std::uint32_t dump(const Frame& frame, std::uint32_t charset) {
    DelDspBuffer(&list_);
    return HexOutput(&list_, frame.data, static_cast<std::int32_t>(frame.length), charset);
  }

  template <typename Visit>
  void each(Visit visit) const {
    for (std::int32_t i = 0; i < list_.count; i++) visit(*static_cast<const DisplayLine*>(list_.data[i]));
  }

 private:
  Lift lift_;
  LineList list_{};
};

}  // namespace wirelines::host
