// IGMP.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

// `fragmented`: the datagram has more fragments, so that the checksum covers more than there is.
void IgmpAnalyze(LineList& list, Bytes data, bool fragmented);

}  // namespace wirelines
