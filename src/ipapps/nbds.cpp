// NetBIOS datagram service (RFC 1002, section 4.4): an 82-byte header with both names, then user data. Called for UDP
// port 138.
#include "ipapps/nbds.hpp"

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/protocol_names.hpp"
#include "core/section.hpp"
#include "ipapps/name_printers.hpp"

namespace wirelines {

namespace {

constexpr uint32_t kHeaderSize = 82;
constexpr uint32_t kSourceName = 14;
constexpr uint32_t kDestinationName = 48;

constexpr auto kTypeNames = names({
    {0x10, "DIRECT_UNIQUE DATAGRAM"},
    {0x11, "DIRECT_GROUP DATAGRAM"},
    {0x12, "BROADCAST DATAGRAM"},
    {0x13, "DATAGRAM ERROR"},
    {0x14, "DATAGRAM QUERY REQUEST"},
    {0x15, "DATAGRAM POSITIVE QUERY RESPONSE"},
    {0x16, "DATAGRAM NEGATIVE QUERY RESPONSE"},
});
static_assert(kTypeNames.distinct());

void flags_line(Section& s, Range range, uint8_t flags) {
  // Kept: the two bits of the node type are read as a yes or no.
  const bool p_node = flags >= 4;
  const bool first = (flags & 2) != 0;
  const bool more = (flags & 1) != 0;
  s.line(range, "[Flags] %u [SNT] %u %s [F] %u %s [M] %u %s", flags, p_node, p_node ? "(P node)" : "(B node)", first,
         first ? "(FIRST)" : "", more, more ? "(MORE)" : "");
}

}  // namespace

// Every message type is shown with the layout of the three that carry user data.
void NbdsAnalyze(LineList& list, Bytes data) {
  if (data.size() < static_cast<int32_t>(kHeaderSize)) return remainder(list, data);

  const uint8_t type = data.u8(0);
  const Bytes source = data.from(kSourceName);
  const Bytes destination = data.from(kDestinationName);
  const TextBuffer source_ip = ip_text(data.sub(4, 4));

  Section s(list, kNetBiosLayer);
  s.title(at(0, kHeaderSize - 1), "NetBIOS Datagram Service [%s] --> [%s]", std::string_view(DecodeNetBiosName(source)),
          std::string_view(DecodeNetBiosName(destination)));
  s.line(at(0), "[MSG_TYPE] 0x%0.2X %s", type, parens(kTypeNames(type)));
  flags_line(s, at(1), data.u8(1));
  s.value(at(2, 3), "[DGM_ID] %d (0x%0.4X)", data.be16(2));
  s.line(at(4, 7), "[SOURCE_IP] %s %s", source_ip.view(), parens(ip_nickname(source_ip.bytes)));
  DspSourcePort(list, kUdp, data.be16(8), s.field(at(8, 9)));
  DspDataLength16(list, data.be16(10), s.field(at(10, 11)));
  s.value(at(12, 13), "[PACKET_OFFSET] %u byte(s)", data.be16(12));
  DspNetBiosName(list, "[SOURCE_NAME] ", source, s.field(at(14, 47)));
  DspNetBiosName(list, "[DESTINATION_NAME] ", destination, s.field(at(48, 81)));
  if (!s) return;

  advance(kHeaderSize);
  netbios_payload(list, data.from(kHeaderSize));
}

}  // namespace wirelines
