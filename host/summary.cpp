#include "summary.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <limits>

namespace wirelines::host {

namespace {

constexpr std::uint8_t kIcmp = 1;
constexpr std::uint8_t kTcp = 6;
constexpr std::uint8_t kIcmpV6 = 58;
constexpr std::uint16_t kEtherTypeIp6 = 0x86DD;

// What a record holds before it is filled in: a field that still holds it was not written, or happens to have it.
constexpr std::uint8_t kFill = 0xA5;
constexpr std::uint8_t kOtherFill = 0x5A;

PacketSummary classify(const Lift& lift, std::uint8_t fill) {
  PacketSummary record;
  std::memset(&record, fill, sizeof record);
  record.errorFlags = 0;
  CheckPacket(lift.data(), lift.length(), &record);
  return record;
}

template <typename... Values>
bool all_filled(std::uint8_t fill, const Values&... values) {
  const auto filled = [fill](const auto& value) {
    std::array<std::uint8_t, sizeof value> bytes;
    std::memcpy(bytes.data(), &value, sizeof value);
    return std::all_of(bytes.begin(), bytes.end(), [fill](std::uint8_t byte) { return byte == fill; });
  };
  return (filled(values) && ...);
}

// The parts of `parts` that still hold `fill`.
unsigned untouched(const PacketSummary& record, unsigned parts, std::uint8_t fill) {
  const auto word = static_cast<std::uint16_t>(fill << 8 | fill);
  unsigned found = 0;
  const auto look = [&](unsigned part, bool filled) { found |= filled ? part : 0; };
  look(Summary::kEtherType, record.etherType == word);
  look(Summary::kIp, all_filled(fill, record.srcIp, record.dstIp));
  look(Summary::kIp6, all_filled(fill, record.srcIp6, record.dstIp6));
  look(Summary::kPorts, record.srcPort == word && record.dstPort == word);
  look(Summary::kType, record.typeCode == fill);
  return found & parts;
}

std::string_view network_name(std::uint32_t code) {
  switch (code) {
    case WIRELINES_NET_IP: return "ip";
    case WIRELINES_NET_IP_FRAGMENT: return "ip-fragment";
    case WIRELINES_NET_ARP: return "arp";
    case WIRELINES_NET_RARP: return "rarp";
    case WIRELINES_NET_IPX: return "ipx";
    case WIRELINES_NET_NETBIOS: return "netbios";
    case WIRELINES_NET_XNS: return "xns";
    case WIRELINES_NET_APPLETALK: return "appletalk";
    case WIRELINES_NET_AARP: return "aarp";
    case WIRELINES_NET_IP6: return "ip6";
    case WIRELINES_NET_PPPOE: return "pppoe";
    case WIRELINES_NET_LCP: return "lcp";
    case WIRELINES_NET_CHAP: return "chap";
    case WIRELINES_NET_PAP: return "pap";
    case WIRELINES_NET_IPCP: return "ipcp";
    default: return "other";
  }
}

void put_ip(Output& out, const std::uint8_t (&address)[4]) {
  for (int i = 0; i < 4; i++) {
    if (i > 0) out.append('.');
    out.number(address[i]);
  }
}

void put_ip6(Output& out, const std::uint8_t (&address)[16]) {
  char text[INET6_ADDRSTRLEN];
  out.append(inet_ntop(AF_INET6, address, text, sizeof text));
}

template <std::size_t N>
void put_hex(Output& out, const std::uint8_t (&bytes)[N]) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (const auto byte : bytes) {
    out.append(kDigits[byte >> 4]);
    out.append(kDigits[byte & 0x0F]);
  }
}

using S = Summary;
using T = FieldType;

constexpr Field kFrameFields[] = {
    {"frame", T::kUInt64, S::kAlways, [](Output& o, const S& s) { o.number(s.frame.number); },
     "Number of the frame, from 1, through all traces"},
    {"offset", T::kUInt64, S::kAlways, [](Output& o, const S& s) { o.number(s.frame.offset); },
     "Offset of the frame's record in its (decompressed) trace, or of the blocks before it"},
    {"time", T::kDateTime, S::kTime, [](Output& o, const S& s) { put_utc(o, whole_seconds(s.frame), ' '); },
     "Second of the capture, in UTC; absent after 2105"},
    {"nanoseconds", T::kUInt32, S::kAlways, [](Output& o, const S& s) { o.number(fraction(s.frame)); },
     "Nanoseconds within that second"},
    {"length", T::kUInt32, S::kAlways, [](Output& o, const S& s) { o.number(s.frame.length); }, "Bytes captured"},
    {"originalLength", T::kUInt32, S::kAlways, [](Output& o, const S& s) { o.number(s.frame.original_length); },
     "Bytes that the frame had on the wire"},
};

constexpr Field kSummaryFields[] = {
    {"frameKind", T::kUInt8, S::kFraming, [](Output& o, const S& s) { o.number(s.record.frameKind); },
     "Framing: 1 raw 802.3, 2 LLC, 3 SNAP, 4 Ethernet II, 5 LLC of another format than UI or I"},
    {"dsap", T::kUInt8, S::kSaps, [](Output& o, const S& s) { o.number(s.record.dsap); },
     "Byte 14, unless the frame is Ethernet II"},
    {"ssap", T::kUInt8, S::kSaps, [](Output& o, const S& s) { o.number(s.record.ssap); },
     "Byte 15, unless the frame is Ethernet II"},
    {"etherType", T::kUInt16, S::kEtherType, [](Output& o, const S& s) { o.number(s.record.etherType); },
     "Ethernet II type or SNAP protocol type"},
    {"networkCode", T::kUInt16, S::kNetwork, [](Output& o, const S& s) { o.number(s.record.networkCode); },
     "Network protocol, a WIRELINES_NET number of wirelines.h"},
    {"network", T::kName, S::kNetwork, [](Output& o, const S& s) { o.append(network_name(s.record.networkCode)); },
     "Short name of networkCode"},
    {"ipProtocol", T::kUInt8, S::kProtocol, [](Output& o, const S& s) { o.number(s.record.ipProtocol); },
     "IPv4 protocol, last IPv6 next-header value seen, or IPX packet type"},
    {"dstIp", T::kIpText, S::kIp, [](Output& o, const S& s) { put_ip(o, s.record.dstIp); },
     "IPv4 destination, or target protocol address of ARP and RARP"},
    {"dstIp6", T::kIp6Text, S::kIp6, [](Output& o, const S& s) { put_ip6(o, s.record.dstIp6); }, "IPv6 destination"},
    {"dstPort", T::kUInt16, S::kPorts, [](Output& o, const S& s) { o.number(s.record.dstPort); },
     "TCP or UDP; 0 for IPv4 fragments and other IPv6 payloads"},
    {"srcPort", T::kUInt16, S::kPorts, [](Output& o, const S& s) { o.number(s.record.srcPort); }, "Likewise"},
    {"srcIp", T::kIpText, S::kIp, [](Output& o, const S& s) { put_ip(o, s.record.srcIp); },
     "IPv4 source, or sender protocol address of ARP and RARP"},
    {"srcIp6", T::kIp6Text, S::kIp6, [](Output& o, const S& s) { put_ip6(o, s.record.srcIp6); }, "IPv6 source"},
    {"ipxDstNet", T::kHex8, S::kIpx, [](Output& o, const S& s) { put_hex(o, s.record.ipxDstNet); },
     "IPX destination network"},
    {"ipxDstNode", T::kHex12, S::kIpx, [](Output& o, const S& s) { put_hex(o, s.record.ipxDstNode); },
     "IPX destination node"},
    {"ipxDstSocket", T::kUInt16, S::kIpx, [](Output& o, const S& s) { o.number(s.record.ipxDstSocket); },
     "IPX destination socket"},
    {"ipxSrcNet", T::kHex8, S::kIpx, [](Output& o, const S& s) { put_hex(o, s.record.ipxSrcNet); },
     "IPX source network"},
    {"ipxSrcNode", T::kHex12, S::kIpx, [](Output& o, const S& s) { put_hex(o, s.record.ipxSrcNode); },
     "IPX source node"},
    {"ipxSrcSocket", T::kUInt16, S::kIpx, [](Output& o, const S& s) { o.number(s.record.ipxSrcSocket); },
     "IPX source socket"},
    {"typeCode", T::kUInt8, S::kType, [](Output& o, const S& s) { o.number(s.record.typeCode); },
     "TCP flags, ICMP or ICMPv6 type, low byte of the ARP or RARP operation, or PPPoE discovery code"},
    {"networkOffset", T::kUInt16, S::kNetworkOffset, [](Output& o, const S& s) { o.number(s.record.networkOffset); },
     "Offset of the IPv4 or IPv6 header, or of the packet in a PPPoE session, in the frame"},
    {"transportOffset", T::kUInt16, S::kTransportOffset,
     [](Output& o, const S& s) { o.number(s.record.transportOffset); },
     "Offset of what the IPv4 or IPv6 header carries; absent when it was not looked for"},
    {"errorFlags", T::kUInt8, S::kErrors, [](Output& o, const S& s) { o.number(s.record.errorFlags); },
     "Wrong checksums: 128 with any, 1 IPv4 header, 2 ICMP or ICMPv6, 4 TCP, 8 UDP; absent when none was found"},
};

}  // namespace

