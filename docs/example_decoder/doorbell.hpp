#pragma once

#include "core/bytes.hpp"
#include "core/lines.hpp"

namespace wirelines {

void DoorbellAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
