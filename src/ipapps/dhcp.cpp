// BOOTP and DHCP: 236 bytes of fixed fields, then, behind a magic cookie, options of {tag, length, value}.
#include "ipapps/dhcp.hpp"

#include <algorithm>

#include "core/hextext.hpp"
#include "core/labelled.hpp"
#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kDhcp = layer(31, 6, 5);

constexpr int32_t kLeast = 243;
constexpr uint32_t kHardwareAddress = 28;
constexpr uint32_t kServerName = 44;
constexpr uint32_t kBootFile = 108;
constexpr uint32_t kVendorArea = 236;
constexpr uint32_t kOptions = 240;
constexpr uint32_t kMagicCookie = 0x63825363;  // 99.130.83.99

constexpr int32_t kLeastWithVendorArea = 300;  // of a message without the cookie

constexpr int32_t kMostNameBytes = 64;  // shown of the server's name and of the boot file's
constexpr int32_t kMostIdBytes = 32;    // shown of a client identifier

constexpr auto kOperations = names(
    {
        {1, "BOOTREQUEST"},
        {2, "BOOTREPLY"},
    },
    "Unknown");
static_assert(kOperations.distinct());

constexpr auto kMessageTypes = names({
    {1, "Discover"},
    {2, "Offer"},
    {3, "Requext"},
    {4, "Decline"},
    {5, "ACK"},
    {6, "NAK"},
    {7, "Release"},
    {8, "Inform"},
});
static_assert(kMessageTypes.distinct());

// Kept: an unknown option has the name of option 0.
constexpr auto kOptionNames = names(
    {
        {1, "Subnet Mask"},        {2, "Time Offset"},         {3, "Gateways"},
        {4, "Time Server"},        {5, "Name Server"},         {6, "Domain Server"},
        {7, "Log Server"},         {8, "Quotes Server"},       {9, "LPR Server"},
        {10, "Impress Server"},    {11, "RLP Server"},         {12, "Hostname"},
        {13, "Boot File Size"},    {14, "Merit Dump File"},    {15, "Domain Name"},
        {16, "Swap Server"},       {17, "Root Path"},          {18, "Extension File"},
        {19, "Forward On/Off"},    {20, "SrcRte On/Off"},      {21, "Policy Filter"},
        {22, "Max DG Assembly"},   {23, "Default IP TTL"},     {24, "MTU Timeout"},
        {25, "MTU Plateau"},       {26, "MTU Interface"},      {27, "MTU Subnet"},
        {28, "Broadcast Address"}, {29, "Mask Discovery"},     {30, "Mask Supplier"},
        {31, "Router Discovery"},  {32, "Router Request"},     {33, "Static Route"},
        {34, "Trailers"},          {35, "ARP Timeout"},        {36, "Ethernet"},
        {37, "Default TCP TTL"},   {38, "Keepalive Time"},     {39, "Keepalive Data"},
        {40, "NIS Domain"},        {41, "NIS Servers"},        {42, "NTP Servers"},
        {43, "Vendor Specific"},   {44, "NETBIOS Name Srv"},   {45, "NETBIOS Dist Srv"},
        {46, "NETBIOS Note Type"}, {47, "NETBIOS Scope"},      {48, "X Window Font"},
        {49, "X Window Manmager"}, {50, "Address Request"},    {51, "Address Time"},
        {52, "Overload"},          {53, "DHCP Msg Type"},      {54, "DHCP Server Id"},
        {55, "Parameter List"},    {56, "DHCP Message"},       {57, "DHCP Max Msg Size"},
        {58, "Renewal Time"},      {59, "Rebinding Time"},     {60, "Class Id"},
        {61, "Client Id"},         {62, "Netware/IP Domain"},  {63, "Netware/IP Option"},
        {64, "NIS Domain Name"},   {65, "NIS Server Address"}, {66, "Server Name"},
        {67, "Bootfile Name"},     {68, "Home Agent Address"}, {69, "SMTP Server"},
        {70, "POP3 Server"},       {71, "NNTP Server"},        {72, "WWW Server"},
        {73, "Finger Server"},     {74, "IRC Server"},         {75, "StreetTalk Server"},
        {76, "STDA Server"},       {77, "User Class"},         {255, "End"},
    },
    "Pad");
