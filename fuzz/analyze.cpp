// AnalyzeOutput over any frame. The size chooses the character set.
#include <cstdlib>
#include <cstring>

#include "wirelines.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  LineList list{};
  const uint32_t top =
      AnalyzeOutput(&list, data, static_cast<int32_t>(size), 1700000000, 0, static_cast<uint32_t>(size % 7));
  if (list.count < 1 || top > static_cast<uint32_t>(list.count)) std::abort();
  for (int32_t i = 0; i < list.count; ++i) {
    const auto& line = *static_cast<const DisplayLine*>(list.data[i]);
    if (strnlen(line.text, 129) > 128) std::abort();
  }
  DelDspBuffer(&list);
  return 0;
}
