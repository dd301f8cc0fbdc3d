// The routing information protocol of IPX.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void NwRipAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
