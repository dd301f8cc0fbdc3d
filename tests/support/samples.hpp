// Frames to try things on.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wirelines::test {

struct Sample {
  std::string name;
  std::vector<uint8_t> bytes;
};

// One frame of each shape in the sample traces, and in the traces of support/traces.hpp. Frames have the same shape
// when the same lines stand in them, numbers and repetitions apart.
const std::vector<Sample>& samples();

}  // namespace wirelines::test
