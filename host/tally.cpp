#include "tally.hpp"

#include <algorithm>
#include <cstring>

namespace wirelines::host {

namespace {

constexpr std::uint8_t kIcmp = 1;
constexpr std::uint8_t kTcp = 6;
constexpr std::uint8_t kUdp = 17;
constexpr std::uint8_t kIcmpV6 = 58;

constexpr std::uint16_t kTypeIp6 = 0x86DD;
constexpr std::uint16_t kTypePppSession = 0x8864;

constexpr std::uint32_t kIpHeader = 20;
constexpr std::uint32_t kIp6Header = 40;

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

}  // namespace

// A frame and what the classifier says of it. Where the network header begins is found again here, because the
// classifier's own offsets are not the same for all carriers.
struct Tally::Packet {
  Packet(const Frame& its_frame, const Lift& its_lift)
      : frame(its_frame), lift(its_lift), length(its_frame.original_length) {
    CheckPacket(lift.data(), lift.length(), &s);
    is_ip6 = s.networkCode == WIRELINES_NET_IP6;
    is_ip = s.networkCode == WIRELINES_NET_IP || s.networkCode == WIRELINES_NET_IP_FRAGMENT ||
            (is_ip6 && s.etherType != kTypeIp6);
    if (!is_ip && !is_ip6) return;
    const auto link = s.frameKind == WIRELINES_ETHERNET_II ? 14U : s.frameKind == WIRELINES_SNAP ? 22U : 17U;
    ip = link + (s.etherType == kTypePppSession ? 8U : 0U);
    if (is_ip) {
      ip_header = (byte(ip) & 0x0FU) * 4;
      fragment = has(ip + kIpHeader) && (be16(ip + 6) & 0x3FFF) != 0;
    }
    ip6 = ip + ip_header;
  }

  // Bytes are those of the lifted frame.
  [[nodiscard]] std::uint32_t captured() const { return static_cast<std::uint32_t>(lift.length()); }
  [[nodiscard]] bool has(std::uint32_t bytes) const { return captured() >= bytes; }
  [[nodiscard]] bool cut() const { return frame.length < frame.original_length; }
  // A byte that was not captured reads as zero.
  [[nodiscard]] std::uint8_t byte(std::uint32_t offset) const { return has(offset + 1) ? lift.data()[offset] : 0; }
  [[nodiscard]] std::uint16_t be16(std::uint32_t offset) const {
    return static_cast<std::uint16_t>(byte(offset) << 8 | byte(offset + 1));
  }
  [[nodiscard]] bool wrong(int error) const { return (s.errorFlags & error & ~kAnyError) != 0; }

  // Whether the addresses and the protocol are there.
  [[nodiscard]] bool whole_ip() const { return is_ip && has(ip + kIpHeader); }
  [[nodiscard]] bool whole_ip6() const { return is_ip6 && has(ip6 + kIp6Header); }
  [[nodiscard]] bool incomplete() const { return (is_ip && !whole_ip()) || (is_ip6 && !whole_ip6()); }

  // What IPv4 or IPv6 carries: where it begins, and the bytes of it that are there.
  struct Part {
    std::uint32_t offset, size;
  };
  [[nodiscard]] Part message() const {
    const auto part = [this](std::uint32_t offset, std::uint32_t size) -> Part {
      return {offset, has(offset) ? std::min(size, captured() - offset) : 0};
    };
    if (!is_ip6) {
      const std::uint32_t datagram = be16(ip + 2);
      return part(ip + ip_header, datagram > ip_header ? datagram - ip_header : 0);
    }
    auto message = part(ip6 + kIp6Header, be16(ip6 + 4));
    for (std::uint8_t next = byte(ip6 + 6); next == 0;) {  // hop-by-hop options
      const std::uint32_t options = byte(message.offset + 1) * 8U + 8;
      if (message.size < options + 2) break;
      next = byte(message.offset);
      message = {message.offset + options, message.size - options};
    }
    return message;
  }

  [[nodiscard]] ProtocolKey key() const {
    ProtocolKey key;
    key.framing = framing_of(s.frameKind);
    if (s.frameKind == 0) return key;
    if (lift.made_up() && key.framing == kEthernetII) key.framing = kNoEthernet;
    if (s.frameKind == WIRELINES_LLC_S_U) {
      key.flags = ProtocolKey::kControl;
      return key;
    }
    const bool later = s.networkCode == WIRELINES_NET_IP_FRAGMENT;
    key.network = static_cast<std::uint16_t>(later ? static_cast<std::uint32_t>(WIRELINES_NET_IP) : s.networkCode);
    key.type = key.framing == kLlc ? static_cast<std::uint16_t>(s.dsap << 8 | s.ssap) : s.etherType;
    if (key.framing == kSnap && !has(22)) key.flags |= ProtocolKey::kIncomplete;
    if (incomplete()) key.flags |= ProtocolKey::kIncomplete;
    if (is_ip && is_ip6) key.flags |= ProtocolKey::kInIp;
    if (fragment) key.flags |= ProtocolKey::kFragment;
    if (is_ip || is_ip6 || s.networkCode == WIRELINES_NET_IPX) key.protocol = s.ipProtocol;
    return key;
  }

