#include "labels.hpp"

#include <arpa/inet.h>
#include <vek4003.h>

#include <algorithm>

namespace wirelines::host {

namespace {

constexpr std::uint16_t kPppoeDiscovery = 0x8863;
constexpr std::uint16_t kPppSession = 0x8864;

std::string hex(std::uint32_t value, int digits) {
  std::string text;
  while (digits-- > 0) text += "0123456789ABCDEF"[value >> 4 * digits & 0x0F];
  return text;
}

template <typename... Keys>
std::string nickname(std::int32_t (*to_name)(Keys...), const std::same_as<std::string> auto&... keys) {
  char name[36];  // of the longest name that a look-up gives
  return to_name(keys.c_str()..., name) == 1 ? name : "";
}

std::string digits(const std::uint8_t* bytes, std::size_t size, const char* between) {
  std::string text;
  for (std::size_t i = 0; i < size; i++) {
    if (i > 0) text += between;
    text += "0123456789abcdef"[bytes[i] >> 4];
    text += "0123456789abcdef"[bytes[i] & 0x0F];
  }
  return text;
}

std::string station_name(const std::uint8_t* mac) {
  const auto name = nickname(StationToNickName, digits(mac, 6, ""));
  const bool broadcast = std::all_of(mac, mac + 6, [](std::uint8_t byte) { return byte == 0xFF; });
  return name.empty() && broadcast ? "broadcast" : name;
}

std::string with_name(std::string text, const std::string& name) {
  return name.empty() ? text : std::move(text) + " " + name;
}

std::string type_name(std::uint16_t type) {
  const char* const known = TypeToProtocolName(type);
  return with_name("0x" + hex(type, 4), *known != '\0' ? known : nickname(ProtocolTypeToName, hex(type, 4)));
}

std::string unknown_network(const ProtocolKey& key) {
  if ((key.flags & ProtocolKey::kIncomplete) != 0) return "header incomplete";
  if (key.framing != kLlc) return "Type " + type_name(key.type);
  const auto dsap = hex(key.type >> 8, 2);
  const auto ssap = hex(key.type & 0xFF, 2);
  return with_name("SAP " + ssap + " > " + dsap, nickname(SapToName, dsap, ssap));
}

void add_ip(const ProtocolKey& key, std::vector<std::string>& path) {
  if (key.network == WIRELINES_NET_IP || (key.flags & ProtocolKey::kInIp) != 0) path.emplace_back("IPv4");
  if (key.network == WIRELINES_NET_IP6) path.emplace_back("IPv6");
  if ((key.flags & ProtocolKey::kIncomplete) != 0) {
    path.emplace_back("header incomplete");
    return;
  }
  const std::string name = IpProtocolToName(key.protocol);
  path.push_back(name.empty() ? "Protocol " + std::to_string(key.protocol) : name);
  if ((key.flags & ProtocolKey::kFragment) != 0) path.emplace_back("fragments");
}

void add_ipx(const ProtocolKey& key, std::vector<std::string>& path) {
  path.emplace_back("IPX");
  const std::string name = NwPacketToName(key.protocol);
  path.push_back(with_name("Type " + std::to_string(key.protocol), name == "IPX" ? "" : name));
}

}  // namespace

Label label(const Key<6>& station) {
  return {digits(station.data(), 6, ":"), station_name(station.data())};
}

Label label(const Key<4>& ip) {
  char text[INET_ADDRSTRLEN];
  const std::string address = inet_ntop(AF_INET, ip.data(), text, sizeof text);
  return {address, nickname(IpStrToNickName, address)};
}

Label label(const Key<16>& ip6) {
  char text[INET6_ADDRSTRLEN];
  const std::string address = inet_ntop(AF_INET6, ip6.data(), text, sizeof text);
  return {address, nickname(Ip6StrToNickName, address)};
}

// Most networks are 0 or 1, so zeros in front are left out.
Label label(const Key<10>& ipx) {
  auto network = digits(ipx.data(), 4, "");
  network.erase(0, std::min(network.find_first_not_of('0'), network.size() - 1));
  const auto name = station_name(ipx.data() + 4);
  return {network + "." + digits(ipx.data() + 4, 6, ""), name.empty() ? "" : network + "." + name};
}

Label label(const Key<3>& port) {
  const auto number = static_cast<std::uint16_t>(port[1] << 8 | port[2]);
  if (port[0] == static_cast<std::uint8_t>(PortKind::kIpx)) return {"ipx 0x" + hex(number, 4), NwSocketToName(number)};
  const bool tcp = port[0] == static_cast<std::uint8_t>(PortKind::kTcp);
  return {(tcp ? "tcp " : "udp ") + std::to_string(number), PortToName(number, port[0])};
}

std::vector<std::string> path(const ProtocolKey& key) {
  std::vector<std::string> path = {kFramingNames[key.framing]};
  if (key.framing == kTooShort) return path;
  if ((key.flags & ProtocolKey::kControl) != 0) {
    path.emplace_back("Control (S and U format)");
    return path;
  }
  if (key.framing != kLlc && key.type == kPppSession) {
    path.emplace_back(key.framing == kNoEthernet ? "PPP" : "PPPoE session");
  }
  switch (key.network) {
    case WIRELINES_NET_IP:
    case WIRELINES_NET_IP6: add_ip(key, path); break;
    case WIRELINES_NET_ARP: path.emplace_back("ARP"); break;
    case WIRELINES_NET_RARP: path.emplace_back("RARP"); break;
    case WIRELINES_NET_IPX: add_ipx(key, path); break;
    case WIRELINES_NET_NETBIOS: path.emplace_back("NetBIOS"); break;
    case WIRELINES_NET_XNS: path.emplace_back("XNS"); break;
    case WIRELINES_NET_APPLETALK: path.emplace_back("AppleTalk"); break;
    case WIRELINES_NET_AARP: path.emplace_back("AARP"); break;
    case WIRELINES_NET_PPPOE: path.emplace_back(key.type == kPppoeDiscovery ? "PPPoE discovery" : "Other PPP"); break;
    case WIRELINES_NET_LCP: path.emplace_back("LCP"); break;
    case WIRELINES_NET_CHAP: path.emplace_back("CHAP"); break;
    case WIRELINES_NET_PAP: path.emplace_back("PAP"); break;
    case WIRELINES_NET_IPCP: path.emplace_back("IPCP"); break;
    default: path.push_back(unknown_network(key)); break;
  }
  return path;
}

std::string size_name(std::size_t row) {
  if (row == kSizeLimits.size()) return std::to_string(kSizeLimits.back()) + " and more";
  return std::to_string(row == 0 ? 0 : kSizeLimits[row - 1]) + "-" + std::to_string(kSizeLimits[row] - 1);
}

}  // namespace wirelines::host
