#include "summary.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>

#include "ip6_text.hpp"

namespace wirelines::host {

namespace {

constexpr std::uint8_t kIcmp = 1;
constexpr std::uint8_t kTcp = 6;
constexpr std::uint8_t kIcmpV6 = 58;
constexpr std::uint16_t kEtherTypeIp6 = 0x86DD;
constexpr std::uint16_t kPppoeSession = 0x8864;
constexpr std::int64_t kYear2106 = 4291747200;  // dates in databases end before it

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

void put_ip(Output& out, std::string_view address) {
  for (std::size_t i = 0; i < address.size(); i++) {
    if (i > 0) out.append('.');
    out.number(static_cast<std::uint8_t>(address[i]));
  }
}

void put_ip6(Output& out, std::string_view address) {
  out.append(Ip6Text(reinterpret_cast<const std::uint8_t*>(address.data())).view());
}

void put_hex(Output& out, std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    out.append(kDigits[byte >> 4]);
    out.append(kDigits[byte & 0x0F]);
  }
}

template <std::size_t N>
std::string_view bytes(const std::uint8_t (&address)[N]) {
  return {reinterpret_cast<const char*>(address), N};
}

std::string_view station(const Summary& summary, std::size_t offset) {
  return {reinterpret_cast<const char*>(summary.lift.data()) + offset, 6};
}

using S = Summary;
using T = FieldType;
using V = FieldValue;

constexpr Field kFrameFields[] = {
    {"frame", T::kUInt64, S::kAlways, [](const S& s) { return V{s.frame.number}; },
     "Number of the frame, from 1, through all traces"},
    {"offset", T::kUInt64, S::kAlways, [](const S& s) { return V{s.frame.offset}; },
     "Offset of the frame's record in its (decompressed) trace, or of the blocks before it"},
    {"time", T::kDateTime, S::kAlways,
     [](const S& s) {
       const auto seconds = whole_seconds(s.frame);
       return V{seconds < kYear2106 ? static_cast<std::uint64_t>(seconds) : 0};
     },
     "Second of the capture, in UTC; 1970-01-01 00:00:00 instead of one after 2105"},
    {"nanoseconds", T::kUInt32, S::kAlways, [](const S& s) { return V{fraction(s.frame)}; },
     "Nanoseconds within that second"},
    {"length", T::kUInt32, S::kAlways, [](const S& s) { return V{s.frame.length}; }, "Bytes captured"},
    {"originalLength", T::kUInt32, S::kAlways, [](const S& s) { return V{s.frame.original_length}; },
     "Bytes that the frame had on the wire"},
    {"dstStation", T::kHex12, S::kStations,
     [](const S& s) {
       return V{0, station(s, 0)};
     },
     "MAC address of the destination; absent where the capture has none"},
    {"srcStation", T::kHex12, S::kStations,
     [](const S& s) {
       return V{0, station(s, 6)};
     },
     "MAC address of the source, likewise"},
    {"wrongChecksums", T::kUInt8, S::kAlways,
     [](const S& s) { return V{static_cast<std::uint64_t>(s.wrong_checksums())}; },
     "errorFlags without 128 and without what bytes that were not captured make wrong; 0 when none is"},
};

constexpr Field kSummaryFields[] = {
    {"frameKind", T::kUInt8, S::kFraming, [](const S& s) { return V{s.record.frameKind}; },
     "Framing: 1 raw 802.3, 2 LLC, 3 SNAP, 4 Ethernet II, 5 LLC of another format than UI or I"},
    {"dsap", T::kUInt8, S::kSaps, [](const S& s) { return V{s.record.dsap}; },
     "Byte 14, unless the frame is Ethernet II"},
    {"ssap", T::kUInt8, S::kSaps, [](const S& s) { return V{s.record.ssap}; },
     "Byte 15, unless the frame is Ethernet II"},
    {"etherType", T::kUInt16, S::kEtherType, [](const S& s) { return V{s.record.etherType}; },
     "Ethernet II type or SNAP protocol type"},
    {"networkCode", T::kUInt16, S::kNetwork, [](const S& s) { return V{s.record.networkCode}; },
     "Network protocol, a WIRELINES_NET number of wirelines.h"},
    {"network", T::kName, S::kNetwork,
     [](const S& s) {
       return V{0, network_name(s.record.networkCode)};
     },
     "Short name of networkCode"},
    {"ipProtocol", T::kUInt8, S::kProtocol, [](const S& s) { return V{s.record.ipProtocol}; },
     "IPv4 protocol, last IPv6 next-header value seen, or IPX packet type"},
    {"dstIp", T::kIpText, S::kIp,
     [](const S& s) {
       return V{0, bytes(s.record.dstIp)};
     },
     "IPv4 destination, or target protocol address of ARP and RARP"},
    {"dstIp6", T::kIp6Text, S::kIp6,
     [](const S& s) {
       return V{0, bytes(s.record.dstIp6)};
     },
     "IPv6 destination"},
    {"dstPort", T::kUInt16, S::kPorts, [](const S& s) { return V{s.record.dstPort}; },
     "TCP or UDP; 0 for IPv4 fragments and other IPv6 payloads"},
    {"srcPort", T::kUInt16, S::kPorts, [](const S& s) { return V{s.record.srcPort}; }, "Likewise"},
    {"srcIp", T::kIpText, S::kIp,
     [](const S& s) {
       return V{0, bytes(s.record.srcIp)};
     },
     "IPv4 source, or sender protocol address of ARP and RARP"},
    {"srcIp6", T::kIp6Text, S::kIp6,
     [](const S& s) {
       return V{0, bytes(s.record.srcIp6)};
     },
     "IPv6 source"},
    {"ipxDstNet", T::kHex8, S::kIpx,
     [](const S& s) {
       return V{0, bytes(s.record.ipxDstNet)};
     },
     "IPX destination network"},
    {"ipxDstNode", T::kHex12, S::kIpx,
     [](const S& s) {
       return V{0, bytes(s.record.ipxDstNode)};
     },
     "IPX destination node"},
    {"ipxDstSocket", T::kUInt16, S::kIpx, [](const S& s) { return V{s.record.ipxDstSocket}; },
     "IPX destination socket"},
    {"ipxSrcNet", T::kHex8, S::kIpx,
     [](const S& s) {
       return V{0, bytes(s.record.ipxSrcNet)};
     },
     "IPX source network"},
    {"ipxSrcNode", T::kHex12, S::kIpx,
     [](const S& s) {
       return V{0, bytes(s.record.ipxSrcNode)};
     },
     "IPX source node"},
    {"ipxSrcSocket", T::kUInt16, S::kIpx, [](const S& s) { return V{s.record.ipxSrcSocket}; }, "IPX source socket"},
    {"typeCode", T::kUInt8, S::kType, [](const S& s) { return V{s.record.typeCode}; },
     "TCP flags, ICMP or ICMPv6 type, low byte of the ARP or RARP operation, or PPPoE discovery code"},
    {"networkOffset", T::kUInt16, S::kNetworkOffset, [](const S& s) { return V{s.record.networkOffset}; },
     "Offset of the IPv4 or IPv6 header, or of the packet in a PPPoE session, in the frame"},
    {"transportOffset", T::kUInt16, S::kTransportOffset, [](const S& s) { return V{s.record.transportOffset}; },
     "Offset of what the IPv4 or IPv6 header carries; absent when it was not looked for"},
    {"errorFlags", T::kUInt8, S::kErrors, [](const S& s) { return V{s.record.errorFlags}; },
     "Wrong checksums: 128 with any, 1 IPv4 header, 2 ICMP or ICMPv6, 4 TCP, 8 UDP; absent when none was found"},
};

}  // namespace

