// IPv6 (RFC 8200): a header of 40 bytes, hop-by-hop options, then the transport that the last next-header value names.
// No other extension header is taken apart: it begins a data block.
#include "ipv6/ipv6.hpp"

#include <algorithm>

#include "core/datablock.hpp"
#include "core/nicknames.hpp"
#include "core/protocol_names.hpp"
#include "core/section.hpp"
#include "ipv4/transport.hpp"
#include "ipv6/icmpv6.hpp"
#include "ipv6/ip6_address.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(45, 1, 3);
constexpr int32_t kHeader = 40;

constexpr uint32_t kAddressRoom = 59;  // characters of an address and its nickname together

void DspNextHeader(Section& s, uint8_t next, Range range) {
  s.line(range, "[Next Header] %u %s", next, parens(IpProtocolToName(next)));
}

void DspNextHeaderLength(Section& s, uint32_t units, Range range) {
  s.line(range, "[Next Header Length] %u (%u byte(s))", units, units * 8);
}

std::string_view fitting(const Nickname& name, const TextBuffer& address) {
  return name.length() + address.length > kAddressRoom ? std::string_view() : std::string_view(name);
}

void Ip6HopByHopAnalyze(LineList& list, Bytes data, uint32_t header_length) {
  Section s(list, kLayer, Section::Mark::kInside);
  s.line(at(0, header_length - 1), "--- Hop-by-Hop Options header ------------");
  DspNextHeader(s, data.u8(0), at(0));
  DspNextHeaderLength(s, data.u8(1), at(1));
}

void Ip6NextHeaderAnalyze(LineList& list, Bytes data, uint8_t next, Carrier& carrier) {
  // A loop: a packet has room for thousands of hop-by-hop headers.
  while (next == kHopByHop) {
    const uint32_t header_length = data.u8(1) * 8U + 8;
    Ip6HopByHopAnalyze(list, data, header_length);
    if (state().out_of_memory) return;
    next = data.u8(0);
    advance(header_length);
    data = data.from(header_length);
    if (data.size() < 2) return;
  }

  carrier.pseudo.upper_length = static_cast<uint32_t>(data.size());
  carrier.pseudo.protocol = next;
  switch (next) {
    case kTcp: TcpAnalyze(list, data, carrier); break;
    case kUdp: UdpAnalyze(list, data, carrier); break;
    case kIcmpV6: IcmpV6Analyze(list, data, carrier.pseudo); break;
    default: remainder(list, data); break;
  }
}

}  // namespace

void Ip6Analyze(LineList& list, Bytes data) {
  if (data.size() < kHeader) return remainder(list, data);

  const uint16_t payload_length = data.be16(4);
  const Bytes source_address = data.sub(8, 16);
  const Bytes destination_address = data.sub(24, 16);
  const TextBuffer source = FormatIp6AddrSimple2(source_address);
  const TextBuffer destination = FormatIp6AddrSimple2(destination_address);

  Section s(list, kLayer);
  s.title(at(0, 39), "IPv6 Header [...%s] --> [...%s]", FormatIp6AddrSimple(source_address).view(),
          FormatIp6AddrSimple(destination_address).view());
  s.line(at(0), "[Version] %u", data.u8(0) >> 4);
  // Kept: only the half of the traffic class that stands in the second byte.
  s.line(at(0, 1), "[Traffic Class] %u", data.u8(1) >> 4);
  s.value(at(1, 3), "[Flow Label] %u (0x%0.8X)", data.be32(0) & 0xFFFFF);
  s.value(at(4, 5), "[Payload length] %u (0x%0.4X) byte(s)", payload_length);
  DspNextHeader(s, data.u8(6), at(6));
  s.line(at(7), "[Hop Limit] %u hop(s)", data.u8(7));
  s.line(at(8, 23), "[Source Address] %s %s", source.view(), parens(fitting(ip6_nickname(source.bytes), source)));
  s.line(at(24, 39), "[Destination Address] %s %s", destination.view(),
         parens(fitting(ip6_nickname(destination.bytes), destination)));
  if (!s) return;

  Carrier carrier{Ip6PseudoHeader(data)};
  advance(kHeader);
  const Bytes payload = data.sub(kHeader, std::min<int32_t>(payload_length, data.size() - kHeader));
  Ip6NextHeaderAnalyze(list, payload, data.u8(6), carrier);
}

}  // namespace wirelines
