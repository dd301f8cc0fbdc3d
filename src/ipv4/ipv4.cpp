// IPv4 (RFC 791): a header of 20 to 60 bytes, then the transport that its protocol number names.
#include "ipv4/ipv4.hpp"

#include <algorithm>

#include "core/checksum.hpp"
#include "core/datablock.hpp"
#include "core/names.hpp"
#include "core/nicknames.hpp"
#include "core/printers.hpp"
#include "core/protocol_names.hpp"
#include "core/section.hpp"
#include "ipv4/icmp.hpp"
#include "ipv4/igmp.hpp"
#include "ipv4/transport.hpp"
#include "ipv6/ipv6.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(47, 4, 3);
constexpr int32_t kHeader = 20;  // without options

constexpr BlockLook kFragment = {.label = "[IP Fragment Data]"};

constexpr auto kPrecedences = names({
    {0, "Routine"},
    {1, "Priority"},
    {2, "Immediate"},
    {3, "Flash"},
    {4, "Flash Override"},
    {5, "CRITIC/ECP"},
    {6, "Internetwork Control"},
    {7, "Network Control"},
});
static_assert(kPrecedences.distinct());

constexpr auto kOptions = names({
    {0, "End of Option list"},
    {1, "No Operation"},
    {2, "Security"},
    {3, "Loose Source Routing"},
    {4, "Internet Timestamp"},
    {5, "Exp. Security"},
    {7, "Record Route"},
    {8, "Stream ID"},
    {9, "Strict Source Routing"},
});
static_assert(kOptions.distinct());

void type_of_service_line(Section& s, uint32_t t) {
  constexpr Range kRange = at(1);
  if (t == 15) {
    s.line(kRange, "[Type of Service] %u (Max Security)", t);
  } else if (t == 0) {
    s.line(kRange, "[Type of Service] %u (Normal)", t);
  } else {
    s.line(kRange, "[TOS] [Delay] %u [Throughput] %u [Reliablity] %u [Cost] %u", t >> 3, t >> 2 & 1, t >> 1 & 1, t & 1);
  }
}

// Kept: flag, class and number of an option come from three successive bytes, and the steps follow from that.
void option_lines(Section& s, Bytes header, uint32_t end) {
  for (uint32_t p = kHeader; p < end && header.has(p) && s;) {
    const uint32_t option_class = header.u8(p + 1) >> 5 & 3;
    const uint32_t number = header.u8(p + 2) & 31;
    s.detail(at(p), "[copied flag] %u", header.u8(p) >> 7);
    if (option_class == 2) {
      s.detail(at(p + 1), "[option class] 2 (debugging and measurement)");
    } else {
      s.detail(at(p + 1), "[option class] %u", option_class);
    }
    const std::string_view name = kOptions(number);
    if (name.empty()) {
      s.detail(at(p + 2), "[option no] %u", number);
    } else {
      s.detail(at(p + 2), "[option no] %u (%s)", number, name);
    }
    switch (number) {
      case 0: return;
      case 1: p += 3; break;
      case 8: p += 6; break;
      default: p += 2U + header.u8(p + 3); break;
    }
  }
}

void dispatch_protocol(LineList& list, uint8_t protocol, Bytes payload, const Carrier& carrier) {
  switch (protocol) {
    case kIcmp: IcmpAnalyze(list, payload, carrier.more_fragments); break;
    case kIgmp: IgmpAnalyze(list, payload, carrier.more_fragments); break;
    case kTcp: TcpAnalyze(list, payload, carrier); break;
    case kUdp: UdpAnalyze(list, payload, carrier); break;
    case kIp6InIp: Ip6Analyze(list, payload); break;
    default: remainder(list, payload); break;
  }
}

}  // namespace

void IpAnalyze(LineList& list, Bytes data) {
  if (data.size() < kHeader) return remainder(list, data);

  const uint32_t header_length = (data.u8(0) & 15U) * 4;
  const uint8_t service = data.u8(1);
  const uint32_t total_length = data.be16(2);
  const uint32_t flags = data.be16(6);
  const uint32_t fragment_offset = (flags & 0x1FFF) * 8;
  const uint8_t protocol = data.u8(9);
  const uint16_t checksum = data.be16(10);
  const Bytes first_address = data.sub(12, 4);
  const Bytes second_address = data.sub(16, 4);
  const TextBuffer first = ip_text(first_address);
  const TextBuffer second = ip_text(second_address);

  Section s(list, kLayer);
  s.title(at(0, header_length - 1), "IP Header [%s] --> [%s]", first.view(), second.view());
  s.line(at(0), "[Version] %u", data.u8(0) >> 4);
  DspHeaderLength(list, header_length, s.field(at(0)));
  s.line(at(1), "[Precedence] %u (%s)", service >> 5, kPrecedences(service >> 5));
  type_of_service_line(s, service >> 1 & 15U);
  s.line(at(2, 3), "[Total Length] %u (0x%0.4X) byte(s)%s", total_length, total_length,
         total_length > static_cast<uint32_t>(data.size()) || total_length < kHeader ? " (NG)" : "");
  DspId(list, data.be16(4), s.field(at(4, 5)));
  s.line(at(6, 7), "[Flags] [Don't Fragment] %u [More Fragments] %u", flags >> 14 & 1, flags >> 13 & 1);
  s.value(at(6, 7), "[Fragment offset] %u (0x%0.4X) byte(s)", fragment_offset);
  s.line(at(8), "[TTL] %u seconds/hops", data.u8(8));
  s.line(at(9), "[Protocol] %u %s", protocol, parens(IpProtocolToName(protocol)));
  if (checksum == 0) {
    s.line(at(10, 11), "[Checksum] None");
  } else if (IpCheckSum(data.sub(0, static_cast<int32_t>(header_length))) == 0) {
    s.line(at(10, 11), "[Checksum] 0x%0.4X (OK)", checksum);
  } else {
    s.line(at(10, 11), "[Checksum] 0x%0.4X (NG)", checksum);
  }
  // Kept: the labels of these two are the other way round than the title shows the addresses.
  s.line(at(12, 15), "[Destination Address] %s %s", first.view(), parens(ip_nickname(first.bytes)));
  s.line(at(16, 19), "[Source Address] %s %s", second.view(), parens(ip_nickname(second.bytes)));
  if (header_length <= kHeader) {
    s.absent("[Option] None");
  } else {
    s.heading(at(20, header_length - 1), "[Option]");
    option_lines(s, data, header_length);
  }
  if (!s) return;

  const int32_t present = std::min(data.size(), static_cast<int32_t>(total_length));
  const Bytes payload = data.sub(header_length, present - static_cast<int32_t>(header_length));
  advance(header_length);
  if (fragment_offset != 0) return data_block(list, payload, state().frameOffset, kFragment);
  dispatch_protocol(list, protocol, payload, {IpPsuadoHeder(data), (flags & 0x2000) != 0});
}

}  // namespace wirelines
