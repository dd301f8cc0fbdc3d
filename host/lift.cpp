#include "lift.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace wirelines::host {

namespace {

constexpr std::uint32_t kMac = 6;
constexpr std::uint32_t kAddresses = 12;
constexpr std::uint32_t kEthernetHeader = 14;
constexpr std::uint32_t kTag = 4;
constexpr std::uint32_t kLineRoom = 129;
constexpr std::uint32_t kNoBytes = 0xFFFFFFFF;

constexpr std::uint16_t kIp = 0x0800;
constexpr std::uint16_t kIp6 = 0x86DD;
constexpr std::uint16_t kCustomerTag = 0x8100;
constexpr std::uint16_t kServiceTag = 0x88A8;
constexpr std::uint16_t kIpx = 0x8137;
constexpr std::uint16_t kPppSession = 0x8864;
constexpr std::uint16_t kLcp = 0xC021;          // of PPP
constexpr std::uint16_t kLongestLength = 1500;  // above it, a length field is an EtherType
constexpr std::uint16_t kNoType = 0xFFFF;       // reserved, and so no protocol's: its data are shown as they are

// What Linux says in the place of an EtherType for frames that have none.
constexpr std::uint16_t kLinuxRaw8023 = 1;
constexpr std::uint16_t kLinuxLlc = 4;

// The codes and the style of the data link's lines.
constexpr std::uint32_t kFrameField = 73;
constexpr std::uint32_t kLinkTitle = 12;
constexpr std::uint32_t kLinkField = 75;
constexpr std::uint32_t kLinkStyle = 4;
constexpr std::uint32_t kLinkGroup = 9;

std::uint16_t be16(const std::uint8_t* data) {
  return static_cast<std::uint16_t>(data[0] << 8 | data[1]);
}

std::uint16_t version_type(const Frame& frame) {
  switch (frame.length == 0 ? 0 : frame.data[0] >> 4) {
    case 4: return kIp;
    case 6: return kIp6;
    default: return kNoType;
  }
}

// The numbers of the address families differ from system to system, except IPv4's; none that means IPv6 to one means
// anything else that is met to another.
std::uint16_t family_type(std::uint32_t family) {
  switch (family) {
    case 2: return kIp;
    case 10:
    case 23:
    case 24:
    case 28:
    case 30: return kIp6;
    default: return kNoType;
  }
}

const char* packet_type_name(std::uint32_t type) {
  constexpr std::array kNames = {"to us", "broadcast", "multicast", "to another host", "sent by us"};
  return type < kNames.size() ? kNames[type] : "unknown";
}

// A Linux cooked header: where what it tells stands.
struct CookedLayout {
  std::uint32_t size, protocol, hardware, packet_type, packet_type_size, address_length, address;
};
constexpr CookedLayout kCooked1 = {16, 14, 2, 0, 2, 5, 6};
constexpr CookedLayout kCooked2 = {20, 0, 8, 10, 1, 11, 12};

constexpr const CookedLayout& cooked_layout(int link_type) {
  return link_type == DLT_LINUX_SLL2 ? kCooked2 : kCooked1;
}

bool is_cooked(int link_type) {
  return link_type == DLT_LINUX_SLL || link_type == DLT_LINUX_SLL2;
}

bool is_ppp(int link_type) {
  return link_type == DLT_PPP || link_type == DLT_PPP_SERIAL || link_type == DLT_PPP_WITH_DIR;
}

// The header of PPP, with the direction that a capture may put before it. Address and control may be left out, and the
// protocol be compressed to one byte (RFC 1661, 1662).
struct PppHeader {
  std::uint32_t protocol_at, size;
  std::uint16_t protocol;
  std::uint16_t type;  // of the Ethernet frame that carries such a packet: a PPPoE session, where there is no other
};

PppHeader ppp_header(const Frame& frame) {
  const auto byte = [&frame](std::uint32_t at) { return at < frame.length ? frame.data[at] : std::uint8_t{0}; };
  const auto pair = [&byte](std::uint32_t at) { return static_cast<std::uint16_t>(byte(at) << 8 | byte(at + 1)); };
  if (frame.link_type == DLT_PPP_SERIAL && (byte(0) == 0x0F || byte(0) == 0x8F)) {  // Cisco's: an EtherType
    return {2, 4, pair(2), pair(2) > kLongestLength ? pair(2) : kNoType};
  }
  std::uint32_t at = frame.link_type == DLT_PPP_WITH_DIR ? 1 : 0;
  if (pair(at) == 0xFF03) at += 2;
  const bool compressed = (byte(at) & 1) != 0;
  const std::uint16_t protocol = compressed ? byte(at) : pair(at);
  const auto type = [protocol] {
    switch (protocol) {
      case 0x0021: return kIp;
      case 0x002B: return kIpx;
      case 0x0057: return kIp6;
      default: return kPppSession;
    }
  }();
  return {at, at + (compressed ? 1 : 2), protocol, type};
}

std::uint32_t header_size(const Frame& frame) {
  const auto link_type = frame.link_type;
  if (is_cooked(link_type)) return cooked_layout(link_type).size;
  if (is_ppp(link_type)) return ppp_header(frame).size;
  return link_type == DLT_NULL || link_type == DLT_LOOP ? 4 : 0;
}

const char* link_name(int link_type) {
  switch (link_type) {
    case DLT_LINUX_SLL: return "Linux cooked v1";
    case DLT_LINUX_SLL2: return "Linux cooked v2";
    case DLT_NULL:
    case DLT_LOOP: return "BSD loopback";
    case DLT_PPP:
    case DLT_PPP_SERIAL:
    case DLT_PPP_WITH_DIR: return "PPP";
    default: return "Raw IP";
  }
}

// What stands in the type field of the Ethernet header made up for a frame whose own header is whole.
std::uint16_t type_field(const Frame& frame) {
  const auto* const data = frame.data;
  switch (frame.link_type) {
    case DLT_IPV4: return kIp;
    case DLT_IPV6: return kIp6;
    case DLT_NULL: {
      // In the byte order of the machine that captured: a family is a small number.
      const auto little = static_cast<std::uint32_t>(data[0] | data[1] << 8);
      return family_type(little != 0 ? little : be16(data + 2));
    }
    case DLT_LOOP: return family_type(be16(data + 2));
    case DLT_PPP:
    case DLT_PPP_SERIAL:
    case DLT_PPP_WITH_DIR: return ppp_header(frame).type;
    case DLT_LINUX_SLL:
    case DLT_LINUX_SLL2: {
      const auto& layout = cooked_layout(frame.link_type);
      const std::uint16_t protocol = be16(data + layout.protocol);
      if (protocol > kLongestLength) return protocol;
      if (protocol != kLinuxRaw8023 && protocol != kLinuxLlc) return kNoType;
      return static_cast<std::uint16_t>(std::min<std::uint32_t>(frame.length - layout.size, kLongestLength));
    }
    default: return version_type(frame);
  }
}

// Adds a line to those of the data link. False when memory is exhausted.
template <typename... Args>
bool add_line(LineList& list, std::uint32_t first, std::uint32_t last, const char* format, Args... args) {
  char* const text = GetLineBuf();
  if (text == nullptr) return false;
  (void)std::snprintf(text, kLineRoom, format, args...);
  return AddString(&list, text, kLinkField, 1, first, last, kLinkStyle, kLinkGroup) == 0;
}

}  // namespace

