// NetBIOS straight over LLC, and NetBIOS over IPX.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void NetBiosNameFrameAnalyze(LineList& list, Bytes data);     // LLC, UI format
void NetBiosSessionFrameAnalyze(LineList& list, Bytes data);  // LLC, I format
void IpxNetBiosAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
