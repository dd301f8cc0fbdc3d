// Names of protocol numbers.
#include "core/protocol_names.hpp"

#include <algorithm>
#include <array>

#include "core/format.hpp"
#include "core/lines.hpp"
#include "core/names.hpp"
#include "core/nicknames.hpp"

namespace wirelines {

namespace {

constexpr auto kEtherTypes = names({
    {0x0800, "IP"},
    {0x86DD, "IPv6"},
    {0x8863, "PPPoE Discovery"},
    {0x8864, "PPPoE Session"},
    {0x0806, "ARP"},
    {0x8035, "RARP"},
    {0x8137, "IPX"},
    {0x8138, "IPX"},
    {0x814C, "SNMP"},
    {0x817D, "XTP"},
    {0x0600, "XNS"},
    {0x6002, "DEC Remote Console"},
    {0x6003, "DECnet"},
    {0x809B, "AppleTalk"},
    {0x80F3, "AppleTalk AARP"},
});
static_assert(kEtherTypes.distinct());

// By DSAP x 256 + SSAP.
constexpr auto kSapPairs = names({
    {0x0606, "IP"},
    {0xE0E0, "IPX"},
    {0xF0F0, "NetBIOS"},
    {0x8080, "XNS"},
});
static_assert(kSapPairs.distinct());

constexpr auto kIpProtocols = names({
    {0, "Hop-by-Hop Options"},
    {1, "ICMP"},
    {2, "IGMP"},
    {3, "GGP"},
    {5, "ST"},
    {6, "TCP"},
    {8, "EGP"},
    {9, "IGP"},
    {11, "NVP-2"},
    {17, "UDP"},
    {29, "ISO-TP4"},
    {41, "IPv6"},
    {43, "Routing"},
    {44, "Fragment"},
    {47, "GRE"},
    // Kept: misspelt, as hosts have always shown it.
    {50, "Encapsulationg Security Payload"},
    {51, "Authentication"},
    {58, "ICMPv6"},
    {60, "Destination Options"},
    {80, "CLNP"},
    {81, "VMTP"},
    {82, "SECURE-VMTP"},
    {83, "VINES"},
    {85, "NSFNET-IGP"},
    {88, "IGRP"},
    {89, "OSPF"},
});
static_assert(kIpProtocols.distinct());

constexpr auto kIpxPacketTypes = names({
    {0, "IPX"},
    {1, "RIP"},
    {2, "ECHO"},
    {3, "ERROR"},
    {4, "IPX"},
    {5, "SPX"},
    {17, "NCP"},
    {20, "IPX Broadcast"},
});
static_assert(kIpxPacketTypes.distinct());

constexpr auto kIpxSockets = names({
    {0x0451, "NCP"},
    {0x0452, "SAP"},
    {0x0453, "RIP"},
    {0x0455, "NetBIOS"},
    {0x0456, "Diagnostic"},
    {0x0457, "Serialization"},
    {0x0553, "NetBIOS"},
    {0x9001, "NLSP"},
});
static_assert(kIpxSockets.distinct());

constexpr auto kIcmpTypes = names({
    {0, "Echo Reply"},
    {3, "Destination Unreachable"},
    {4, "Source Quench"},
    {5, "Redirect"},
    {8, "Echo Request"},
    {9, "Router Advertisement"},
    {10, "Router Selection"},
    {11, "Time Exceeded"},
    {12, "Parameter Problem"},
    {13, "Timestamp"},
    {14, "Timestamp Reply"},
    {15, "Information Request"},
    {16, "Information Reply"},
    {17, "Address Mask Request"},
    {18, "Address Mask Reply"},
});
static_assert(kIcmpTypes.distinct());

constexpr uint16_t kDirectPorts = 1800;  // ports below it have a place in the table

constexpr auto kPorts = [] {
  constexpr NameRow rows[] = {
#include "core/port_names.inc"
  };
  std::array<std::string_view, kDirectPorts> table;
  table.fill("");
  for (const NameRow& row : rows) table[row.code] = row.name;
  return table;
}();

// Ports whose keyword depends on the transport, or lies above the table.
constexpr auto kTcpPorts = names({
    {100, "NEWACCT"},
    {113, "IDENT"},
    {164, "CMIP-AGENT"},
    {456, "MACON-TCP"},
    {474, "TN-TL-W1"},
    {512, "EXEC"},
    {513, "LOGIN"},
    {514, "SHELL"},
    {520, "EFS"},
    {750, "RFILE"},
    {773, "SUBMIT"},
    {774, "RPASSWD"},
    {775, "ENTOMB"},
    {998, "BUSBOY"},
    {8058, "H.245"},
});
static_assert(kTcpPorts.distinct());
constexpr auto kUdpPorts = names({
    {164, "SMIP-AGENT"},
    {456, "MACON-UDP"},
    {474, "TN-TL-W2"},
    {512, "COMSAT/BIFF"},
    {513, "WHO"},
    {514, "SYSLOG"},
    {520, "ROUTER"},
    {750, "LOADAV/KERBEROS-IV"},
    {773, "NOTIFY"},
    {774, "ACMAINT_DBD"},
    {775, "ACMAINT_TRANSD"},
    {998, "PUPARP"},
});
static_assert(kUdpPorts.distinct());

}  // namespace

std::string_view TypeToProtocolName(uint16_t ether_type) {
  return kEtherTypes(ether_type);
}

std::string_view SapPairToName(uint8_t dsap, uint8_t ssap) {
  return kSapPairs(uint32_t{dsap} << 8 | ssap);
}

std::string_view IpProtocolToName(uint8_t protocol) {
  return kIpProtocols(protocol);
}

std::string_view NwPacketToName(uint8_t packet_type) {
  return kIpxPacketTypes(packet_type);
}

std::string_view NwSocketToName(uint16_t socket) {
  return kIpxSockets(socket);
}

std::string_view IcmpTypeInfoToName(uint8_t type) {
  return kIcmpTypes(type);
}

std::string_view PortToName(uint16_t port, uint8_t protocol) {
  const Nickname nickname = port_nickname(port);
  if (!nickname.empty()) {
    auto& buffer = state().port_name;
    const auto length = std::min<std::size_t>(nickname.length(), sizeof buffer - 1);
    std::copy_n(std::string_view(nickname).data(), length, buffer);
    buffer[length] = 0;
    return {buffer, length};
  }
  if (port < kDirectPorts && !kPorts[port].empty()) return kPorts[port];
  if (protocol == kTcp) return kTcpPorts(port);
  if (protocol == kUdp) return kUdpPorts(port);
  return "";
}

}  // namespace wirelines
