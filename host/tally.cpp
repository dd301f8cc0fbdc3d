#include "tally.hpp"

#include <algorithm>
#include <cstring>

#include "packet.hpp"

namespace wirelines::host {

namespace {

constexpr std::uint8_t kIcmp = 1;
constexpr std::uint8_t kTcp = 6;
constexpr std::uint8_t kUdp = 17;
constexpr std::uint8_t kIcmpV6 = 58;

constexpr int kAnyError = 0x80;  // set with every bit of errorFlags

Framing framing_of(std::uint32_t frame_kind) {
  switch (frame_kind) {
    case WIRELINES_RAW_802_3: return kRaw8023;
    case WIRELINES_LLC:
    case WIRELINES_LLC_S_U: return kLlc;
    case WIRELINES_SNAP: return kSnap;
    case WIRELINES_ETHERNET_II: return kEthernetII;
    default: return kTooShort;
  }
}

// The port of the two that tells the service: a system port, or one that has a name, or the smaller one.
template <typename HasName>
std::uint16_t service(std::uint16_t a, std::uint16_t b, HasName has_name) {
  const auto rank = [&has_name](std::uint16_t port) { return port < 1024 ? 0 : has_name(port) ? 1 : 2; };
  if (a == 0 || b == 0) return std::max(a, b);
  const int rank_a = rank(a);
  const int rank_b = rank(b);
  return rank_a == rank_b ? std::min(a, b) : rank_a < rank_b ? a : b;
}

ProtocolKey key_of(const Packet& packet) {
  const auto& s = packet.summary;
  ProtocolKey key;
  key.framing = framing_of(s.frameKind);
  if (s.frameKind == 0) return key;
  if (packet.lift.made_up() && key.framing == kEthernetII) key.framing = kNoEthernet;
  if (s.frameKind == WIRELINES_LLC_S_U) {
    key.flags = ProtocolKey::kControl;
    return key;
  }
  const bool later = s.networkCode == WIRELINES_NET_IP_FRAGMENT;
  key.network = static_cast<std::uint16_t>(later ? static_cast<std::uint32_t>(WIRELINES_NET_IP) : s.networkCode);
  key.type = key.framing == kLlc ? static_cast<std::uint16_t>(s.dsap << 8 | s.ssap) : s.etherType;
  if (key.framing == kSnap && !packet.has(packet.payload)) key.flags |= ProtocolKey::kIncomplete;
  if (packet.incomplete()) key.flags |= ProtocolKey::kIncomplete;
  if (packet.is_ip && packet.is_ip6) key.flags |= ProtocolKey::kInIp;
  if (packet.fragment) key.flags |= ProtocolKey::kFragment;
  if (packet.is_ip || packet.is_ip6 || s.networkCode == WIRELINES_NET_IPX) key.protocol = s.ipProtocol;
  return key;
}

bool wrong(const Packet& packet, int error) {
  return (packet.summary.errorFlags & error & ~kAnyError) != 0;
}

}  // namespace

Key<8> ProtocolKey::pack() const {
  return {framing,
          flags,
          protocol,
          0,
          static_cast<std::uint8_t>(network >> 8),
          static_cast<std::uint8_t>(network),
          static_cast<std::uint8_t>(type >> 8),
          static_cast<std::uint8_t>(type)};
}

ProtocolKey ProtocolKey::unpack(const Key<8>& key) {
  ProtocolKey result;
  result.framing = static_cast<Framing>(key[0]);
  result.flags = key[1];
  result.protocol = key[2];
  result.network = static_cast<std::uint16_t>(key[4] << 8 | key[5]);
  result.type = static_cast<std::uint16_t>(key[6] << 8 | key[7]);
  return result;
}

template <std::size_t N, typename T>
T* Layer<N, T>::add(const std::uint8_t* source, const std::uint8_t* destination, std::uint32_t length) {
  total.add(length);
  const bool forth = std::memcmp(source, destination, N) <= 0;
  Key<2 * N> pair;
  std::memcpy(pair.data(), forth ? source : destination, N);
  std::memcpy(pair.data() + N, forth ? destination : source, N);
  if (auto* conversation = conversations.enter(pair)) {
    (forth ? conversation->forth : conversation->back).add(length);
  } else {
    conversations_missed.add(length);
  }

  Key<N> address;
  std::memcpy(address.data(), destination, N);
  if (auto* receiver = talkers.enter(address)) {
    receiver->received.add(length);
  } else {
    talkers_missed.received.add(length);
  }
  std::memcpy(address.data(), source, N);
  T* const sender = talkers.enter(address);
  (sender != nullptr ? sender->sent : talkers_missed.sent).add(length);
  return sender;
}

Tally::Tally(bool lift_tags, std::size_t bound)
    : stations(bound), ip(bound), ip6(bound), ipx(bound), ports(bound), lift_(lift_tags) {
  for (std::uint32_t port = 0; port < 65536; port++) {
    tcp_services_[port] = *PortToName(static_cast<std::uint16_t>(port), kTcp) != '\0';
    udp_services_[port] = *PortToName(static_cast<std::uint16_t>(port), kUdp) != '\0';
  }
}

void Tally::add(const Frame& frame) {
  lift_.take(frame);
  const Packet packet(frame, lift_);
  const auto length = frame.original_length;
  const auto key = key_of(packet);
  add_time(frame);
  add_size(length);
  total.add(length);
  if (packet.cut()) cut.add(frame.original_length - frame.length);
  framings[key.framing].add(length);
  if (auto* count = protocols.enter(key.pack())) {
    count->add(length);
  } else {
    protocols_missed.add(length);
  }
  if (packet.has(12) && !lift_.made_up()) {
    if (auto* sender = stations.add(lift_.data() + 6, lift_.data(), length)) sender->framings[key.framing].add(length);
  }
  add_network(packet);
  add_checksums(packet);
}

void Tally::add_time(const Frame& frame) {
  const auto time = static_cast<std::uint64_t>(time_of(frame));
  first_time = total.frames == 0 ? time : std::min(first_time, time);
  last_time = std::max(last_time, time);
  timeline.add(time, frame.original_length);
}

void Tally::add_size(std::uint32_t length) {
  shortest = total.frames == 0 ? length : std::min(shortest, length);
  longest = std::max(longest, length);
  std::size_t row = 0;
  while (row < kSizeLimits.size() && length >= kSizeLimits[row]) row++;
  sizes[row].add(length);
}

void Tally::add_network(const Packet& packet) {
  const auto& s = packet.summary;
  const auto length = packet.frame.original_length;
  if (packet.whole_ip()) ip.add(s.srcIp, s.dstIp, length);
  if (packet.whole_ip6()) ip6.add(s.srcIp6, s.dstIp6, length);
  if (s.networkCode == WIRELINES_NET_IPX) {
    Key<10> source;
    Key<10> destination;
    std::memcpy(source.data(), s.ipxSrcNet, 4);
    std::memcpy(source.data() + 4, s.ipxSrcNode, 6);
    std::memcpy(destination.data(), s.ipxDstNet, 4);
    std::memcpy(destination.data() + 4, s.ipxDstNode, 6);
    ipx.add(source.data(), destination.data(), length);
    const auto has_name = [](std::uint16_t socket) { return *NwSocketToName(socket) != '\0'; };
    const bool source_tells = has_name(s.ipxSrcSocket) && !has_name(s.ipxDstSocket);
    add_port(PortKind::kIpx, source_tells ? s.ipxSrcSocket : s.ipxDstSocket, length);
  }
  if ((packet.is_ip || packet.is_ip6) && (s.srcPort != 0 || s.dstPort != 0)) {
    const bool tcp = s.ipProtocol == kTcp;
    const auto& services = tcp ? tcp_services_ : udp_services_;
    const auto port = service(s.srcPort, s.dstPort, [&services](std::uint16_t number) { return services[number]; });
    add_port(tcp ? PortKind::kTcp : PortKind::kUdp, port, length);
  }
}

void Tally::add_port(PortKind kind, std::uint16_t port, std::uint32_t length) {
  const Key<3> key{static_cast<std::uint8_t>(kind), static_cast<std::uint8_t>(port >> 8),
                   static_cast<std::uint8_t>(port)};
  if (auto* count = ports.enter(key)) {
    count->add(length);
  } else {
    ports_missed.add(length);
  }
}

void Tally::add_checksums(const Packet& packet) {
  if (packet.is_ip) {
    auto& verdicts = checksums[kIpChecksum];
    const bool later =
        packet.summary.networkCode == WIRELINES_NET_IP_FRAGMENT;  // the classifier looks no further into it
    if (!packet.whole_ip() || later || (packet.cut() && !packet.whole_ip_options())) {
      verdicts.not_verified++;
    } else if (packet.be16(packet.ip + 10) == 0) {
      verdicts.none++;
    } else {
      (wrong(packet, WIRELINES_BAD_IP) ? verdicts.wrong : verdicts.right)++;
    }
  }
  if ((packet.is_ip || packet.is_ip6) && !packet.incomplete()) add_transport_checksum(packet);
}

void Tally::add_transport_checksum(const Packet& packet) {
  struct Kind {
    Checksum row;
    int error;
    std::uint32_t header, field;
    bool may_be_zero;
  };
  const auto kind = [&packet]() -> Kind {
    switch (packet.summary.ipProtocol) {
      case kTcp: return {kTcpChecksum, WIRELINES_BAD_TCP, 20, 16, true};
      case kUdp: return {kUdpChecksum, WIRELINES_BAD_UDP, 8, 6, true};
      case kIcmp: return {kIcmpChecksum, WIRELINES_BAD_ICMP, 4, 2, false};
      case kIcmpV6: return {kIcmpChecksum, WIRELINES_BAD_ICMP, 4, 2, true};
      default: return {kChecksums, 0, 0, 0, false};
    }
  }();
  // ICMP belongs to IPv4 and ICMPv6 to IPv6; the classifier verifies neither over the other.
  if (kind.row == kChecksums || packet.summary.ipProtocol == (packet.is_ip6 ? kIcmp : kIcmpV6)) return;
  auto& verdicts = checksums[kind.row];
  const auto message = packet.message();
  if (packet.cut() || packet.fragment || message.size < kind.header) {
    verdicts.not_verified++;
  } else if (kind.may_be_zero && packet.be16(message.offset + kind.field) == 0) {
    verdicts.none++;
  } else {
    (wrong(packet, kind.error) ? verdicts.wrong : verdicts.right)++;
  }
}

}  // namespace wirelines::host