static_assert(kOptionNames.distinct());

constexpr uint8_t kPad = 0;
constexpr uint8_t kMessageType = 53;
constexpr uint8_t kEnd = 255;

// Both end the options.
bool is_option(uint8_t tag) {
  return tag != kPad && tag != kEnd;
}

// Whether a message is DHCP's. Asked without looking at the cookie.
bool HasDhcpMessageType(Bytes data) {
  for (uint32_t p = kOptions; static_cast<int32_t>(p) < data.size(); p += data.u8(p + 1) + 2U) {
    if (data.u8(p) == kMessageType) return true;
    if (!is_option(data.u8(p))) return false;
  }
  return false;
}

void address_line(Section& s, Bytes data, uint32_t offset, Format<std::string_view, Parens> format) {
  const TextBuffer text = ip_text(data.sub(offset, 4));
  s.line(at(offset, offset + 3), format, text.view(), parens(ip_nickname(text.bytes)));
}

void value_dump(Section& s, Bytes data, uint32_t offset, int32_t length) {
  const Range range = at(offset, offset + static_cast<uint32_t>(length) - 1);
  hex_dump(s.list(), data.sub(offset, length), s.attributes(s.codes().field, 2, range));
}

// The value of the option `tag`: `length` bytes, not 0, from `v`.
void option_value(Section& s, Bytes data, uint8_t tag, uint32_t v, uint8_t length) {
  const Range whole = at(v, v + length - 1U);
  const int32_t held = std::min<int32_t>(length, data.from(v).size());  // bytes of the value inside the message

  // Addresses and numbers show their first four bytes, whatever the length says.
  const auto address = [&](Format<uint8_t, uint8_t, uint8_t, uint8_t> format) {
    s.line(at(v, v + 3), format, data.u8(v), data.u8(v + 1), data.u8(v + 2), data.u8(v + 3));
  };
  const auto number = [&](NumberFormat format) { s.value(at(v, v + 3), format, data.be32(v)); };
  const auto text = [&](std::string_view label) {
    DspTitleString(s.list(), label, data.sub(v, length), length, s.field(at(v)));
  };

  switch (tag) {
    case 1: address("[Subnet Mask] %u.%u.%u.%u"); break;
    case 2: number("[Time Offset] %u (0x%0.8X)"); break;
    case 3:
    case 4: address("[Gateway] %u.%u.%u.%u"); break;  // Kept: a time server (4) has the gateway's label.
    case 5: address("[Name Server] %u.%u.%u.%u"); break;
    // Kept: a domain server's address is labelled as a name.
    case 6: address("[Domain Name] %u.%u.%u.%u"); break;
    case 7: address("[Log Server] %u.%u.%u.%u"); break;
    case 8: address("[Cookie/Quote Server] %u.%u.%u.%u"); break;
    case 9: address("[LPR Server] %u.%u.%u.%u"); break;
    case 10: address("[Impress Server] %u.%u.%u.%u"); break;
    case 11: address("[RLP Server] %u.%u.%u.%u"); break;
    case 12: text("[Hostname]"); break;
    // Kept: the second conversion lacks its '%' and prints as it stands. Behind it "byte" in half-width katakana.
    case 13: s.line(at(v, v + 1), "[Boot File Size] %u (0x0.4X)\xCA\xDE\xB2\xC4", data.be16(v)); break;
    case 15: text("[DNS Domain Name]"); break;
    case 28: address("[Braodcast Address] %u.%u.%u.%u"); break;
    case 50: DspIpAddress(s.list(), data.sub(v, 4), s.field(at(v, v + 3))); break;
    case 51: number("[Lease Time] %u (0x%0.8X)"); break;
    // Kept: labelled as a time.
    case kMessageType: s.line(whole, "[Message Time] %d %s", data.u8(v), parens(kMessageTypes(data.u8(v)))); break;
    case 54: address("[Server Identifier] %u.%u.%u.%u"); break;
    case 55:
      for (int32_t i = 1; i <= held && s; ++i) {
        const uint32_t q = v + static_cast<uint32_t>(i) - 1;
        s.line(at(q), "[Parameter Request List - %u] %u %s", i, data.u8(q), parens(kOptionNames(data.u8(q))));
      }
      break;
    case 58: number("[Renewal Time] %u (0x%0.8X)"); break;
    case 59: number("[Rebinding Time] %u (0x%0.8X)"); break;
    case 60: text("[Vendor class identifier]"); break;
    case 61: {
      const HexText id(data.sub(v, std::min(held, kMostIdBytes)));
      s.line(whole, "[Client Identifier] %s", id.view());
      break;
    }
    case 81:
      s.heading(whole, "[Dynamic DNS Update] %u byte(s)", length);
      value_dump(s, data, v, length);
      break;
    default:
      s.heading(whole, "[Data] %u byte(s)", length);
      value_dump(s, data, v, length);
      break;
  }
}

