// What the page is told of frames, in JSON.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame_store.hpp"
#include "host/options.hpp"
#include "host/output.hpp"

namespace wirelines::host {

struct ViewSettings {
  bool lift_tags = true;
  std::uint32_t charset = 0;  // at first
};

// {"version":...}: what is known of the whole.
std::string state_json(const FrameStore& store, const ViewSettings& settings);

// "rows":[...] of the frames with these numbers.
void rows_json(Output& out, const FrameStore& store, const ViewSettings& settings,
               const std::vector<std::uint64_t>& numbers);

// All of one frame.
void frame_json(Output& out, const Frame& frame, const ViewSettings& settings, std::uint32_t charset);

// As AnalyzeOutput takes it; throws Failure when there is none of that name.
std::uint32_t charset_of(std::string_view name);

}  // namespace wirelines::host