std::span<const Field> frame_fields() {
  return kFrameFields;
}

std::span<const Field> summary_fields() {
  return kSummaryFields;
}

void put_member(Output& out, const Field& field, const Summary& summary) {
  out.append('"');
  out.append(field.name);
  out.append(is_text(field.type) ? "\":\"" : "\":");
  field.put(out, summary);
  if (is_text(field.type)) out.append('"');
}

// A field that could be there but holds the fill may have it from the frame: a second record, filled with something
// else, tells. Few frames need it: those with less in them than their codes promise.
Summary::Summary(const Frame& its_frame, const Lift& lift)
    : frame(its_frame), record(classify(lift, kFill)), parts_(possible_parts()) {
  if (const auto doubtful = untouched(record, parts_, kFill); doubtful != 0) {
    parts_ &= ~untouched(classify(lift, kOtherFill), doubtful, kOtherFill);
  }
  const bool arp = record.networkCode == WIRELINES_NET_ARP || record.networkCode == WIRELINES_NET_RARP;
  if ((parts_ & (kIp | kIp6 | kIpx)) != 0 && !arp) parts_ |= kProtocol;
  if (whole_seconds(frame) <= std::numeric_limits<std::uint32_t>::max()) parts_ |= kTime;
  lift.correct(record);
}

