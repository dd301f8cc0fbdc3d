// The Internet checksum (RFC 1071) and the pseudo headers that transports add to it.
#pragma once

#include "core/bytes.hpp"

namespace wirelines {

// What a transport sums besides its own message: 12 bytes over IPv4, 40 over IPv6.
struct PseudoHeader {
  Bytes addresses;
  uint32_t upper_length = 0;
  uint8_t protocol = 0;
};

// The pseudo header of a datagram that begins with this IPv4 header.
PseudoHeader IpPsuadoHeder(const Bytes& header);

// The addresses of an IPv6 header; length and protocol of the upper layer are still to be set. An extension header
// changes both.
PseudoHeader Ip6PseudoHeader(const Bytes& header);

// The complement of the sum of data.size() bytes as big-endian words; an odd last byte counts as a word that ends with
// a zero byte. 0 when the data holds its own right checksum.
uint16_t IpCheckSum(const Bytes& data);
uint16_t IpCheckSum(const PseudoHeader& pseudo_header);

// The same of a pseudo header followed by a message.
uint16_t CulUdpChksum(const Bytes& message, Bytes pseudo_header);
uint16_t CulUdpChksum(const Bytes& message, const PseudoHeader& pseudo_header);

}  // namespace wirelines
