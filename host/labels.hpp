// Addresses, ports and protocols as texts, and the names for them. Names are code page 932, as the user gave them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tally.hpp"

namespace wirelines::host {

struct Label {
  std::string address;
  std::string name;  // empty where there is none

  [[nodiscard]] const std::string& shown() const { return name.empty() ? address : name; }
};

Label label(const Key<6>& station);  // "00:1b:12:34:56:78"
Label label(const Key<4>& ip);       // "192.0.2.1"
Label label(const Key<16>& ip6);     // "2001:db8::1"
Label label(const Key<10>& ipx);     // "1.001b12345678": network and node
Label label(const Key<3>& port);     // "tcp 80"

// From the framing inwards: "Ethernet II", "IPv4", "TCP".
std::vector<std::string> path(const ProtocolKey& key);

constexpr std::array<const char*, kFramings> kFramingNames = {"Too short", "802.3 raw",   "LLC",
                                                              "SNAP",      "Ethernet II", "No Ethernet"};
constexpr std::array<const char*, kChecksums> kChecksumNames = {"IPv4 header", "ICMP", "TCP", "UDP"};

// "0-59", ">=1515": the lengths of row `row` of the sizes.
std::string size_name(std::size_t row);

}  // namespace wirelines::host
