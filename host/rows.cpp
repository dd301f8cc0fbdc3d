#include "rows.hpp"

#include <vek4003.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstddef>

#include "ip6_text.hpp"
#include "packet.hpp"
#include "summary.hpp"

namespace wirelines::host {

namespace {

// As wide as most values are: an IPv6 address often is longer, and pushes.
constexpr std::size_t kNumberWidth = 5;
constexpr std::size_t kAddressWidth = 17;
constexpr std::size_t kNumericRoom = 64;             // of two numbers with what stands between and around them
constexpr std::size_t kProtocolAndLengthWidth = 11;  // one of them may take what the other leaves

constexpr std::string_view kPlain = "\x1B[0m";
constexpr std::string_view kBadColor = "\x1B[1;38;5;160m";
constexpr std::string_view kTcpColor = "\x1B[38;5;32m";
constexpr std::string_view kUdpColor = "\x1B[38;5;30m";
constexpr std::string_view kControlColor = "\x1B[38;5;133m";  // ICMP, IGMP
constexpr std::string_view kArpColor = "\x1B[38;5;136m";
constexpr std::string_view kNetwareColor = "\x1B[38;5;64m";
constexpr std::string_view kPppColor = "\x1B[38;5;97m";

constexpr std::uint8_t kIcmp = 1;
constexpr std::uint8_t kIgmp = 2;
constexpr std::uint8_t kTcp = 6;
constexpr std::uint8_t kUdp = 17;
constexpr std::uint8_t kIcmpV6 = 58;

constexpr std::uint16_t kPppoeSession = 0x8864;

// The bits of errorFlags.
constexpr int kAnyError = 0x80;
constexpr int kIpError = WIRELINES_BAD_IP & ~kAnyError;
constexpr int kIcmpError = WIRELINES_BAD_ICMP & ~kAnyError;
constexpr int kTcpError = WIRELINES_BAD_TCP & ~kAnyError;
constexpr int kUdpError = WIRELINES_BAD_UDP & ~kAnyError;

constexpr std::size_t kNameRoom = 36;  // of the longest name that a look-up gives

// The numbers of a byte, with room for a copy of four bytes.
struct Decimal {
  char text[4];
  std::uint8_t size;
};
constexpr auto kDecimals = [] {
  std::array<Decimal, 256> decimals{};
  for (unsigned value = 0; value < 256; value++) {
    auto& [text, size] = decimals[value];
    if (value >= 100) text[size++] = static_cast<char>('0' + value / 100);
    if (value >= 10) text[size++] = static_cast<char>('0' + value / 10 % 10);
    text[size++] = static_cast<char>('0' + value % 10);
  }
  return decimals;
}();

// A short text put together by hand: an address, or the user's name for it.
class Label {
 public:
  static constexpr std::size_t kRoom = 64;  // for an IPv6 address, and an IPX network with the name of a station

  Label() = default;
  explicit Label(std::string_view text) { append(text); }

  const char* c_str() {
    text_[size_] = '\0';
    return text_;
  }
  [[nodiscard]] std::string_view view() const { return {text_, size_}; }

  void append(char c) { text_[size_++] = c; }
  void append(std::string_view text) {
    std::memcpy(text_ + size_, text.data(), text.size());
    size_ += text.size();
  }
  void append(const Label& label) {
    append(label.view());
    named_ |= label.named_;
  }
  void decimal(std::uint8_t value) {
    const auto& digits = kDecimals[value];
    std::memcpy(text_ + size_, digits.text, sizeof digits.text);
    size_ += digits.size;
  }
  void hex_number(std::uint32_t value) {
    char* const end = text_ + size_;
    size_ = static_cast<std::size_t>(std::to_chars(end, end + 8, value, 16).ptr - text_);
  }
  void hex(std::uint8_t byte) {
    constexpr const char* kDigits = "0123456789abcdef";
    append(kDigits[byte >> 4]);
    append(kDigits[byte & 0x0F]);
  }

  // Takes the name in the place of the text, if it has one.
  void look_up(std::int32_t (*to_name)(const char*, char*)) {
    char name[kNameRoom];
    if (to_name(c_str(), name) != 1) return;
    size_ = 0;
    append(std::string_view(name));
    named_ = true;
  }
  // A name may have characters that have to be converted, an address has none.
  [[nodiscard]] bool named() const { return named_; }

