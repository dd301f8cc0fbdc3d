// The service advertising protocol of NetWare.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void SapAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
