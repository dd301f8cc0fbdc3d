// IPX RIP: an operation, then networks of 8 bytes. Carried by IPX packet type 1.
#include "netware/ipx_rip.hpp"

#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(41, 7, 4);
constexpr uint16_t kUnreachable = 0xFFFF;

}  // namespace

void NwRipAnalyze(LineList& list, Bytes data) {
  if (data.size() < 2) return remainder(list, data);

  const auto size = static_cast<uint32_t>(data.size());
  const uint16_t operation = data.be16(0);

  Section s(list, kLayer);
  s.title(at(0, size / 8 * 8 + 1), "RIP Packet");
  switch (operation) {
    case 1: s.line(at(0, 1), "[Packet Type] 0x0001 (Request)"); break;
    case 2: s.line(at(0, 1), "[Packet Type] 0x0002 (Reply)"); break;
    default: s.value(at(0, 1), "[Packet Type] 0x%0.4X (Unknown)", operation); break;
  }
  // A last entry that is cut off is shown whole.
  for (uint32_t q = 2; s && q < size; q += 8) {
    const uint16_t hops = data.be16(q + 4);
    s.line(at(q, q + 3), "[Network Address] %0.2X%0.2X%0.2X%0.2X", data.u8(q), data.u8(q + 1), data.u8(q + 2),
           data.u8(q + 3));
    if (hops == kUnreachable) {
      s.line(at(q + 4, q + 5), "[Hops Away] 0xffff(None)");
    } else {
      s.value(at(q + 4, q + 5), "[Hops Away] %u", hops);
    }
    s.value(at(q + 6, q + 7), "[Time-In Ticks] %u", data.be16(q + 6));
  }
}

}  // namespace wirelines
