// What a frame carries, in one record instead of lines.
#pragma once

#include "core/bytes.hpp"
#include "wirelines.h"

namespace wirelines {

void CheckPacket(Bytes frame, PacketSummary& summary);

// Each fills the record from its layer on; what an earlier layer put there is added to.
void CheckIp(Bytes header, PacketSummary& summary);
void CheckIpV6(Bytes header, PacketSummary& summary);
void CheckIpx(Bytes header, PacketSummary& summary);
void CheckPppSession(Bytes header, PacketSummary& summary);

}  // namespace wirelines
