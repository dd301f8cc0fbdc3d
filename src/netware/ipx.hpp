// IPX, the network layer of NetWare.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void IpxAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