 private:
  char text_[kRoom];
  std::size_t size_ = 0;
  bool named_ = false;
};

Label station(const std::uint8_t* mac) {
  Label label;
  for (int i = 0; i < 6; i++) {
    if (i > 0) label.append(':');
    label.hex(mac[i]);
  }
  label.look_up(StationToNickName);
  return label;
}

Label ip(const std::uint8_t* address) {
  Label label;
  for (int i = 0; i < 4; i++) {
    if (i > 0) label.append('.');
    label.decimal(address[i]);
  }
  label.look_up(IpStrToNickName);
  return label;
}

Label ip6(const std::uint8_t* address) {
  Ip6Text text(address);
  Label label;
  label.append(text.view());
  label.look_up(Ip6StrToNickName);
  return label;
}

// "c0a80100.00001b123456": most networks are 0 or 1, so zeros in front are left out.
Label ipx(const std::uint8_t* network, const std::uint8_t* node) {
  std::uint32_t number = 0;
  for (int i = 0; i < 4; i++) number = number << 8 | network[i];
  Label label;
  label.hex_number(number);
  label.append('.');

  Label address;
  for (int i = 0; i < 6; i++) address.hex(node[i]);
  address.look_up(StationToNickName);
  label.append(address);
  return label;
}

// "[S.]": the letters that tcpdump has for the flags, from the lowest bit.
void tcp_flags(Output& out, std::uint8_t flags) {
  constexpr std::string_view kLetters = "FSRP.UEW";
  out.append('[');
  for (unsigned rest = flags; rest != 0; rest &= rest - 1) {
    out.append(kLetters[static_cast<std::size_t>(std::countr_zero(rest))]);
  }
  out.append(']');
}

const char* link_name(std::uint32_t frame_kind) {
  switch (frame_kind) {
    case WIRELINES_LLC:
    case WIRELINES_LLC_S_U: return "LLC";
    case WIRELINES_SNAP: return "SNAP";
    default: return "Ether";
  }
}

struct Protocol {
  std::string_view name;
  std::string_view color;  // that of its family; empty for those without one
};

Protocol protocol_of(const Packet& packet) {
  const auto& summary = packet.summary;
  switch (summary.networkCode) {
    case WIRELINES_NET_IP:
    case WIRELINES_NET_IP_FRAGMENT:
    case WIRELINES_NET_IP6:
      switch (summary.ipProtocol) {
        case kTcp: return {"TCP", kTcpColor};
        case kUdp: return {"UDP", kUdpColor};
        case kIcmp: return {"ICMP", kControlColor};
        case kIgmp: return {"IGMP", kControlColor};
        case kIcmpV6: return {"ICMPv6", kControlColor};
        default: return {summary.networkCode == WIRELINES_NET_IP6 ? "IPv6" : "IP", ""};
      }
    case WIRELINES_NET_ARP: return {"ARP", kArpColor};
    case WIRELINES_NET_RARP: return {"RARP", kArpColor};
    case WIRELINES_NET_IPX: return {"IPX", kNetwareColor};
    case WIRELINES_NET_NETBIOS: return {"NetBIOS", kNetwareColor};
    case WIRELINES_NET_XNS: return {"XNS", kNetwareColor};
    case WIRELINES_NET_APPLETALK: return {"AppleTalk", kNetwareColor};
    case WIRELINES_NET_AARP: return {"AARP", kNetwareColor};
    case WIRELINES_NET_PPPOE: return {packet.lift.in_session() ? "PPP" : "PPPoE", kPppColor};
    case WIRELINES_NET_LCP: return {"LCP", kPppColor};
    case WIRELINES_NET_CHAP: return {"CHAP", kPppColor};
    case WIRELINES_NET_PAP: return {"PAP", kPppColor};
    case WIRELINES_NET_IPCP: return {"IPCP", kPppColor};
    default: return {link_name(summary.frameKind), ""};
  }
}

const char* pppoe_code_name(std::uint8_t code) {
  switch (code) {
    case 0x09: return "PADI";
    case 0x07: return "PADO";
    case 0x19: return "PADR";
    case 0x65: return "PADS";
    case 0xA7: return "PADT";
    default: return "";
  }
}

}  // namespace

void RowPrinter::row(const Frame& frame) {
  tabs_ = false;
  columns(frame);
}

void RowPrinter::cells(const Frame& frame) {
  tabs_ = true;
  columns(frame);
}

void RowPrinter::columns(const Frame& frame) {
  lift_.take(frame);
  const Packet packet(frame, lift_);
  const int errors = wrong_checksums(frame, lift_, packet.summary);
  number_and_time(frame);
  addresses(packet);
  protocol_and_length(packet, errors != 0);
  note(packet);
  tags();
  verdicts(errors);
  if (packet.cut()) out_.append(" (cut)");
  out_.append('\n');
}

void RowPrinter::number_and_time(const Frame& frame) {
  if (frame.seconds != second_) {
    const std::tm& local = clock_.at(second_ = frame.seconds);
    char* to = second_text_;
    for (const int part : {local.tm_hour, local.tm_min, local.tm_sec}) {
      *to++ = static_cast<char>('0' + part / 10);
      *to++ = static_cast<char>('0' + part % 10);
      *to++ = ':';
    }
    to[-1] = '.';
  }
  Output::Piece out(out_, kNumericRoom);
  out.right(frame.number, tabs_ ? 0 : kNumberWidth);
  out.append(separator());
  out.append({second_text_, sizeof second_text_});
  out.number(frame.nanoseconds / 1000, 6);
  out.append(separator());
}

void RowPrinter::addresses(const Packet& packet) {
  const auto& s = packet.summary;
  if (s.networkCode == WIRELINES_NET_IPX) {
    address_columns(ipx(s.ipxSrcNet, s.ipxSrcNode), ipx(s.ipxDstNet, s.ipxDstNode));
  } else if (packet.whole_ip6()) {
    address_columns(ip6(s.srcIp6), ip6(s.dstIp6));
  } else if (packet.whole_ip()) {
    address_columns(ip(s.srcIp), ip(s.dstIp));
  } else {
    // A header made up has no destination, and a source only where its frame told one.
    const auto* const data = packet.lift.data();
    const bool made_up = packet.lift.made_up();
    const bool source = packet.has(12) && !(made_up && std::all_of(data + 6, data + 12, [](int b) { return b == 0; }));
    address_columns(source ? station(data + 6) : Label("-"), packet.has(6) && !made_up ? station(data) : Label("-"));
  }
}

template <typename Label>
void RowPrinter::address_columns(const Label& source, const Label& destination) {
  for (const Label* address : {&source, &destination}) {
    const auto text = address->view();
    const auto width = tabs_ ? 0 : kAddressWidth;
    if (address->named()) {
      text_.append(out_, text);
      if (text.size() < width) out_.blanks(width - text.size());  // a byte of code page 932 takes a column
      out_.append(separator());
    } else {
      Output::Piece out(out_, Label::kRoom + kAddressWidth + 1);
      out.left(text, width);
      out.append(separator());
    }
  }
}

void RowPrinter::protocol_and_length(const Packet& packet, bool wrong) {
  const auto [name, family_color] = protocol_of(packet);
  const auto color = wrong ? kBadColor : family_color;
  Output::Piece out(out_, kBadColor.size() + name.size() + kPlain.size() + kNumericRoom);
  if (color_) out.append(color);
  out.append(name);
  if (color_ && !color.empty()) out.append(kPlain);
  out.append(separator());
  out.right(packet.frame.original_length, tabs_ ? 0 : kProtocolAndLengthWidth - 1 - name.size());
  out.append(separator());
}

void RowPrinter::note(const Packet& packet) {
  switch (packet.summary.networkCode) {
    case WIRELINES_NET_IP:
    case WIRELINES_NET_IP_FRAGMENT:
    case WIRELINES_NET_IP6: ip_note(packet); break;
    case WIRELINES_NET_ARP:
    case WIRELINES_NET_RARP: arp_note(packet); break;
    case WIRELINES_NET_IPX: ipx_note(packet.summary); break;
    case WIRELINES_NET_PPPOE:
    case WIRELINES_NET_LCP:
    case WIRELINES_NET_CHAP:
    case WIRELINES_NET_PAP:
    case WIRELINES_NET_IPCP: pppoe_note(packet); break;
    default: link_note(packet); break;
  }
}

void RowPrinter::tags() {
  for (const auto& tag : lift_.tags()) {
    out_.append(", VLAN ");
    out_.number(tag.vlan());
  }
}

void RowPrinter::verdicts(int errors) {
  static constexpr struct {
    int error;
    const char* text;
  } kVerdicts[] = {
      {kIpError, "IP checksum wrong"},
      {kIcmpError, "ICMP checksum wrong"},
      {kTcpError, "TCP checksum wrong"},
      {kUdpError, "UDP checksum wrong"},
  };
  if (errors == 0) return;
  for (const auto& verdict : kVerdicts) {
    if ((errors & verdict.error) == 0) continue;
    out_.append(", ");
    if (color_) out_.append(kBadColor);
    out_.append(verdict.text);
    if (color_) out_.append(kPlain);
  }
}

void RowPrinter::ip_note(const Packet& packet) {
  const auto& s = packet.summary;
  if (packet.incomplete()) {
    out_.append("header incomplete");
    return;
  }
  const bool ports = s.ipProtocol == kTcp || s.ipProtocol == kUdp;
  const bool icmp = s.ipProtocol == kIcmp || s.ipProtocol == kIcmpV6;
  const bool fragment = packet.fragment && !packet.is_ip6;
  if (!ports && !icmp) {
    out_.append(packet.is_ip6 ? "next header " : "protocol ");
    out_.number(s.ipProtocol);
    name(IpProtocolToName(s.ipProtocol));
    if (fragment) out_.append(", ");
  }
  if (fragment) {
    fragment_note(packet);
  } else if (ports) {
    ports_note(s);
  } else if (icmp) {
    icmp_note(s);
  }
  if (packet.is_ip && packet.is_ip6) out_.append(", in IPv4");
}

void RowPrinter::fragment_note(const Packet& packet) {
  const std::uint32_t flags = packet.be16(packet.ip + 6);
  out_.append("fragment at ");
  out_.number((flags & 0x1FFF) << 3);
  if ((flags & 0x2000) == 0) out_.append(", the last");
  out_.append(", ID ");
  hex(packet.be16(packet.ip + 4), 4);
}

void RowPrinter::ports_note(const PacketSummary& summary) {
  const bool tcp = summary.ipProtocol == kTcp;
  // Without a header for them everything is as it was before.
  if (summary.srcPort == 0 && summary.dstPort == 0 && (!tcp || summary.typeCode == Packet::kNoType)) {
    out_.append("no ports");
    return;
  }
  const auto& from = port(summary.srcPort, summary.ipProtocol);
  out_.append(summary.srcPort == summary.dstPort ? from.number() : from.text);
  out_.append(" > ");
  out_.append(port(summary.dstPort, summary.ipProtocol).text);
  if (tcp) {
    out_.append(' ');
    tcp_flags(out_, summary.typeCode);
  }
}

// Those of the last frames are kept: a trace has few ports, and each has to be asked of the name module.
const RowPrinter::Port& RowPrinter::port(std::uint16_t port, std::uint8_t protocol) {
  auto& kept = ports_[port % ports_.size()];
  if (kept.port == port && kept.protocol == protocol) return kept;
  kept = {port, protocol, std::to_string(port)};
  kept.digits = kept.text.size();
  const std::string_view name = PortToName(port, protocol);
  if (!name.empty()) {
    kept.text += ' ';
    text_.append(kept.text, name);
  }
  return kept;
}

void RowPrinter::icmp_note(const PacketSummary& summary) {
  const char* const type_name =
      summary.ipProtocol == kIcmp ? IcmpTypeInfoToName(summary.typeCode) : IcmpV6TypeInfoToName(summary.typeCode);
  if (summary.typeCode == Packet::kNoType) {
    out_.append("no type");
  } else if (*type_name == '\0') {
    out_.append("type ");
    out_.number(summary.typeCode);
  } else {
    out_.append(type_name);
    out_.append(" (");
    out_.number(summary.typeCode);
    out_.append(')');
  }
}

// The hardware addresses are those that the message tells, not those of the frame: they need not be the same.
void RowPrinter::arp_note(const Packet& packet) {
  const auto& s = packet.summary;
  const auto hardware = [&packet](std::uint32_t offset) {
    std::uint8_t mac[6];
    for (std::uint32_t i = 0; i < 6; i++) mac[i] = packet.byte(packet.payload + offset + i);
    return station(mac);
  };
  const auto put = [this](const Label& first, std::string_view between, const Label& second) {
    text_.append(out_, first.view());
    out_.append(between);
    text_.append(out_, second.view());
  };
  constexpr std::uint32_t kSender = 8;
  constexpr std::uint32_t kTarget = 18;
  switch (s.typeCode) {
    case 1:
      out_.append("who-has ");
      put(ip(s.dstIp), " tell ", ip(s.srcIp));
      break;
    case 2: put(ip(s.srcIp), " is-at ", hardware(kSender)); break;
    case 3:
      out_.append("who-is ");
      put(hardware(kTarget), " tell ", hardware(kSender));
      break;
    case 4: put(hardware(kTarget), " is ", ip(s.dstIp)); break;
    default:
      out_.append("operation ");
      out_.number(s.typeCode);
      break;
  }
}

void RowPrinter::pppoe_note(const Packet& packet) {
  const auto& s = packet.summary;
  if (s.etherType == kPppoeSession) {
    out_.append("PPP ");
    hex(packet.be16(packet.payload + 6), 4);
  } else {
    const std::uint8_t code = packet.byte(packet.payload + 1);
    out_.append("code ");
    hex(code, 2);
    name(pppoe_code_name(code));
  }
  if (packet.lift.in_session()) return;
  out_.append(", session ");
  hex(packet.be16(packet.payload + 2), 4);
}

void RowPrinter::ipx_note(const PacketSummary& summary) {
  hex(summary.ipxSrcSocket, 4);
  if (summary.ipxSrcSocket != summary.ipxDstSocket) name(NwSocketToName(summary.ipxSrcSocket));
  out_.append(" > ");
  hex(summary.ipxDstSocket, 4);
  name(NwSocketToName(summary.ipxDstSocket));
  out_.append(", type ");
  out_.number(summary.ipProtocol);
  const std::string_view type_name = NwPacketToName(summary.ipProtocol);
  if (type_name != "IPX") name(type_name);
}

void RowPrinter::link_note(const Packet& packet) {
  switch (packet.summary.frameKind) {
    case WIRELINES_LLC:
    case WIRELINES_LLC_S_U: sap_note(packet); break;
    case WIRELINES_SNAP:
      if (!packet.has(packet.payload)) {
        out_.append("header incomplete");
        break;
      }
      out_.append("OUI ");
      hex(static_cast<std::uint32_t>(packet.byte(17)) << 16 | packet.be16(18), 6);
      type_note(", type ", packet.summary.etherType);
      break;
    case WIRELINES_ETHERNET_II: type_note("EtherType ", packet.summary.etherType); break;
    default:
      out_.append("too short");
      if (packet.be16(12) > 1500) type_note(", EtherType ", packet.be16(12));
      break;
  }
}

void RowPrinter::sap_note(const Packet& packet) {
  const auto& s = packet.summary;
  out_.append("SAP ");
  hex(s.ssap, 2);
  out_.append(" > ");
  hex(s.dsap, 2);
  const std::uint32_t control = packet.byte(16);
  out_.append(control == 3 ? " UI" : (control & 1) == 0 ? " I" : (control & 3) == 1 ? " S" : " U");

  Label dsap;
  Label ssap;
  dsap.hex(s.dsap);
  ssap.hex(s.ssap);
  char nickname[kNameRoom];
  if (SapToName(dsap.c_str(), ssap.c_str(), nickname) == 1) name(nickname);
}

void RowPrinter::type_note(std::string_view label, std::uint16_t type) {
  out_.append(label);
  hex(type, 4);
  const char* const known = TypeToProtocolName(type);
  if (*known != '\0') {
    name(known);
    return;
  }
  Label key;
  key.hex(static_cast<std::uint8_t>(type >> 8));
  key.hex(static_cast<std::uint8_t>(type));
  char nickname[kNameRoom];
  if (ProtocolTypeToName(key.c_str(), nickname) == 1) name(nickname);
}

void RowPrinter::name(std::string_view name) {
  if (name.empty()) return;
  out_.append(' ');
  text_.append(out_, name);
}

void RowPrinter::hex(std::uint32_t value, int digits) {
  out_.append("0x");
  while (digits-- > 0) out_.append("0123456789ABCDEF"[value >> 4 * digits & 0x0F]);
}

}  // namespace wirelines::host