bool can_lift(int link_type) {
  switch (link_type) {
    case DLT_EN10MB:
    case DLT_LINUX_SLL:
    case DLT_LINUX_SLL2:
    case DLT_RAW:
    case DLT_IPV4:
    case DLT_IPV6:
    case DLT_NULL:
    case DLT_LOOP:
    case DLT_PPP:
    case DLT_PPP_SERIAL:
    case DLT_PPP_WITH_DIR: return true;
    default: return false;
  }
}

void Lift::take(const Frame& frame) {
  frame_ = &frame;
  data_ = frame.data;
  length_ = frame.length;
  seam_ = rest_ = 0;
  tags_.clear();
  if (made_up()) make_up_header();
  if (lift_tags_) take_tags();
}

// A frame that is too short for its own header keeps it, as data.
void Lift::make_up_header() {
  const auto header = header_size(*frame_);
  const bool whole = frame_->length >= header;
  const std::uint16_t type = whole ? type_field(*frame_) : kNoType;
  rest_ = whole ? header : 0;

  bytes_.assign(kEthernetHeader, 0);
  if (whole && is_cooked(frame_->link_type)) {
    const auto& layout = cooked_layout(frame_->link_type);
    const auto* const data = frame_->data;
    if (data[layout.address_length] == kMac) std::memcpy(bytes_.data() + kMac, data + layout.address, kMac);
  }
  bytes_[kAddresses] = static_cast<std::uint8_t>(type >> 8);
  bytes_[kAddresses + 1] = static_cast<std::uint8_t>(type);
  if (in_session()) make_up_session();
  seam_ = static_cast<std::uint32_t>(bytes_.size());
  bytes_.insert(bytes_.end(), frame_->data + rest_, frame_->data + frame_->length);
  if (padding() > 0) bytes_.resize(bytes_.size() + padding());
  data_ = bytes_.data();
  length_ = static_cast<std::uint32_t>(bytes_.size());
}