// What a frame of these codes can have when nothing of it is missing.
unsigned Summary::possible_parts() const {
  if (record.frameKind == 0) return 0;
  unsigned parts = kFraming;
  if (record.frameKind != WIRELINES_ETHERNET_II) parts |= kSaps;
  if (record.frameKind == WIRELINES_ETHERNET_II || record.frameKind == WIRELINES_SNAP) parts |= kEtherType;
  if (record.networkCode != 0) parts |= kNetwork;
  switch (record.networkCode) {
    case WIRELINES_NET_IP:
    case WIRELINES_NET_IP_FRAGMENT: parts |= kIp | kPorts; break;
    case WIRELINES_NET_IP6: parts |= kIp6 | kPorts | (record.etherType != kEtherTypeIp6 ? kIp : 0U); break;
    case WIRELINES_NET_ARP:
    case WIRELINES_NET_RARP: parts |= kIp | kType; break;
    case WIRELINES_NET_PPPOE: parts |= kType; break;
    case WIRELINES_NET_IPX: parts |= kIpx; break;
    default: break;
  }
  const auto protocol = record.ipProtocol;
  if ((parts & kPorts) != 0 && (protocol == kTcp || protocol == kIcmp || protocol == kIcmpV6)) parts |= kType;
  if (record.networkOffset != 0) parts |= kNetworkOffset;
  if (record.transportOffset != record.networkOffset) parts |= kTransportOffset;
  if (record.errorFlags != 0) parts |= kErrors;
  return parts;
}

void put_utc(Output& out, std::int64_t seconds, char between) {
  const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  const auto put = [&out](auto value, int width, char behind) {
    out.number(static_cast<std::uint64_t>(value), width);
    out.append(behind);
  };
  put(static_cast<int>(date.year()), 4, '-');
  put(static_cast<unsigned>(date.month()), 2, '-');
  put(static_cast<unsigned>(date.day()), 2, between);
  put(clock.hours().count(), 2, ':');
  put(clock.minutes().count(), 2, ':');
  out.number(static_cast<std::uint64_t>(clock.seconds().count()), 2);
}

}  // namespace wirelines::host
