// What the frames of a trace add up to, counted in one pass from what the classifier tells of them. Memory is bounded:
// what a full table could not take is counted too, so that totals always add up.
#pragma once

#include <wirelines.h>

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>

#include "bounded_table.hpp"
#include "lift.hpp"
#include "timeline.hpp"
#include "trace.hpp"

namespace wirelines::host {

// One address: what it sent and received. A frame to the sender itself counts as both.
struct Talker {
  Count sent, received;

  [[nodiscard]] Count both() const { return Count(sent) += received; }
};

enum Framing : std::uint8_t { kTooShort, kRaw8023, kLlc, kSnap, kEthernetII, kNoEthernet, kFramings };

struct Station : Talker {
  std::array<Count, kFramings> framings;  // of what it sent
};

// Two addresses, the smaller one first.
struct Conversation {
  Count forth, back;  // from the first to the second, and the other way

  [[nodiscard]] Count both() const { return Count(forth) += back; }
};

// The talkers of a layer and who talks to whom; N bytes an address.
template <std::size_t N, typename T = Talker>
struct Layer {
  explicit Layer(std::size_t bound) : talkers(bound), conversations(bound) {}

  // Returns the sender, or null when it is not entered.
  T* add(const std::uint8_t* source, const std::uint8_t* destination, std::uint32_t length);

  Count total;
  BoundedTable<Key<N>, T> talkers;
  BoundedTable<Key<2 * N>, Conversation> conversations;
  Talker talkers_missed;  // what is not entered
  Count conversations_missed;
};

// Where a frame belongs in the tree of protocols.
struct ProtocolKey {
  Framing framing = kTooShort;
  std::uint8_t flags = 0;
  std::uint8_t protocol = 0;  // of IPv4, IPv6 or IPX
  std::uint16_t network = 0;  // networkCode
  std::uint16_t type = 0;     // EtherType, or DSAP x 256 + SSAP

  enum : std::uint8_t { kInIp = 1, kIncomplete = 2, kFragment = 4, kControl = 8 };

  [[nodiscard]] Key<8> pack() const;
  static ProtocolKey unpack(const Key<8>& key);
};

enum class PortKind : std::uint8_t { kTcp = 6, kUdp = 17, kIpx = 0 };

// What became of the checksums of a protocol.
struct Verdicts {
  std::uint64_t right = 0;
  std::uint64_t wrong = 0;
  std::uint64_t none = 0;          // the sender did not calculate it
  std::uint64_t not_verified = 0;  // bytes are missing: cut at capture, fragments, too short for a header
};

enum Checksum { kIpChecksum, kIcmpChecksum, kTcpChecksum, kUdpChecksum, kChecksums };

constexpr std::array<std::uint32_t, 6> kSizeLimits = {60, 128, 256, 512, 1024, 1515};  // first lengths of further rows

struct Packet;

class Tally {
 public:
  // At most `bound` entries a table. The user's names should be loaded: a port that has a name is taken for the one
  // that a service has.
  explicit Tally(bool lift_tags = true, std::size_t bound = 65536);

  void add(const Frame& frame);

  Count total;
  Count cut;  // frames cut at capture, and the bytes that are missing
  std::uint64_t first_time = 0;
  std::uint64_t last_time = 0;  // nanoseconds since 1970
  std::uint32_t shortest = 0;
  std::uint32_t longest = 0;

  BoundedTable<Key<8>, Count> protocols{4096};
  Count protocols_missed;
  Layer<6, Station> stations;
  Layer<4> ip;
  Layer<16> ip6;
  Layer<10> ipx;
  BoundedTable<Key<3>, Count> ports;  // PortKind and port
  Count ports_missed;
  std::array<Count, kSizeLimits.size() + 1> sizes;
  std::array<Count, kFramings> framings;
  std::array<Verdicts, kChecksums> checksums;
  Timeline timeline;

 private:
  void add_time(const Frame& frame);
  void add_size(std::uint32_t length);
  void add_network(const Packet& packet);
  void add_checksums(const Packet& packet);
  void add_transport_checksum(const Packet& packet);
  void add_port(PortKind kind, std::uint16_t port, std::uint32_t length);

  Lift lift_;
  std::bitset<65536> tcp_services_;
  std::bitset<65536> udp_services_;
};

}  // namespace wirelines::host
