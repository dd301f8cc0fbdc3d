// IPX: a 30-byte header. What follows is chosen by packet type, or else by socket.
#include "netware/ipx.hpp"

#include "core/protocol_names.hpp"
#include "core/section.hpp"
#include "netware/ipx_rip.hpp"
#include "netware/ncp.hpp"
#include "netware/netbios_frames.hpp"
#include "netware/sap.hpp"
#include "netware/spx.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(36, 1, 4);
constexpr int32_t kHeaderSize = 30;

constexpr uint8_t kTypeRip = 1;
constexpr uint8_t kTypeSpx = 5;
constexpr uint8_t kTypeNcp = 17;

constexpr uint16_t kSocketSap = 0x0452;
constexpr uint16_t kSocketNetBios = 0x0455;
constexpr uint16_t kSocketNetBios2 = 0x0553;

// Network and node, ten bytes.
TextBuffer address_text(Bytes a) {
  return TextBuffer("%0.2X%0.2X%0.2X%0.2X-%0.2X%0.2X%0.2X%0.2X%0.2X%0.2X", a.u8(0), a.u8(1), a.u8(2), a.u8(3), a.u8(4),
                    a.u8(5), a.u8(6), a.u8(7), a.u8(8), a.u8(9));
}

}  // namespace

void IpxAnalyze(LineList& list, Bytes data) {
  if (data.size() < kHeaderSize) return remainder(list, data);

  const uint16_t length = data.be16(2);
  const uint8_t type = data.u8(5);
  const uint16_t destination = data.be16(16);
  const uint16_t source = data.be16(28);

  Section s(list, kLayer);
  s.title(at(0, 29), "IPX Header [%s] --> [%s]", address_text(data.from(18)).view(), address_text(data.from(6)).view());
  s.value(at(0, 1), "[Header Checksum] 0x%0.4X", data.be16(0));
  s.value(at(2, 3), "[Packet Length] %u (0x%0.4X) byte(s)", length);
  s.value(at(4), "[Transport Control ] %u hop(s)", data.u8(4));
  s.line(at(5), "[Packet Type] %u %s", type, parens(NwPacketToName(type)));
  s.line(at(6, 9), "[Destination Network Address] %0.2X%0.2X%0.2X%0.2X", data.u8(6), data.u8(7), data.u8(8),
         data.u8(9));
  // Kept: the destination node has the label of the destination network.
  s.line(at(10, 15), "[Destination Network Address] %0.2X%0.2X%0.2X%0.2X%0.2X%0.2X", data.u8(10), data.u8(11),
         data.u8(12), data.u8(13), data.u8(14), data.u8(15));
  s.line(at(16, 17), "[Destination Socket] %u (0x%0.4X) %s", destination, destination,
         parens(NwSocketToName(destination)));
  s.line(at(18, 21), "[Souce Network Address] %0.2X%0.2X%0.2X%0.2X", data.u8(18), data.u8(19), data.u8(20),
         data.u8(21));
  s.line(at(22, 27), "[Souce Node Address] %0.2X%0.2X%0.2X%0.2X%0.2X%0.2X", data.u8(22), data.u8(23), data.u8(24),
         data.u8(25), data.u8(26), data.u8(27));
  s.line(at(28, 29), "[Souce Socket] %u (0x%0.4X) %s", source, source, parens(NwSocketToName(source)));
  if (!s) return;

  advance(kHeaderSize);
  // Ethernet pads a short packet, so the packet's own length counts.
  const Bytes payload = data.sub(kHeaderSize, length - kHeaderSize);
  const auto either = [&](uint16_t socket) { return source == socket || destination == socket; };
  if (type == kTypeSpx) return SpxAnalyze(list, payload);
  if (type == kTypeNcp) return NcpAnalyze(list, payload);
  if (type == kTypeRip) return NwRipAnalyze(list, payload);
  if (either(kSocketSap)) return SapAnalyze(list, payload);
  if (either(kSocketNetBios) || either(kSocketNetBios2)) return IpxNetBiosAnalyze(list, payload);
  remainder(list, payload);
}

}  // namespace wirelines
