// The classifier of frames. It reads the headers that the decoders read, makes no line, and writes only what it found:
// a host may keep other things in the fields of the layers that a frame does not have.
#include "core/classifier.hpp"

#include <algorithm>
#include <cstring>

#include "core/checksum.hpp"
#include "core/datalink.hpp"
#include "core/protocol_names.hpp"
#include "pppoe/ppp.hpp"

namespace wirelines {

namespace {

template <std::size_t N>
void copy(uint8_t (&to)[N], const Bytes& from, uint32_t offset) {
  if (from.has(offset + N - 1)) {
    std::memcpy(to, from.data() + offset, N);
  } else {
    for (uint32_t i = 0; i < N; ++i) to[i] = from.u8(offset + i);
  }
}

void move_network(PacketSummary& s, uint32_t length) {
  s.networkOffset = static_cast<uint16_t>(s.networkOffset + length);
}

void move_transport(PacketSummary& s, uint32_t length) {
  s.transportOffset = static_cast<uint16_t>(s.transportOffset + length);
}

void move_both(PacketSummary& s, uint32_t length) {
  move_network(s, length);
  move_transport(s, length);
}

void add_error(PacketSummary& s, uint32_t error) {
  s.errorFlags = static_cast<uint8_t>(s.errorFlags | error);
}

void take_ports(PacketSummary& s, const Bytes& message) {
  s.srcPort = message.be16(0);
  s.dstPort = message.be16(2);
}

// Kept: over IPv6, UDP and ICMPv6 are wrong only where the two sums together fall short of 65535.
bool wrong_over_ip6(const Bytes& message, const PseudoHeader& pseudo) {
  return uint32_t{IpCheckSum(message)} + IpCheckSum(pseudo) < 65535;
}

// Of a message whose later fragments are to come, neither ports nor checksum count.
void check_tcp(const Bytes& message, const PseudoHeader& pseudo, bool more_fragments, PacketSummary& s) {
  if (message.size() < 20) return;
  s.typeCode = message.u8(13);
  if (more_fragments) return;
  take_ports(s, message);
  if (message.be16(16) != 0 && CulUdpChksum(message, pseudo) != 0) add_error(s, WIRELINES_BAD_TCP);
}

void check_udp(const Bytes& message, const PseudoHeader& pseudo, bool more_fragments, bool over_ip6, PacketSummary& s) {
  if (message.size() < 8 || more_fragments) return;
  take_ports(s, message);
  if (message.be16(6) == 0) return;
  const bool wrong = over_ip6 ? wrong_over_ip6(message, pseudo) : CulUdpChksum(message, pseudo) != 0;
  if (wrong) add_error(s, WIRELINES_BAD_UDP);
}

void check_icmp(const Bytes& message, bool more_fragments, PacketSummary& s) {
  if (message.size() < 4) return;
  s.typeCode = message.u8(0);
  if (!more_fragments && IpCheckSum(message) != 0) add_error(s, WIRELINES_BAD_ICMP);
}

void check_icmp_v6(const Bytes& message, const PseudoHeader& pseudo, PacketSummary& s) {
  if (message.size() < 4) return;
  s.typeCode = message.u8(0);
  if (message.be16(2) != 0 && wrong_over_ip6(message, pseudo)) add_error(s, WIRELINES_BAD_ICMP);
}

void check_arp(const Bytes& header, PacketSummary& s) {
  s.typeCode = header.u8(7);
  copy(s.srcIp, header, 14);
  copy(s.dstIp, header, 24);
}

void check_llc(const Bytes& frame, PacketSummary& s) {
  constexpr uint32_t kHeader = 17;
  const Bytes payload = frame.from(kHeader);
  switch (frame.be16(14)) {
    case 0x0606:
      move_both(s, kHeader);
      s.networkCode = WIRELINES_NET_IP;
      CheckIp(payload, s);
      break;
    case 0xE0E0:
      s.networkCode = WIRELINES_NET_IPX;
      CheckIpx(payload, s);
      break;
    case 0xF0F0: s.networkCode = WIRELINES_NET_NETBIOS; break;
    case 0x8080: s.networkCode = WIRELINES_NET_XNS; break;
    default: break;
  }
}

void check_type(const Bytes& frame, uint32_t header_length, uint16_t type, PacketSummary& s) {
  const Bytes payload = frame.from(header_length);
  s.etherType = type;
  switch (type) {
    case 0x0800:
      move_both(s, header_length);
      s.networkCode = WIRELINES_NET_IP;
      CheckIp(payload, s);
      break;
    case 0x86DD:
      move_both(s, header_length);
      s.networkCode = WIRELINES_NET_IP6;
      CheckIpV6(payload, s);
      break;
    case 0x0806:
      s.networkCode = WIRELINES_NET_ARP;
      check_arp(payload, s);
      break;
    case 0x8035:
      s.networkCode = WIRELINES_NET_RARP;
      check_arp(payload, s);
      break;
    case 0x8137:
      s.networkCode = WIRELINES_NET_IPX;
      CheckIpx(payload, s);
      break;
    case 0x0600: s.networkCode = WIRELINES_NET_XNS; break;
    case 0x809B: s.networkCode = WIRELINES_NET_APPLETALK; break;
    case 0x80F3: s.networkCode = WIRELINES_NET_AARP; break;
    case 0x8863:
      s.networkCode = WIRELINES_NET_PPPOE;
      if (payload.size() >= 2) s.typeCode = payload.u8(1);
      break;
    case 0x8864:
      // Kept: over SNAP the offsets become 27, three bytes before the packet in the session.
      move_both(s, header_length == 14 ? 22 : 27);
      s.networkCode = WIRELINES_NET_PPPOE;
      CheckPppSession(payload, s);
      break;
    default: break;
  }
}

}  // namespace

void CheckPacket(const Bytes& frame, PacketSummary& summary) {
  summary.frameKind = 0;
  summary.networkCode = 0;
  summary.ipProtocol = 0;
  summary.networkOffset = 0;
  summary.transportOffset = 0;
  if (frame.size() < 17) return;

  const FrameKind kind = CheckFrameType(frame);
  summary.frameKind = static_cast<uint32_t>(kind);
  if (kind != FrameKind::kEthernetII) {
    summary.dsap = frame.u8(14);
    summary.ssap = frame.u8(15);
  }
  switch (kind) {
    case FrameKind::kRaw8023:
      summary.networkCode = WIRELINES_NET_IPX;
      CheckIpx(frame.from(14), summary);
      break;
    case FrameKind::kLlc: check_llc(frame, summary); break;
    case FrameKind::kLlcSU: break;
    case FrameKind::kSnap:
      if (frame.size() >= 22) check_type(frame, 22, frame.be16(20), summary);
      break;
    case FrameKind::kEthernetII: check_type(frame, 14, frame.be16(12), summary); break;
  }
}

void CheckIp(const Bytes& header, PacketSummary& summary) {
  if (header.size() < 20) return;
  const uint32_t header_length = (header.u8(0) & 15U) * 4;
  const uint32_t flags = header.be16(6);
  const bool more_fragments = (flags & 0x2000) != 0;
  const bool later_fragment = (flags & 0x1FFF) != 0;

  copy(summary.srcIp, header, 12);
  copy(summary.dstIp, header, 16);
  summary.ipProtocol = header.u8(9);
  if (more_fragments || later_fragment) summary.srcPort = summary.dstPort = 0;
  if (later_fragment) {
    summary.networkCode = WIRELINES_NET_IP_FRAGMENT;
    return;
  }
  if (header.be16(10) != 0 && IpCheckSum(header.first(static_cast<int32_t>(header_length))) != 0) {
    add_error(summary, WIRELINES_BAD_IP);
  }

  move_transport(summary, header_length);
  const Bytes payload = header.sub(header_length, header.be16(2) - static_cast<int32_t>(header_length));
  switch (summary.ipProtocol) {
    case kTcp: check_tcp(payload, IpPsuadoHeder(header), more_fragments, summary); break;
    case kUdp: check_udp(payload, IpPsuadoHeder(header), more_fragments, false, summary); break;
    case kIcmp: check_icmp(payload, more_fragments, summary); break;
    case kIp6InIp:
      // Kept: the transport offset counts the IPv4 header twice.
      move_both(summary, header_length);
      summary.networkCode = WIRELINES_NET_IP6;
      CheckIpV6(payload, summary);
      break;
    default: break;
  }
}

void CheckIpV6(const Bytes& header, PacketSummary& summary) {
  constexpr int32_t kHeader = 40;
  if (header.size() < kHeader) return;

  copy(summary.srcIp6, header, 8);
  copy(summary.dstIp6, header, 24);
  move_transport(summary, kHeader);
  summary.srcPort = summary.dstPort = 0;

  uint8_t next = header.u8(6);
  Bytes data = header.sub(kHeader, std::min<int32_t>(header.be16(4), header.size() - kHeader));
  while (next == kHopByHop) {
    const Bytes rest = data.from(data.u8(1) * 8U + 8);
    if (rest.size() < 2) break;
    next = data.u8(0);
    data = rest;
  }
  summary.ipProtocol = next;

  PseudoHeader pseudo = Ip6PseudoHeader(header);
  pseudo.upper_length = static_cast<uint32_t>(data.size());
  pseudo.protocol = next;
  switch (next) {
    case kTcp: check_tcp(data, pseudo, false, summary); break;
    case kUdp: check_udp(data, pseudo, false, true, summary); break;
    case kIcmpV6: check_icmp_v6(data, pseudo, summary); break;
    default: break;
  }
}

void CheckIpx(const Bytes& header, PacketSummary& summary) {
  summary.ipProtocol = header.u8(5);
  copy(summary.ipxDstNet, header, 6);
  copy(summary.ipxDstNode, header, 10);
  summary.ipxDstSocket = header.be16(16);
  copy(summary.ipxSrcNet, header, 18);
  copy(summary.ipxSrcNode, header, 22);
  summary.ipxSrcSocket = header.be16(28);
}

void CheckPppSession(const Bytes& header, PacketSummary& summary) {
  constexpr uint32_t kHeader = 8;  // PPPoE's and the protocol
  if (header.size() < static_cast<int32_t>(kHeader)) return;
  switch (header.be16(6)) {
    case kPppIp:
      summary.networkCode = WIRELINES_NET_IP;
      CheckIp(header.from(kHeader), summary);
      break;
    case kPppLcp: summary.networkCode = WIRELINES_NET_LCP; break;
    case kPppChap: summary.networkCode = WIRELINES_NET_CHAP; break;
    case kPppPap: summary.networkCode = WIRELINES_NET_PAP; break;
    case kPppIpcp: summary.networkCode = WIRELINES_NET_IPCP; break;
    default: break;
  }
}

}  // namespace wirelines