// The protocol is the frame's own; one that is compressed is written out.
void Lift::make_up_session() {
  const auto ppp = ppp_header(*frame_);
  const bool compressed = ppp.size - ppp.protocol_at == 1;
  if (!compressed) rest_ = ppp.protocol_at;
  const auto size = std::min<std::uint32_t>(frame_->length - ppp.protocol_at + (compressed ? 1 : 0), 0xFFFF);
  bytes_.insert(bytes_.end(), {0x11, 0, 0, 0, static_cast<std::uint8_t>(size >> 8), static_cast<std::uint8_t>(size)});
  if (compressed) bytes_.insert(bytes_.end(), {0, static_cast<std::uint8_t>(ppp.protocol)});
}

bool Lift::in_session() const {
  if (!is_ppp(frame_->link_type)) return false;
  const auto ppp = ppp_header(*frame_);
  return ppp.size <= frame_->length && ppp.type == kPppSession;
}

// The library leaves out what is shorter than any LCP packet on an Ethernet, which pads its frames.
std::uint32_t Lift::padding() const {
  constexpr std::uint32_t kLeastLcp = 16;
  if (!in_session() || frame_->length < frame_->original_length) return 0;
  const auto ppp = ppp_header(*frame_);
  const auto size = frame_->length - ppp.size;
  return ppp.protocol == kLcp && size < kLeastLcp ? kLeastLcp - size : 0;
}

// A tag stays when the type that it precedes was not captured whole.
void Lift::take_tags() {
  std::uint32_t at = kAddresses;
  for (; length_ >= at + kTag + 2; at += kTag) {
    const std::uint16_t type = be16(data_ + at);
    if (type != kCustomerTag && type != kServiceTag) break;
    // The type of the first tag stands in the cooked header, which version 2 has far from the rest of the tag.
    const bool apart = at < seam_ && frame_->link_type == DLT_LINUX_SLL2;
    const std::uint32_t real = at + rest_ - seam_;
    tags_.push_back({apart ? rest_ : real, real + kTag - 1, type, be16(data_ + at + 2)});
  }
  if (tags_.empty()) return;
  if (!made_up()) bytes_.assign(data_, data_ + length_);
  bytes_.erase(bytes_.begin() + kAddresses, bytes_.begin() + at);
  rest_ += at - seam_;
  seam_ = kAddresses;
  data_ = bytes_.data();
  length_ = static_cast<std::uint32_t>(bytes_.size());
}

