// What must hold of every list of lines.
#pragma once

#include <cstdlib>
#include <cstring>

#include "wirelines.h"

inline void check_lines(const LineList& list) {
  for (int32_t i = 0; i < list.count; ++i) {
    const auto& line = *static_cast<const DisplayLine*>(list.data[i]);
    if (strnlen(line.text, 129) > 128) std::abort();
    if (line.level > 2 && line.level != WIRELINES_BLANK) std::abort();
  }
}
