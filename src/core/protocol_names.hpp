// Name look-ups that several layers share.
#pragma once

#include <string_view>

#include "core/bytes.hpp"

namespace wirelines {

// IP protocol numbers that decoders hand on by.
constexpr uint8_t kHopByHop = 0;
constexpr uint8_t kIcmp = 1;
constexpr uint8_t kIgmp = 2;
constexpr uint8_t kTcp = 6;
constexpr uint8_t kUdp = 17;
constexpr uint8_t kIp6InIp = 41;
constexpr uint8_t kIcmpV6 = 58;

std::string_view TypeToProtocolName(uint16_t ether_type);
std::string_view SapPairToName(uint8_t dsap, uint8_t ssap);
std::string_view IpProtocolToName(uint8_t protocol);
std::string_view NwPacketToName(uint8_t packet_type);
std::string_view NwSocketToName(uint16_t socket);
std::string_view IcmpTypeInfoToName(uint8_t type);

// The user's name of a port, or else the registered one; `protocol` is the IP protocol number of its transport. A
// user's name is valid until this thread's next call.
std::string_view PortToName(uint16_t port, uint8_t protocol);

}  // namespace wirelines
