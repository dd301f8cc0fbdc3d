// The Internet checksum (RFC 1071) and the pseudo headers that transports add to it.
#pragma once

#include <array>

#include "core/bytes.hpp"

namespace wirelines {

// What a transport sums besides its own message: 12 bytes over IPv4, 40 over IPv6.
struct PseudoHeader {
  std::array<uint8_t, 40> bytes{};
  uint32_t length = 0;

  [[nodiscard]] Bytes view() const { return {bytes.data(), static_cast<int32_t>(length)}; }

  // Over IPv6: which layer is summed next. An extension header changes both.
  void set_upper_layer(uint32_t upper_length, uint8_t protocol);
};

// The pseudo header of a datagram that begins with this IPv4 header.
PseudoHeader IpPsuadoHeder(Bytes header);

// The addresses of an IPv6 header; the upper layer is still to be set.
PseudoHeader Ip6PseudoHeader(Bytes header);

// The complement of the sum of data.size() bytes as big-endian words; an odd last byte counts as a word that ends with
// a zero byte. 0 when the data holds its own right checksum.
uint16_t IpCheckSum(Bytes data);

// The same of a pseudo header followed by a message.
uint16_t CulUdpChksum(Bytes message, Bytes pseudo_header);

}  // namespace wirelines
