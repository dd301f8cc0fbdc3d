// A frame as the classifier sees it, field by field: one table for JSON, for rows and for the schemas of both.
#pragma once

#include <wirelines.h>

#include <cstdint>
#include <span>
#include <string_view>

#include "lift.hpp"
#include "output.hpp"
#include "trace.hpp"

namespace wirelines::host {

// What CheckPacket wrote for a frame, and nothing that it did not.
class Summary {
 public:
  // Fields that come and go together.
  enum Part : unsigned {
    kAlways = 0,
    kFraming = 1U << 0,
    kSaps = 1U << 1,
    kEtherType = 1U << 2,
    kNetwork = 1U << 3,
    kProtocol = 1U << 4,
    kIp = 1U << 5,
    kIp6 = 1U << 6,
    kPorts = 1U << 7,
    kIpx = 1U << 8,
    kType = 1U << 9,
    kNetworkOffset = 1U << 10,
    kTransportOffset = 1U << 11,
    kErrors = 1U << 12,
    kStations = 1U << 13,
  };

  // `its_lift` holds the frame; both must stay as long as this.
  Summary(const Frame& its_frame, const Lift& its_lift);

  [[nodiscard]] bool has(Part part) const { return (parts_ & part) == part; }

  // What wrong_checksums() says of it.
  [[nodiscard]] int wrong_checksums() const { return wrong_checksums_; }

  const Frame& frame;
  const Lift& lift;
  PacketSummary record;

 private:
  [[nodiscard]] unsigned possible_parts() const;

  unsigned parts_;
  int wrong_checksums_;
};

// Where the network header of a record that CheckPacket filled in begins: its own offset is three bytes short in a
// PPPoE session over SNAP.
std::uint32_t network_offset(const PacketSummary& record);

// The checksums that are wrong, as errorFlags has them but without 0x80: over bytes that were not captured a checksum
// says nothing, except that of a whole IPv4 header. `record` is what CheckPacket filled in for `lift`.
int wrong_checksums(const Frame& frame, const Lift& lift, const PacketSummary& record);

enum class FieldType { kUInt8, kUInt16, kUInt32, kUInt64, kDateTime, kName, kIpText, kIp6Text, kHex8, kHex12 };

struct FieldValue {
  std::uint64_t number = 0;
  std::string_view bytes = {};  // of a name or an address; good as long as the summary
};

struct Field {
  std::string_view name;
  FieldType type;
  Summary::Part part;
  FieldValue (*get)(const Summary& summary);  // of a summary that has the part
  std::string_view about;
};

[[nodiscard]] constexpr bool is_text(FieldType type) {
  return type >= FieldType::kDateTime;
}

// The value without quotes; nothing in it needs an escape.
void put_value(Output& out, const Field& field, const Summary& summary);

// "name":value, as JSON has it.
void put_member(Output& out, const Field& field, const Summary& summary);

// What a row has besides the classifier's record: number, offset, time, lengths, stations, checksums that are wrong.
std::span<const Field> frame_fields();

// The classifier's record, in its order; the reserved bytes are left out.
std::span<const Field> summary_fields();

// "2024-05-01" + `between` + "10:00:00" in UTC. Years past 9999 do not fit; see kLastSecond.
void put_utc(Output& out, std::int64_t seconds, char between);
inline constexpr std::int64_t kLastSecond = 253402300799;

// A frame's time with a fraction below one second, as it stands in nearly every trace anyway.
[[nodiscard]] constexpr std::int64_t whole_seconds(const Frame& frame) {
  return frame.seconds + frame.nanoseconds / 1000000000;
}
[[nodiscard]] constexpr std::uint32_t fraction(const Frame& frame) {
  return frame.nanoseconds % 1000000000;
}

}  // namespace wirelines::host
