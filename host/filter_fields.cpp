#include "filter_fields.hpp"

#include <algorithm>
#include <cstring>

#include "labels.hpp"
#include "plain.hpp"

namespace wirelines::host {

namespace {

constexpr std::uint8_t kIcmp = 1;
constexpr std::uint8_t kIgmp = 2;
constexpr std::uint8_t kTcp = 6;
constexpr std::uint8_t kUdp = 17;
constexpr std::uint8_t kIcmpV6 = 58;

constexpr std::uint16_t kTypeIp6 = 0x86DD;
constexpr std::uint16_t kTypePppoeDiscovery = 0x8863;
constexpr std::uint16_t kTypePppoeSession = 0x8864;

using P = FilterPacket;
using Values = std::vector<FilterValue>;

template <std::uint32_t... Codes>
bool network(P& p) {
  return ((p.summary.record.networkCode == Codes) || ...);
}

// Whether a layer whose titles have one of these codes was decoded.
template <std::uint32_t... Codes>
bool decoded(P& p) {
  bool found = false;
  p.lines().each([&found](const DisplayLine& line) {
    found = found || (line.level == 0 && ((line.protocolCode == Codes) || ...));
  });
  return found;
}

bool is_ip(P& p) {
  const bool in_ip = network<WIRELINES_NET_IP6>(p) && p.summary.record.etherType != kTypeIp6;
  return in_ip || network<WIRELINES_NET_IP, WIRELINES_NET_IP_FRAGMENT>(p);
}

bool is_arp(P& p) {
  return network<WIRELINES_NET_ARP, WIRELINES_NET_RARP>(p);
}

bool is_llc(P& p) {
  return p.summary.record.frameKind == WIRELINES_LLC || p.summary.record.frameKind == WIRELINES_LLC_S_U;
}

template <std::uint8_t Protocol>
bool carries(P& p) {
  return p.summary.has(Summary::kProtocol) && p.summary.record.ipProtocol == Protocol &&
         network<WIRELINES_NET_IP, WIRELINES_NET_IP_FRAGMENT, WIRELINES_NET_IP6>(p);
}

// Of a fragment, and where the header is not whole, the classifier says 0.
bool has_ports(P& p) {
  const auto& record = p.summary.record;
  return (carries<kTcp>(p) || carries<kUdp>(p)) && p.summary.has(Summary::kPorts) &&
         (record.srcPort != 0 || record.dstPort != 0);
}

template <std::uint8_t Protocol>
bool has_ports_of(P& p) {
  return carries<Protocol>(p) && has_ports(p);
}

template <std::uint8_t Flag>
bool tcp_flag(P& p) {
  return carries<kTcp>(p) && p.summary.has(Summary::kType) && (p.summary.record.typeCode & Flag) != 0;
}

template <int Bit>
bool wrong_checksum(P& p) {
  constexpr int kAnyError = 0x80;
  return (p.summary.wrong_checksums() & Bit & ~kAnyError) != 0;
}

// A header made up has no destination, and a source only where its frame told one.
bool has_source(P& p) {
  const auto& lift = p.scratch.lift;
  if (lift.length() < 12) return false;
  return !lift.made_up() || std::any_of(lift.data() + 6, lift.data() + 12, [](int byte) { return byte != 0; });
}

bool has_destination(P& p) {
  return p.scratch.lift.length() >= 6 && !p.scratch.lift.made_up();
}

void add(Values& values, const std::uint8_t* bytes, std::size_t size) {
  values.push_back({0, {reinterpret_cast<const char*>(bytes), size}});
}

void source(P& p, Values& values) {
  if (has_source(p)) add(values, p.scratch.lift.data() + 6, 6);
}

void destination(P& p, Values& values) {
  if (has_destination(p)) add(values, p.scratch.lift.data(), 6);
}

// Network and node follow one another in the record.
constexpr std::size_t kIpxAddress = 10;
static_assert(offsetof(PacketSummary, ipxSrcNode) == offsetof(PacketSummary, ipxSrcNet) + 4);
static_assert(offsetof(PacketSummary, ipxDstNode) == offsetof(PacketSummary, ipxDstNet) + 4);

void ipx_source(P& p, Values& values) {
  const auto* const record = reinterpret_cast<const std::uint8_t*>(&p.summary.record);
  if (p.summary.has(Summary::kIpx)) add(values, record + offsetof(PacketSummary, ipxSrcNet), kIpxAddress);
}

void ipx_destination(P& p, Values& values) {
  const auto* const record = reinterpret_cast<const std::uint8_t*>(&p.summary.record);
  if (p.summary.has(Summary::kIpx)) add(values, record + offsetof(PacketSummary, ipxDstNet), kIpxAddress);
}

void station_source(P& p, Values& values) {
  const auto& record = p.summary.record;
  source(p, values);
  if (p.summary.has(Summary::kIp)) add(values, record.srcIp, sizeof record.srcIp);
  if (p.summary.has(Summary::kIp6)) add(values, record.srcIp6, sizeof record.srcIp6);
  if (p.summary.has(Summary::kIpx)) add(values, record.ipxSrcNode, sizeof record.ipxSrcNode);
  ipx_source(p, values);
}

void station_destination(P& p, Values& values) {
  const auto& record = p.summary.record;
  destination(p, values);
  if (p.summary.has(Summary::kIp)) add(values, record.dstIp, sizeof record.dstIp);
  if (p.summary.has(Summary::kIp6)) add(values, record.dstIp6, sizeof record.dstIp6);
  if (p.summary.has(Summary::kIpx)) add(values, record.ipxDstNode, sizeof record.ipxDstNode);
  ipx_destination(p, values);
}

template <auto First, auto Second>
void both(P& p, Values& values) {
  First(p, values);
  Second(p, values);
}

void vlan_ids(P& p, Values& values) {
  for (const auto& tag : p.scratch.lift.tags()) values.push_back({tag.vlan(), {}});
}

void line_texts(P& p, Values& values) {
  p.lines().each([&values](const DisplayLine& line) { values.push_back({0, line.text}); });
}

const Field* from(std::string_view name) {
  for (const auto fields : {frame_fields(), summary_fields()}) {
    for (const auto& field : fields) {
      if (field.name == name) return &field;
    }
  }
  return nullptr;
}

FilterType type_of(FieldType type) {
  switch (type) {
    case FieldType::kName: return FilterType::kText;
    case FieldType::kIpText: return FilterType::kIp;
    case FieldType::kIp6Text: return FilterType::kIp6;
    case FieldType::kHex8: return FilterType::kHex;
    case FieldType::kHex12: return FilterType::kMac;
    default: return FilterType::kNumber;
  }
}

FilterNames names_of(FilterType type) {
  switch (type) {
    case FilterType::kMac:
    case FilterType::kIp:
    case FilterType::kIp6:
    case FilterType::kIpx:
    case FilterType::kStation: return FilterNames::kAddress;
    default: return FilterNames::kNone;
  }
}

std::vector<FilterField> make_fields() {
  using T = FilterType;
  constexpr auto kPort = FilterNames::kPort;
  constexpr auto kSocket = FilterNames::kSocket;
  constexpr auto kIpx = network<WIRELINES_NET_IPX>;
  constexpr auto kIp6 = network<WIRELINES_NET_IP6>;
  std::vector<FilterField> fields = {
      {"frame.number", T::kNumber, "Number of the frame", nullptr, {from("frame")}},
      {"frame.length", T::kNumber, "Bytes that it had on the wire", nullptr, {from("originalLength")}},
      {"frame.captured", T::kNumber, "Bytes captured", nullptr, {from("length")}},
      {"frame.cut", T::kFlag, "Fewer bytes were captured than it had",
       [](P& p) { return p.frame.length < p.frame.original_length; }},
      {"frame.time",
       T::kTime,
       "Time of the capture, in the zone in which times are shown",
       nullptr,
       {},
       [](P& /*packet*/, Values& values) { values.emplace_back(); }},  // compared by the clock of the scratch
      {"line", T::kText, "Any line of the decoded frame", nullptr, {}, line_texts},

      {"station",
       T::kStation,
       "Either side, by any of its addresses: MAC, IPv4, IPv6, IPX",
       nullptr,
       {},
       both<station_source, station_destination>},
      {"station.src", T::kStation, "The source likewise", nullptr, {}, station_source},
      {"station.dst", T::kStation, "The destination likewise", nullptr, {}, station_destination},

      {"eth.addr", T::kMac, "MAC address of either side", nullptr, {}, both<source, destination>},
      {"eth.src", T::kMac, "MAC address of the source", nullptr, {}, source},
      {"eth.dst", T::kMac, "MAC address of the destination", nullptr, {}, destination},
      {"eth.type", T::kNumber, "Ethernet II type or SNAP protocol type", nullptr, {from("etherType")}},
      {"ether", T::kFlag, "Ethernet II",
       [](P& p) { return p.summary.record.frameKind == WIRELINES_ETHERNET_II && !p.scratch.lift.made_up(); }},
      {"llc", T::kFlag, "IEEE 802.2 without SNAP", is_llc},
      {"llc.dsap", T::kNumber, "Destination SAP", is_llc, {from("dsap")}},
      {"llc.ssap", T::kNumber, "Source SAP", is_llc, {from("ssap")}},
      {"snap", T::kFlag, "IEEE 802.2 with SNAP", [](P& p) { return p.summary.record.frameKind == WIRELINES_SNAP; }},
      {"vlan", T::kFlag, "Has VLAN tags", [](P& p) { return !p.scratch.lift.tags().empty(); }},
      {"vlan.id", T::kNumber, "VLAN of any of its tags", nullptr, {}, vlan_ids},

      {"arp", T::kFlag, "ARP", network<WIRELINES_NET_ARP>},
      {"rarp", T::kFlag, "RARP", network<WIRELINES_NET_RARP>},
      {"arp.op", T::kNumber, "Operation of ARP or RARP, its low byte", is_arp, {from("typeCode")}},
      {"arp.addr", T::kIp, "Either protocol address", is_arp, {from("srcIp"), from("dstIp")}},
      {"arp.src", T::kIp, "Protocol address of the sender", is_arp, {from("srcIp")}},
      {"arp.dst", T::kIp, "Protocol address of the target", is_arp, {from("dstIp")}},

      {"ip", T::kFlag, "IPv4", is_ip},
      {"ip.addr", T::kIp, "IPv4 address of either side", is_ip, {from("srcIp"), from("dstIp")}},
      {"ip.src", T::kIp, "IPv4 source", is_ip, {from("srcIp")}},
      {"ip.dst", T::kIp, "IPv4 destination", is_ip, {from("dstIp")}},
      {"ip.proto",
       T::kNumber,
       "IPv4 protocol; where IPv6 is inside, its last next header",
       is_ip,
       {from("ipProtocol")}},
      {"ipv6", T::kFlag, "IPv6, also inside IPv4", kIp6},
      {"ipv6.addr", T::kIp6, "IPv6 address of either side", nullptr, {from("srcIp6"), from("dstIp6")}},
      {"ipv6.src", T::kIp6, "IPv6 source", nullptr, {from("srcIp6")}},
      {"ipv6.dst", T::kIp6, "IPv6 destination", nullptr, {from("dstIp6")}},
      {"ipv6.next", T::kNumber, "Last IPv6 next header", kIp6, {from("ipProtocol")}},

      {"icmp", T::kFlag, "ICMP", carries<kIcmp>},
      {"icmp.type", T::kNumber, "ICMP type", carries<kIcmp>, {from("typeCode")}},
      {"icmpv6", T::kFlag, "ICMPv6", carries<kIcmpV6>},
      {"icmpv6.type", T::kNumber, "ICMPv6 type", carries<kIcmpV6>, {from("typeCode")}},
      {"igmp", T::kFlag, "IGMP", carries<kIgmp>},
      {"port",
       T::kNumber,
       "TCP or UDP port of either side",
       has_ports,
       {from("srcPort"), from("dstPort")},
       nullptr,
       kPort},
      {"tcp", T::kFlag, "TCP", carries<kTcp>},
      {"tcp.port",
       T::kNumber,
       "TCP port of either side",
       has_ports_of<kTcp>,
       {from("srcPort"), from("dstPort")},
       nullptr,
       kPort},
      {"tcp.srcport", T::kNumber, "TCP port of the source", has_ports_of<kTcp>, {from("srcPort")}, nullptr, kPort},
      {"tcp.dstport", T::kNumber, "TCP port of the destination", has_ports_of<kTcp>, {from("dstPort")}, nullptr, kPort},
      {"tcp.flags", T::kNumber, "TCP flags, all together", carries<kTcp>, {from("typeCode")}},
      {"tcp.fin", T::kFlag, "TCP flag FIN", tcp_flag<0x01>},
      {"tcp.syn", T::kFlag, "TCP flag SYN", tcp_flag<0x02>},
      {"tcp.rst", T::kFlag, "TCP flag RST", tcp_flag<0x04>},
      {"tcp.psh", T::kFlag, "TCP flag PSH", tcp_flag<0x08>},
      {"tcp.ack", T::kFlag, "TCP flag ACK", tcp_flag<0x10>},
      {"tcp.urg", T::kFlag, "TCP flag URG", tcp_flag<0x20>},
      {"udp", T::kFlag, "UDP", carries<kUdp>},
      {"udp.port",
       T::kNumber,
       "UDP port of either side",
       has_ports_of<kUdp>,
       {from("srcPort"), from("dstPort")},
       nullptr,
       kPort},
      {"udp.srcport", T::kNumber, "UDP port of the source", has_ports_of<kUdp>, {from("srcPort")}, nullptr, kPort},
      {"udp.dstport", T::kNumber, "UDP port of the destination", has_ports_of<kUdp>, {from("dstPort")}, nullptr, kPort},

      {"ipx", T::kFlag, "IPX", kIpx},
      {"ipx.addr", T::kIpx, "IPX network and node of either side", nullptr, {}, both<ipx_source, ipx_destination>},
      {"ipx.src", T::kIpx, "IPX network and node of the source", nullptr, {}, ipx_source},
      {"ipx.dst", T::kIpx, "IPX network and node of the destination", nullptr, {}, ipx_destination},
      {"ipx.net", T::kHex, "IPX network of either side", nullptr, {from("ipxSrcNet"), from("ipxDstNet")}},
      {"ipx.node", T::kMac, "IPX node of either side", nullptr, {from("ipxSrcNode"), from("ipxDstNode")}},
      {"ipx.socket",
       T::kNumber,
       "IPX socket of either side",
       nullptr,
       {from("ipxSrcSocket"), from("ipxDstSocket")},
       nullptr,
       kSocket},
      {"ipx.srcsocket", T::kNumber, "IPX socket of the source", nullptr, {from("ipxSrcSocket")}, nullptr, kSocket},
      {"ipx.dstsocket", T::kNumber, "IPX socket of the destination", nullptr, {from("ipxDstSocket")}, nullptr, kSocket},
      {"ipx.type", T::kNumber, "IPX packet type", kIpx, {from("ipProtocol")}},
      {"netbios", T::kFlag, "NetBIOS frames, over LLC, IPX, TCP or UDP",
       [](P& p) { return network<WIRELINES_NET_NETBIOS>(p) || decoded<29>(p); }},
      {"xns", T::kFlag, "XNS", network<WIRELINES_NET_XNS>},
      {"appletalk", T::kFlag, "AppleTalk", network<WIRELINES_NET_APPLETALK>},
      {"aarp", T::kFlag, "AARP", network<WIRELINES_NET_AARP>},

      {"pppoe", T::kFlag, "PPPoE, discovery and sessions",
       [](P& p) {
         const auto type = p.summary.record.etherType;
         return p.summary.has(Summary::kEtherType) && (type == kTypePppoeDiscovery || type == kTypePppoeSession);
       }},
      {"pppoe.code", T::kNumber, "Code of PPPoE discovery", network<WIRELINES_NET_PPPOE>, {from("typeCode")}},
      {"lcp", T::kFlag, "LCP", network<WIRELINES_NET_LCP>},
      {"pap", T::kFlag, "PAP", network<WIRELINES_NET_PAP>},
      {"chap", T::kFlag, "CHAP", network<WIRELINES_NET_CHAP>},
      {"ipcp", T::kFlag, "IPCP", network<WIRELINES_NET_IPCP>},

      {"dns", T::kFlag, "DNS", decoded<20>},
      {"dhcp", T::kFlag, "DHCP or BOOTP", decoded<31>},
      {"ntp", T::kFlag, "NTP", decoded<23>},
      {"rip", T::kFlag, "RIP over UDP or IPX", decoded<53, 41>},
      {"snmp", T::kFlag, "SNMP", decoded<34>},
      {"tftp", T::kFlag, "TFTP", decoded<32>},
      {"smb", T::kFlag, "SMB", decoded<59>},
      {"ncp", T::kFlag, "NCP", decoded<38>},
      {"sap", T::kFlag, "NetWare's service advertising", decoded<43>},
      {"spx", T::kFlag, "SPX", decoded<40>},

      {"checksum.bad", T::kFlag, "Any wrong checksum, as list tells of it", wrong_checksum<0x0F>},
      {"ip.checksum.bad", T::kFlag, "Wrong checksum of the IPv4 header", wrong_checksum<WIRELINES_BAD_IP>},
      {"icmp.checksum.bad", T::kFlag, "Wrong checksum of ICMP or ICMPv6", wrong_checksum<WIRELINES_BAD_ICMP>},
      {"tcp.checksum.bad", T::kFlag, "Wrong checksum of TCP", wrong_checksum<WIRELINES_BAD_TCP>},
      {"udp.checksum.bad", T::kFlag, "Wrong checksum of UDP", wrong_checksum<WIRELINES_BAD_UDP>},
  };
  for (const auto& field : summary_fields()) {
    fields.push_back({field.name, type_of(field.type), field.about, nullptr, {&field}});
  }
  for (auto& field : fields) {
    if (field.names == FilterNames::kNone) field.names = names_of(field.type);
  }
  return fields;
}

template <std::size_t N>
std::string name_of(std::string_view address) {
  Key<N> key;
  std::memcpy(key.data(), address.data() + address.size() - N, N);
  return label(key).name;
}

std::string name_of(const FilterField& field, const FilterValue& value, const FilterPacket& packet) {
  if (field.names == FilterNames::kAddress) {
    switch (value.bytes.size()) {
      case 4: return name_of<4>(value.bytes);
      case 16: return name_of<16>(value.bytes);
      default: return name_of<6>(value.bytes);  // a station, or the node behind an IPX network
    }
  }
  const bool tcp = packet.summary.record.ipProtocol == kTcp;
  const auto kind = field.names == FilterNames::kSocket ? PortKind::kIpx : tcp ? PortKind::kTcp : PortKind::kUdp;
  return label(Key<3>{static_cast<std::uint8_t>(kind), static_cast<std::uint8_t>(value.number >> 8),
                      static_cast<std::uint8_t>(value.number)})
      .name;
}

// How many letters must be changed, added or left out to make `b` of `a`.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); j++) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); i++) {
    auto diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); j++) {
      const auto changed = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({changed, row[j - 1] + 1, row[j] + 1});
    }
  }
  return row[b.size()];
}

}  // namespace

