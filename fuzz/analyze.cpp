// AnalyzeOutput over any frame. The size chooses the character set.
#include "lines.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  LineList list{};
  const uint32_t top =
      AnalyzeOutput(&list, data, static_cast<int32_t>(size), 1700000000, 0, static_cast<uint32_t>(size % 7));
  if (list.count < 1 || top > static_cast<uint32_t>(list.count)) std::abort();
  check_lines(list);
  DelDspBuffer(&list);
  return 0;
}
