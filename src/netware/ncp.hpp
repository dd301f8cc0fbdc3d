// NCP, the requests and replies of NetWare's file servers, with packet burst.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void NcpAnalyze(LineList& list, Bytes data);
void NcpBurstAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
