// SMB messages of NetBIOS sessions, datagrams and frames.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

// `data` begins with the SMB header, at the current frame offset.
void SmbAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