void option_lines(Section& s, Bytes data) {
  uint32_t ordinal = 1;
  for (uint32_t p = kOptions; static_cast<int32_t>(p) < data.size() && is_option(data.u8(p)) && s; ++ordinal) {
    const uint8_t length = data.u8(p + 1);
    // Kept: the number is the option's place in the message, not its tag.
    s.line(at(p, p + length + 1), "--- Option tag %u ------------------------", ordinal);
    if (length != 0) option_value(s, data, data.u8(p), p + 2, length);
    p += length + 2U;
  }
}

}  // namespace

void DhcpAnalyze(LineList& list, Bytes data) {
  if (data.size() < kLeast) return remainder(list, data);

  const auto size = static_cast<uint32_t>(data.size());
  const bool is_dhcp = HasDhcpMessageType(data);
  const uint8_t type = data.u8(1);
  const uint8_t address_length = data.u8(2);

  Section s(list, kDhcp);
  if (is_dhcp) {
    // Kept: the type is the first option's first value byte, whichever option that is.
    s.title(at(0, size - 1), "DHCP Packet %s", parens(kMessageTypes(data.u8(242))));
  } else {
    s.title(at(0, size - 1), "BOOTP Packet");
  }
  s.line(at(0), "[op code] %u (%s)", data.u8(0), kOperations(data.u8(0)));
  if (type == 1) {
    s.line(at(1), "[hardware address type] 1 (Ethernet)");
  } else {
    s.line(at(1), "[hardware address type] %u ", type);
  }
  s.line(at(2), "[hardware address length] %u ", address_length);
  s.line(at(3), "[hops] %u hop(s)", data.u8(3));
  s.value(at(4, 7), "[transaction ID] %u (0x%0.4X)", data.be32(4));
  s.line(at(8, 9), "[elapsed] %u second(s)", data.be16(8));
  // Kept: the bit asked for is 0x0080, although a client sets 0x8000.
  if ((data.be16(10) & 0x0080) != 0) s.line(at(10, 11), "[flags] 0x%0.4X (boradcast)", data.be16(10));
  address_line(s, data, 12, "[client IP address] %s %s");
  address_line(s, data, 16, "[user IP address] %s %s");
  address_line(s, data, 20, "[server IP address] %s %s");
  if (is_dhcp) {
    address_line(s, data, 24, "[router IP address] %s %s");
  } else {
    address_line(s, data, 24, "[gateway IP address] %s %s");
  }
  // As many bytes as the length says and the line takes, also past the field's 16.
  const HexText address(data.sub(kHardwareAddress, address_length));
  s.line(at(kHardwareAddress, kServerName - 1), "[client hardware address] %s", address.view());
  DspTitleString(list, "[server host name]", data.from(kServerName), kMostNameBytes, s.field(at(kServerName)));
  DspTitleString(list, "[boot file name]", data.from(kBootFile), kMostNameBytes, s.field(at(kBootFile)));

  if (data.be32(kVendorArea) == kMagicCookie) {
    s.line(at(kVendorArea, kOptions - 1), "[vendor-specific area] %u.%u.%u.%u (0x%0.2X%0.2X%0.2X%0.2X)", data.u8(236),
           data.u8(237), data.u8(238), data.u8(239), data.u8(236), data.u8(237), data.u8(238), data.u8(239));
    option_lines(s, data);
  } else if (data.size() >= kLeastWithVendorArea) {
    s.heading(at(kVendorArea, size - 1), "[Vendor Information]");
    value_dump(s, data, kVendorArea, data.size() - static_cast<int32_t>(kVendorArea));
  }
}

}  // namespace wirelines
