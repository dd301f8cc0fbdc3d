#include "support/samples.hpp"

#include <set>
#include <string>
#include <string_view>

#include "support/traces.hpp"
#include "wirelines.h"

namespace wirelines::test {

namespace {

// The lines' labels and names, without their numbers.
std::set<std::string> shape_of(Bytes frame) {
  std::set<std::string> shape;
  LineList list{};
  AnalyzeOutput(&list, frame.data(), frame.size(), 0, 0, WIRELINES_ASCII);
  for (int32_t i = 0; i < list.count; ++i) {
    const std::string_view text = static_cast<const DisplayLine*>(list.data[i])->text;
    shape.emplace(text.substr(0, text.find_first_of("0123456789")));
  }
  DelDspBuffer(&list);
  return shape;
}

std::vector<Sample> read_samples() {
  std::vector<Sample> found;
  std::set<std::set<std::string>> shapes;
  const auto take = [&](const std::string& place, Bytes frame, const timeval&) {
    if (shapes.insert(shape_of(frame)).second) found.push_back({place, {frame.data(), frame.data() + frame.size()}});
  };
  for_each_trace_frame(take, kSamples);
  if (traces_there()) for_each_trace_frame(take, kTraces);
  return found;
}

}  // namespace

const std::vector<Sample>& samples() {
  static const std::vector<Sample> all = read_samples();
  return all;
}

}  // namespace wirelines::test
