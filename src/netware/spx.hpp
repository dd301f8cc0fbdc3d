// SPX and SPX2, the sequenced transport of NetWare.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void SpxAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
