// ARP and RARP.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void ArpAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