std::string_view type_name(FilterType type) {
  switch (type) {
    case FilterType::kFlag: return "yes or no";
    case FilterType::kNumber: return "number";
    case FilterType::kHex: return "hexadecimal number";
    case FilterType::kMac: return "MAC address";
    case FilterType::kIp: return "IPv4 address";
    case FilterType::kIp6: return "IPv6 address";
    case FilterType::kIpx: return "IPX address";
    case FilterType::kStation: return "any address";
    case FilterType::kText: return "text";
    case FilterType::kTime: return "time";
  }
  return "";
}

std::span<const FilterField> filter_fields() {
  static const auto fields = make_fields();
  return fields;
}

const FilterField* find_filter_field(std::string_view name) {
  const auto wanted = folded(name);
  for (const auto& field : filter_fields()) {
    if (folded(field.name) == wanted) return &field;
  }
  return nullptr;
}

std::string_view nearest_filter_field(std::string_view name) {
  constexpr std::size_t kLongest = 32;  // no name is longer
  if (name.size() > kLongest) return "";
  const auto wanted = folded(name);
  std::string_view nearest;
  std::size_t least = 1 + wanted.size() / 3;  // further away it is another word
  for (const auto& field : filter_fields()) {
    const auto known = folded(field.name);
    // A name cut short is near too.
    const auto away = wanted.size() > 2 && known.starts_with(wanted) ? 1 : distance(wanted, known);
    if (away < least || (away == least && known.size() > nearest.size())) {  // letters are rather left out than added
      least = away;
      nearest = field.name;
    }
  }
  return nearest;
}

