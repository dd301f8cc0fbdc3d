#include "packet.hpp"

#include <algorithm>

namespace wirelines::host {

namespace {

constexpr std::uint16_t kTypeIp6 = 0x86DD;
constexpr std::uint16_t kTypePppSession = 0x8864;
constexpr std::uint32_t kSessionHeader = 8;  // with the PPP protocol

std::uint32_t link_header(std::uint32_t frame_kind) {
  switch (frame_kind) {
    case WIRELINES_LLC:
    case WIRELINES_LLC_S_U: return 17;
    case WIRELINES_SNAP: return 22;
    default: return 14;
  }
}

}  // namespace

Packet::Packet(const Frame& its_frame, const Lift& its_lift) : frame(its_frame), lift(its_lift) {
  summary.typeCode = kNoType;
  CheckPacket(lift.data(), lift.length(), &summary);
  payload = link_header(summary.frameKind);
  is_ip6 = summary.networkCode == WIRELINES_NET_IP6;
  is_ip = summary.networkCode == WIRELINES_NET_IP || summary.networkCode == WIRELINES_NET_IP_FRAGMENT ||
          (is_ip6 && summary.etherType != kTypeIp6);
  if (!is_ip && !is_ip6) return;
  ip = payload + (summary.etherType == kTypePppSession ? kSessionHeader : 0);
  if (is_ip) {
    ip_header = (byte(ip) & 0x0FU) * 4;
    fragment = whole_ip() && (be16(ip + 6) & 0x3FFF) != 0;
  }
  ip6 = ip + ip_header;
}

std::uint32_t Packet::end() const {
  return is_ip ? std::min<std::uint32_t>(captured(), ip + be16(ip + 2)) : captured();
}

Packet::Part Packet::message() const {
  const auto part = [this](std::uint32_t offset, std::uint32_t size) -> Part {
    return {offset, end() > offset ? std::min(size, end() - offset) : 0};
  };
  if (!is_ip6) return part(ip + ip_header, captured());
  auto message = part(ip6 + kIp6Header, be16(ip6 + 4));
  for (std::uint8_t next = byte(ip6 + 6); next == 0;) {  // hop-by-hop options
    const std::uint32_t options = byte(message.offset + 1) * 8U + 8;
    if (message.size < options + 2) break;
    next = byte(message.offset);
    message = {message.offset + options, message.size - options};
  }
  return message;
}

}  // namespace wirelines::host
