// Transports called as IPv4 and IPv6 call them: from 192.0.2.1 to 198.51.100.2, from 2001:db8::1 to 2001:db8::2.
#pragma once

#include "core/protocol_names.hpp"
#include "ipv4/transport.hpp"
#include "support/cases.hpp"

namespace wirelines::test {

using Transport = void (*)(LineList&, Bytes, const Carrier&);

inline Decode over_ipv4(Transport transport, uint8_t protocol, bool more_fragments) {
  return [=](LineList& list, Bytes data) {
    auto header = bytes_of("45 00 0000 0000 0000 40 00 0000 C0000201 C6336402");
    const auto total = 20 + static_cast<uint32_t>(data.size());
    header[2] = static_cast<uint8_t>(total >> 8);
    header[3] = static_cast<uint8_t>(total);
    header[9] = protocol;
    transport(list, data, {IpPsuadoHeder(Bytes(header.data(), 20)), more_fragments});
  };
}

inline Decode over_ipv6(Transport transport, uint8_t protocol) {
  return [=](LineList& list, Bytes data) {
    const auto addresses = bytes_of("20010DB8 00000000 00000000 00000001 20010DB8 00000000 00000000 00000002");
    transport(list, data, {{Bytes(addresses.data(), 32), static_cast<uint32_t>(data.size()), protocol}, false});
  };
}

}  // namespace wirelines::test
