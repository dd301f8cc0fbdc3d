// What a frame carries, in one record instead of lines.
#pragma once

#include "core/bytes.hpp"
#include "wirelines.h"

namespace wirelines {

void CheckPacket(const Bytes& frame, PacketSummary& summary);

// Each fills the record from its layer on; what an earlier layer put there is added to.
void CheckIp(const Bytes& header, PacketSummary& summary);
void CheckIpV6(const Bytes& header, PacketSummary& summary);
void CheckIpx(const Bytes& header, PacketSummary& summary);
void CheckPppSession(const Bytes& header, PacketSummary& summary);

}  // namespace wirelines
