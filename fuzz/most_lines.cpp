// Looks for frames that cost much: one that makes more lines for its length than those before it is kept, and told of
// when no other made as many (docs/limits.md).
#include <algorithm>
#include <bit>
#include <cstdio>

#include "lines.hpp"

namespace {

constexpr std::size_t kEthernet = 1514;
constexpr int32_t kMostOfEthernet = 460'000;
constexpr std::size_t kSteps = 128;  // of lines a byte, eight for each doubling

// Counters that the fuzzer takes for coverage: one for each step, of each order of length.
__attribute__((section("__libfuzzer_extra_counters"), used)) uint8_t reached[17][kSteps];

std::size_t step_of(std::size_t lines, std::size_t size) {
  const auto ratio = lines * 4096 / size + 1;
  const auto octave = static_cast<std::size_t>(std::bit_width(ratio)) - 1;
  const auto eighth = octave < 3 ? 0 : (ratio >> (octave - 3)) & 7;
  return std::min(octave * 8 + eighth, kSteps - 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  LineList list{};
  AnalyzeOutput(&list, data, static_cast<int32_t>(size), 1700000000, 0, WIRELINES_ASCII);
  const int32_t lines = list.count;
  DelDspBuffer(&list);

  const auto order = std::min(std::size_t{16}, static_cast<std::size_t>(std::bit_width(size)));
  reached[order][step_of(static_cast<std::size_t>(lines), size)] = 1;
  if (size > kEthernet) return 0;
  static int32_t most = 1000;
  if (lines > most) {
    most = lines;
    (void)std::fprintf(stderr, "most_lines: %d lines of %zu bytes\n", lines, size);
  }
  if (lines > kMostOfEthernet) std::abort();
  return 0;
}
