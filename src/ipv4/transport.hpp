// What IPv4 and IPv6 hand to the transports besides their payload.
#pragma once

#include "core/checksum.hpp"
#include "core/section.hpp"

namespace wirelines {

struct Carrier {
  PseudoHeader pseudo;
  bool more_fragments = false;  // IPv4's flag: the checksum covers more than there is. Never set over IPv6.
};

void TcpAnalyze(LineList& list, Bytes data, const Carrier& carrier);
void UdpAnalyze(LineList& list, Bytes data, const Carrier& carrier);

// The checksum line of a TCP or UDP message that carries `stored`.
inline void DspTransportChecksum(Section& s, Range range, uint16_t stored, Bytes message, const Carrier& carrier) {
  if (carrier.more_fragments) {
    s.line(range, "[Checksum] 0x%0.4X", stored);
  } else if (stored == 0) {
    s.line(range, "[Checksum] None");
  } else if (CulUdpChksum(message, carrier.pseudo) == 0) {
    s.line(range, "[Checksum] 0x%0.4X (OK)", stored);
  } else {
    s.line(range, "[Checksum] 0x%0.4X (NG)", stored);
  }
}

}  // namespace wirelines
