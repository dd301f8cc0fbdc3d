// NetBIOS name service.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void NbnsAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