std::span<const FilterValue> values_of(const FilterField& field, FilterPacket& packet) {
  auto& values = packet.scratch.values;
  values.clear();
  if (field.when != nullptr && !field.when(packet)) return {};
  for (const auto* from : field.summary) {
    if (from == nullptr || !packet.summary.has(from->part)) continue;
    const auto [number, bytes] = from->get(packet.summary);
    values.push_back({number, bytes});
  }
  if (field.collect != nullptr) field.collect(packet, values);
  return values;
}

std::string_view text_of(const FilterField& field, const FilterValue& value, FilterPacket& packet) {
  auto& scratch = packet.scratch;
  std::string_view bytes = value.bytes;
  if (field.type != FilterType::kText) {
    scratch.name = name_of(field, value, packet);
    bytes = scratch.name;
  }
  if (is_plain(bytes)) return bytes;
  scratch.utf8.clear();
  scratch.text.append(scratch.utf8, bytes);
  return scratch.utf8;
}

std::string folded(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), fold);
  return result;
}

std::vector<FilterFieldInfo> filter_field_infos() {
  std::vector<FilterFieldInfo> infos;
  for (const auto& field : filter_fields()) infos.push_back({field.name, type_name(field.type), field.about});
  return infos;
}

}  // namespace wirelines::host
