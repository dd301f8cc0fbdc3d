// NetBIOS session service.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void NbssAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
