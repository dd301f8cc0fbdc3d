// From a frame to its lines.
#pragma once

#include <wirelines.h>

#include "trace.hpp"

namespace wirelines::host {

// The lines of one frame at a time.
class Lines {
 public:
  Lines() = default;
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;
  ~Lines() { DelDspBuffer(&list_); }

  // Each takes the place of the lines before, and returns what the library's call returns.
  std::uint32_t decode(const Frame& frame, std::uint32_t charset) {
    DelDspBuffer(&list_);
    return AnalyzeOutput(&list_, frame.data, static_cast<std::int32_t>(frame.length),
                         static_cast<std::uint32_t>(frame.seconds), frame.nanoseconds / 1000, charset);
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
  LineList list_{};
};

}  // namespace wirelines::host
