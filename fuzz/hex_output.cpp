// HexOutput over any bytes, in the character set that the first byte names, and as a data block.
#include <cstddef>

#include "wirelines.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  LineList list{};
  HexOutput(&list, data + 1, static_cast<int32_t>(size - 1), data[0] % 7U);
  UnKnownProtocol(&list, data + 1, static_cast<int32_t>(size - 1));
  DelDspBuffer(&list);
  return 0;
}
