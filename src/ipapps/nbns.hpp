#pragma once

#include "core/lines.hpp"

namespace wirelines {

// The NetBIOS name service, UDP port 137.
void NbnsAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
