// IGMP as version 1 lays it out (RFC 1112): eight bytes; what follows them is not shown.
#include "ipv4/igmp.hpp"

#include "core/datablock.hpp"
#include "core/section.hpp"
#include "ipv4/icmp.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(51, 8, 3);

}  // namespace

void IgmpAnalyze(LineList& list, Bytes data, bool fragmented) {
  if (data.size() < 8) return remainder(list, data);

  Section s(list, kLayer);
  s.title(at(0, 7), "IGMP Header");
  s.line(at(0), "[Version] %u", data.u8(0) >> 4);
  switch (data.u8(0) & 15) {
    case 1: s.line(at(0), "[Type] 1 (Host Membership Query)"); break;
    case 2: s.line(at(0), "[Type] 2 (Host Membership Report)"); break;
    // Kept: another type shows the byte that follows it.
    default: s.line(at(0), "[Type] %u", data.u8(1)); break;
  }
  DspIcmpChecksum(s, data, fragmented);
  s.line(at(4, 7), "[Group Address] %u.%u.%u.%u", data.u8(4), data.u8(5), data.u8(6), data.u8(7));
}

}  // namespace wirelines