  const Frame& frame;
  const Lift& lift;
  std::uint32_t length;
  PacketSummary s{};
  bool is_ip = false;  // both for IPv6 in IPv4
  bool is_ip6 = false;
  bool fragment = false;
  std::uint32_t ip = 0;  // where the header begins
  std::uint32_t ip_header = 0;
  std::uint32_t ip6 = 0;
};

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
  const auto length = packet.length;
  const auto key = packet.key();
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
  constexpr std::int64_t kLast = 9'000'000'000;  // so that nanoseconds fit
  const auto time =
      static_cast<std::uint64_t>(std::clamp<std::int64_t>(frame.seconds, 0, kLast)) * 1'000'000'000 + frame.nanoseconds;
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
  const auto& s = packet.s;
  if (packet.whole_ip()) ip.add(s.srcIp, s.dstIp, packet.length);
  if (packet.whole_ip6()) ip6.add(s.srcIp6, s.dstIp6, packet.length);
  if (s.networkCode == WIRELINES_NET_IPX) {
    Key<10> source;
    Key<10> destination;
    std::memcpy(source.data(), s.ipxSrcNet, 4);
    std::memcpy(source.data() + 4, s.ipxSrcNode, 6);
    std::memcpy(destination.data(), s.ipxDstNet, 4);
    std::memcpy(destination.data() + 4, s.ipxDstNode, 6);
    ipx.add(source.data(), destination.data(), packet.length);
    const auto has_name = [](std::uint16_t socket) { return *NwSocketToName(socket) != '\0'; };
    const bool source_tells = has_name(s.ipxSrcSocket) && !has_name(s.ipxDstSocket);
    add_port(PortKind::kIpx, source_tells ? s.ipxSrcSocket : s.ipxDstSocket, packet.length);
  }
  if ((packet.is_ip || packet.is_ip6) && (s.srcPort != 0 || s.dstPort != 0)) {
    const bool tcp = s.ipProtocol == kTcp;
    const auto& services = tcp ? tcp_services_ : udp_services_;
    const auto port = service(s.srcPort, s.dstPort, [&services](std::uint16_t number) { return services[number]; });
    add_port(tcp ? PortKind::kTcp : PortKind::kUdp, port, packet.length);
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
    const bool later = packet.s.networkCode == WIRELINES_NET_IP_FRAGMENT;  // the classifier looks no further into it
    if (!packet.whole_ip() || later || (packet.cut() && !packet.has(packet.ip + packet.ip_header))) {
      verdicts.not_verified++;
    } else if (packet.be16(packet.ip + 10) == 0) {
      verdicts.none++;
    } else {
      (packet.wrong(WIRELINES_BAD_IP) ? verdicts.wrong : verdicts.right)++;
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
    switch (packet.s.ipProtocol) {
      case kTcp: return {kTcpChecksum, WIRELINES_BAD_TCP, 20, 16, true};
      case kUdp: return {kUdpChecksum, WIRELINES_BAD_UDP, 8, 6, true};
      case kIcmp: return {kIcmpChecksum, WIRELINES_BAD_ICMP, 4, 2, false};
      case kIcmpV6: return {kIcmpChecksum, WIRELINES_BAD_ICMP, 4, 2, true};
      default: return {kChecksums, 0, 0, 0, false};
    }
  }();
  // ICMP belongs to IPv4 and ICMPv6 to IPv6; the classifier verifies neither over the other.
  if (kind.row == kChecksums || packet.s.ipProtocol == (packet.is_ip6 ? kIcmp : kIcmpV6)) return;
  auto& verdicts = checksums[kind.row];
  const auto message = packet.message();
  if (packet.cut() || packet.fragment || message.size < kind.header) {
    verdicts.not_verified++;
  } else if (kind.may_be_zero && packet.be16(message.offset + kind.field) == 0) {
    verdicts.none++;
  } else {
    (packet.wrong(kind.error) ? verdicts.wrong : verdicts.right)++;
  }
}

}  // namespace wirelines::host
