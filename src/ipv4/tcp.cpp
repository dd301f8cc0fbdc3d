// TCP (RFC 9293; options of RFC 1072, 2018 and 7323). Segment data of port 139 goes to the NetBIOS session service.
#include "core/datablock.hpp"
#include "core/printers.hpp"
#include "core/protocol_names.hpp"
#include "core/section.hpp"
#include "ipapps/nbss.hpp"
#include "ipv4/transport.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(48, 5, 3);
constexpr int32_t kHeader = 20;  // without options

// `q` counts from the start of the header.
void option_lines(Section& s, Bytes header, uint32_t end) {
  for (uint32_t q = kHeader; q < end && header.has(q) && s;) {
    switch (header.u8(q)) {
      case 0: s.detail(at(q), "[Kind] 0 (End of option list)"); return;
      case 1:
        s.detail(at(q), "[Kind] 1 (No-Operation)");
        q += 1;
        break;
      case 2:
        s.detail_value(at(q, q + 3), "[Kind] 2 (Maximum Segment Size = %u (0x%0.4X) byte(s))", header.be16(q + 2));
        q += 4;
        break;
      case 3:
        s.detail(at(q, q + 2), "[Kind] 3 (Window Scale = %u)", header.u8(q + 2));
        q += 3;
        break;
      case 4:
        s.detail(at(q, q + 1), "[Kind] 4 (Sack-Permitted)");
        q += 2;
        break;
      case 5: {
        const uint32_t length = header.u8(q + 1);
        s.detail(at(q, q + length - 1), "[Kind] 5 (SACK) [Left Edge] %lu [Right Edge] %lu", header.be32(q + 2),
                 header.be32(q + 6));
        if (length == 0) return;
        q += length;
        break;
      }
      case 6:
        s.detail(at(q, q + 1), "[Kind] 6 (Echo)");
        s.detail(at(q, q + 5), "[Echo Data] %0.2X %0.2X %0.2X %0.2X ", header.u8(q + 2), header.u8(q + 3),
                 header.u8(q + 4), header.u8(q + 5));
        q += 6;
        break;
      case 7:
        s.detail(at(q, q + 1), "[Kind] 7 (Echo Reply)");
        s.detail(at(q, q + 5), "[Reply Data] %0.2X %0.2X %0.2X %0.2X ", header.u8(q + 2), header.u8(q + 3),
                 header.u8(q + 4), header.u8(q + 5));
        q += 6;
        break;
      case 8: {
        // Kept: both times show the upper half of the first, with a conversion that prints as it stands.
        const uint16_t value = header.be16(q + 2);
        s.detail(at(q, q + 1), "[Kind]  8 (Timestamps)");
        s.detail(at(q + 2, q + 3), "[TS Value] %d (0x0.4X) ", value);
        s.detail(at(q + 4, q + 5), "[TS Echo Reply] %d (0x0.4X) ", value);
        q += 10;
        break;
      }
      default: return;
    }
  }
}

}  // namespace

void TcpAnalyze(LineList& list, Bytes data, const Carrier& carrier) {
  if (data.size() < kHeader) return remainder(list, data);

  const uint16_t source = data.be16(0);
  const uint16_t destination = data.be16(2);
  const uint32_t header_length = (data.u8(12) >> 4) * 4U;
  const uint32_t flags = data.u8(13);

  Section s(list, kLayer);
  s.title(at(0, header_length - 1), "TCP Header [%u] --> [%u]", source, destination);
  DspSourcePort(list, kTcp, source, s.field(at(0, 1)));
  DspDestinationPort(list, kTcp, destination, s.field(at(2, 3)));
  s.value(at(4, 7), "[Sequence No] %u (0x%0.8X)", data.be32(4));
  s.value(at(8, 11), "[Acknowledgment No] %u (0x%0.8X)", data.be32(8));
  DspDataOffset(list, header_length, s.field(at(12)));
  s.line(at(13), "[Flags] [URG] %u [ACK] %u [PSH] %u [RST] %u [SYN] %u [FIN] %u", flags >> 5 & 1, flags >> 4 & 1,
         flags >> 3 & 1, flags >> 2 & 1, flags >> 1 & 1, flags & 1);
  s.value(at(14, 15), "[Window] %u (0x%0.4X) byte(s)", data.be16(14));
  DspTransportChecksum(s, at(16, 17), data.be16(16), data, carrier);
  s.line(at(18, 19), "[Urgent Pointer] %u", data.be16(18));
  if (header_length <= kHeader) {
    s.absent("[Options] None");
  } else {
    s.heading(at(20, header_length - 1), "[Options]");
    option_lines(s, data, header_length);
  }
  if (!s) return;

  advance(header_length);
  const Bytes segment = data.from(header_length);
  if (source == 139 || destination == 139) return NbssAnalyze(list, segment);
  remainder(list, segment);
}

}  // namespace wirelines