std::uint32_t network_offset(const PacketSummary& record) {
  const bool short_offset = record.frameKind == WIRELINES_SNAP && record.etherType == kPppoeSession;
  return record.networkOffset + (short_offset ? 3U : 0U);
}

int wrong_checksums(const Frame& frame, const Lift& lift, const PacketSummary& record) {
  constexpr int kAnyError = 0x80;
  const int errors = record.errorFlags & ~kAnyError;
  if (errors == 0 || frame.length >= frame.original_length) return errors;
  const auto captured = static_cast<std::uint32_t>(lift.length());
  auto end = network_offset(record);
  const bool in_ip = record.networkCode == WIRELINES_NET_IP6 && record.etherType != kEtherTypeIp6;
  if (!in_ip && captured > end) end += (lift.data()[end] & 0x0FU) * 4;
  return captured >= end ? errors & WIRELINES_BAD_IP & ~kAnyError : 0;
}

std::span<const Field> frame_fields() {
  return kFrameFields;
}

std::span<const Field> summary_fields() {
  return kSummaryFields;
}

void put_value(Output& out, const Field& field, const Summary& summary) {
  const auto value = field.get(summary);
  switch (field.type) {
    case T::kUInt8:
    case T::kUInt16:
    case T::kUInt32:
    case T::kUInt64: out.number(value.number); break;
    case T::kDateTime: put_utc(out, static_cast<std::int64_t>(value.number), ' '); break;
    case T::kName: out.append(value.bytes); break;
    case T::kIpText: put_ip(out, value.bytes); break;
    case T::kIp6Text: put_ip6(out, value.bytes); break;
    case T::kHex8:
    case T::kHex12: put_hex(out, value.bytes); break;
  }
}

void put_member(Output& out, const Field& field, const Summary& summary) {
  out.append('"');
  out.append(field.name);
  out.append(is_text(field.type) ? "\":\"" : "\":");
  put_value(out, field, summary);
  if (is_text(field.type)) out.append('"');
}

// A field that could be there but holds the fill may have it from the frame: a second record, filled with something
// else, tells. Few frames need it: those with less in them than their codes promise.
Summary::Summary(const Frame& its_frame, const Lift& its_lift)
    : frame(its_frame), lift(its_lift), record(classify(lift, kFill)), parts_(possible_parts()) {
  if (const auto doubtful = untouched(record, parts_, kFill); doubtful != 0) {
    parts_ &= ~untouched(classify(lift, kOtherFill), doubtful, kOtherFill);
  }
  const bool arp = record.networkCode == WIRELINES_NET_ARP || record.networkCode == WIRELINES_NET_RARP;
  if ((parts_ & (kIp | kIp6 | kIpx)) != 0 && !arp) parts_ |= kProtocol;
  if (lift.length() >= 12 && !lift.made_up()) parts_ |= kStations;
  wrong_checksums_ = host::wrong_checksums(frame, lift, record);
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
