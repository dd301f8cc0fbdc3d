// A frame as the classifier sees it, for lists and sums. Where the network headers begin is found again here, because
// the classifier's own offsets are not the same for all carriers.
#pragma once

#include <wirelines.h>

#include <cstdint>

#include "lift.hpp"
#include "trace.hpp"

namespace wirelines::host {

struct Packet {
  static constexpr std::uint32_t kIpHeader = 20;
  static constexpr std::uint32_t kIp6Header = 40;

  // No ICMP type and no TCP flags: in typeCode when the frame has none.
  static constexpr std::uint8_t kNoType = 0xFF;

  // `its_lift` holds the frame; both must stay as long as this.
  Packet(const Frame& its_frame, const Lift& its_lift);

  // Bytes are those of the lifted frame; one that was not captured reads as zero.
  [[nodiscard]] std::uint32_t captured() const { return static_cast<std::uint32_t>(lift.length()); }
  [[nodiscard]] bool has(std::uint32_t bytes) const { return captured() >= bytes; }
  [[nodiscard]] bool cut() const { return frame.length < frame.original_length; }
  [[nodiscard]] std::uint8_t byte(std::uint32_t offset) const { return has(offset + 1) ? lift.data()[offset] : 0; }
  [[nodiscard]] std::uint16_t be16(std::uint32_t offset) const {
    return static_cast<std::uint16_t>(byte(offset) << 8 | byte(offset + 1));
  }

  // Whether the addresses and the protocol are there. IPv6 in IPv4 ends where the datagram ends.
  [[nodiscard]] bool whole_ip() const { return is_ip && has(ip + kIpHeader); }
  [[nodiscard]] bool whole_ip6() const { return is_ip6 && end() >= ip6 + kIp6Header; }
  [[nodiscard]] bool incomplete() const { return (is_ip && !whole_ip()) || (is_ip6 && !whole_ip6()); }
  [[nodiscard]] bool whole_ip_options() const { return is_ip && has(ip + ip_header); }

  // What IPv4 or IPv6 carries: where it begins, and the bytes of it that are there.
  struct Part {
    std::uint32_t offset, size;
  };
  [[nodiscard]] Part message() const;

  const Frame& frame;
  const Lift& lift;
  PacketSummary summary{};
  std::uint32_t payload = 0;  // where what the link layer carries begins
  bool is_ip = false;         // both for IPv6 in IPv4
  bool is_ip6 = false;
  bool fragment = false;  // of IPv4
  std::uint32_t ip = 0;   // where the header begins
  std::uint32_t ip_header = 0;
  std::uint32_t ip6 = 0;

 private:
  // Behind the last byte that is there and, where there is IPv4, belongs to its datagram.
  [[nodiscard]] std::uint32_t end() const;
};

}  // namespace wirelines::host
