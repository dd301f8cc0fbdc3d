// IPv4.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void IpAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
