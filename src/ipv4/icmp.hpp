// ICMP over IPv4.
#pragma once

#include "core/section.hpp"

namespace wirelines {

// `fragmented`: the datagram has more fragments, so that the checksum covers more than there is.
void IcmpAnalyze(LineList& list, Bytes data, bool fragmented);

// The checksum line of an ICMP or IGMP message: bytes 2 and 3, over the whole message.
void DspIcmpChecksum(Section& s, Bytes data, bool fragmented);

}  // namespace wirelines
