// NetBIOS datagram service.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void NbdsAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
