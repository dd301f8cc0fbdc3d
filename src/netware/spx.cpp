// SPX: a 12-byte header; SPX2 adds two bytes to it. Carried by IPX packet type 5.
#include "netware/spx.hpp"

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(40, 6, 4);

// Kept: only these values of the whole control byte make the header longer, not their bits.
constexpr uint8_t kExtendedAck = 0x08;
constexpr uint8_t kNegotiateSize = 0x04;

constexpr auto kStreamTypes = names({
    {0xFC, " (Sequence Request)"},
    {0xFD, " (Sequence Acknowledgement)"},
    {0xFE, " (End-of-Connection)"},
    {0xFF, " (End-of-Connection Acknowledgement)"},
});
static_assert(kStreamTypes.distinct());

}  // namespace

void SpxAnalyze(LineList& list, Bytes data) {
  if (data.size() < 12) return remainder(list, data);

  const uint8_t control = data.u8(0);
  const bool extended_ack = control == kExtendedAck;
  const bool negotiate_size = control == kNegotiateSize;
  // Kept: the title of a packet that negotiates its size covers 16 bytes, though the header has 14.
  const int32_t last = extended_ack ? 13 : negotiate_size ? 15 : 11;

  Section s(list, kLayer);
  if (data.size() <= last) return;
  s.title(at(0, static_cast<uint32_t>(last)), "SPX/SPX2 Header");
  s.heading(at(0), "[Connection Control] 0x%0.2X", control);
  s.detail(at(0), "    [bit7] System Packete = %u", control >> 7 & 1);
  s.detail(at(0), "    [bit6] Acknowledgment Required = %u", control >> 6 & 1);
  s.detail(at(0), "    [bit5] Attention = %u", control >> 5 & 1);
  s.detail(at(0), "    [bit4] End-of-Message = %u", control >> 4 & 1);
  s.detail(at(0), "    [bit3] SPX2 = %u", control >> 3 & 1);
  s.detail(at(0), "    [bit2] Size = %u", control >> 2 & 1);
  s.line(at(1), "[Datastream Type] 0x%0.2X %s", data.u8(1), kStreamTypes(data.u8(1)));
  s.value(at(2, 3), "[Souce Connection ID] %u (0x%0.4X)", data.be16(2));
  s.value(at(4, 5), "[Destination Connection ID] %u (0x%0.4X)", data.be16(4));
  DspSequenceNo16(list, data.be16(6), s.field(at(6, 7)));
  s.value(at(8, 9), "[Acknowledgement No] %u (0x%0.4X)", data.be16(8));
  s.value(at(10, 11), "[Allocation No] %u", data.be16(10));
  // Kept: the range of so short a rest begins at the SPX header.
  if (data.size() < 14) return remainder(list, data.from(12));

  if (extended_ack) s.value(at(12, 13), "[Extended ACK No.] %u (0x%0.4X)", data.be16(12));
  if (negotiate_size) s.value(at(12, 13), "[Negotiate Size] %u (0x%0.4X)", data.be16(12));
  if (!s) return;

  const uint32_t header = extended_ack || negotiate_size ? 14 : 12;
  advance(header);
  // Kept: the last byte of the packet is not shown.
  remainder(list, data.sub(header, data.size() - static_cast<int32_t>(header) - 1));
}

}  // namespace wirelines