std::uint32_t Lift::correct(LineList& list, std::uint32_t top_line) const {
  if (seam_ == 0) return top_line;
  const auto line = [&list](std::int32_t i) -> DisplayLine& { return *static_cast<DisplayLine*>(list.data[i]); };

  std::int32_t behind_link = 0;  // the line after those of the data link, the first of which has the title's code
  for (std::int32_t i = 0; i < list.count; i++) {
    const auto code = line(i).protocolCode;
    if (code == kLinkTitle && behind_link == 0) behind_link = i + 1;
    if (code == kLinkField && behind_link == i) behind_link = i + 1;
    if (code == kFrameField && std::string_view(line(i).text).starts_with("[Length] ")) {
      (void)std::snprintf(line(i).text, kLineRoom, "[Length] %u (0x%.4X) byte(s)", frame_->length, frame_->length);
    }
    correct_range(line(i));
  }
  if (behind_link == 0) return top_line;  // memory was exhausted before

  const auto before = list.count;
  add_lines(list);
  std::rotate(list.data + behind_link, list.data + before, list.data + list.count);
  const auto added = static_cast<std::uint32_t>(list.count - before);
  return top_line >= static_cast<std::uint32_t>(behind_link) ? top_line + added : top_line;
}

void Lift::add_lines(LineList& list) const {
  if (made_up()) {
    const auto type = frame_->link_type;
    const auto last = own_header() > 0 ? own_header() - 1 : kNoBytes;
    if (!add_line(list, last == kNoBytes ? kNoBytes : 0, last,
                  padding() > 0  ? "[Link] %s, shown with Ethernet and PPPoE headers and padding made up by the host"
                  : in_session() ? "[Link] %s, shown with Ethernet and PPPoE headers made up by the host"
                                 : "[Link] %s, shown with an Ethernet header made up by the host",
                  link_name(type))) {
      return;
    }
    if (last != kNoBytes && is_ppp(type) && !in_session()) {
      const auto ppp = ppp_header(*frame_);
      if (!add_line(list, ppp.protocol_at, last, "[Protocol] 0x%.4X", ppp.protocol)) return;
    }
    if (last != kNoBytes && is_cooked(type)) {
      const auto& layout = cooked_layout(type);
      const auto* const data = frame_->data;
      const std::uint32_t packet =
          layout.packet_type_size == 1 ? data[layout.packet_type] : be16(data + layout.packet_type);
      if (!add_line(list, 0, last, "[Packet Type] %u (%s) [Hardware Type] %u [Protocol] 0x%.4X", packet,
                    packet_type_name(packet), be16(data + layout.hardware), be16(data + layout.protocol))) {
        return;
      }
    }
  }
  for (const auto& tag : tags_) {
    if (!add_line(list, tag.first, tag.last, "[VLAN] %u [Priority] %u [Drop Eligible] %u (%s)", tag.vlan(),
                  tag.control >> 13U, tag.control >> 12U & 1U, tag.type == kCustomerTag ? "802.1Q" : "802.1ad")) {
      return;
    }
  }
}

// The header of the frame's own link layer, when it is whole and not Ethernet's.
std::uint32_t Lift::own_header() const {
  const auto header = header_size(*frame_);
  return frame_->length >= header ? header : 0;
}

// A range from before the seam to behind it is widened by what was taken out; what describes nothing but a header made
// up describes no bytes.
void Lift::correct_range(DisplayLine& line) const {
  auto& first = line.startOffset;
  auto& last = line.endOffset;
  if (first == last && (first == 0 || first == kNoBytes)) return;
  const std::uint32_t shift = rest_ - seam_;  // modulo 2^32, as the sums below
  if (first >= seam_) {
    // A field without bytes at the very front would end before byte 0.
    last = last < seam_ && last + rest_ < seam_ ? first + shift : last + shift;
    first += shift;
  } else if (last >= seam_) {
    if (made_up()) first = rest_;
    last += shift;
  } else if (made_up()) {
    first = last = kNoBytes;
  }
}

void Lift::correct(PacketSummary& summary) const {
  const auto shifted = [this](std::uint16_t offset) {
    return offset < seam_ ? offset : static_cast<std::uint16_t>(offset + rest_ - seam_);
  };
  summary.networkOffset = shifted(summary.networkOffset);
  summary.transportOffset = shifted(summary.transportOffset);
}

}  // namespace wirelines::host
