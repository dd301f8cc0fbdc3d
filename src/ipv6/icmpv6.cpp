// ICMPv6 (RFC 4443), multicast listener discovery (RFC 2710) and neighbour discovery (RFC 4861).
#include "ipv6/icmpv6.hpp"

#include "core/datablock.hpp"
#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"
#include "ipv6/ip6_address.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(46, 2, 3);
constexpr uint32_t kHeader = 8;

// A value of an option that is shown as a data block of this layer.
constexpr BlockLook kOptionBlock = {
    .heading_code = 46, .heading_level = 1, .hex_code = 46, .hex_level = 1, .styleIndex = 2, .styleGroup = 3};

// Kept: 136, a neighbor advertisement, is named after the router's.
constexpr auto kTypes = names({
    {1, "Destination Unreachable"},
    {2, "Packet is Too Big"},
    {3, "Time Exceed"},
    {4, "Parameter Problem"},
    {128, "Echo Request"},
    {129, "Echo Reply"},
    {130, "Multicast Listener Query"},
    {131, "Multicast Listener Report"},
    {132, "Multicast Listener Done"},
    {133, "Router Solicitation"},
    {134, "Router Advertisement"},
    {135, "Neighbor Solicitation"},
    {136, "Router Advertisement"},
    {137, "Redirect"},
});
static_assert(kTypes.distinct());

// Type x 256 + code.
constexpr auto kCodes = names({
    {0x0100, "no route to destination"},
    {0x0101, "communication with destination administratively prohibited"},
    {0x0103, "Address Unreachable"},
    {0x0104, "Port Unreachable"},
    {0x0300, "hop limit exceeded in transit"},
    {0x0301, "fragment reassembly time exceeded"},
    {0x0400, "erroneous header field encountered"},
    {0x0401, "unrecognized Next Header type encountered"},
    {0x0402, "unrecognized IPv6 option encountered"},
});
static_assert(kCodes.distinct());

constexpr auto kOptions = names({
    {1, "Source Link-Layer Address"},
    {2, "Target Link-Layer Address"},
    {3, "Prefix Information"},
    {4, "Redirected Header"},
    {5, "MTU"},
});
static_assert(kOptions.distinct());

uint32_t IcmpV6TitleLength(uint8_t type, uint32_t whole) {
  switch (type) {
    case 128:
    case 129: return 8;
    case 130:
    case 131:
    case 132: return 24;
    default: return whole;
  }
}

void checksum_line(Section& s, Bytes message, const PseudoHeader& pseudo) {
  const uint16_t stored = message.be16(2);
  if (stored == 0) return s.line(at(2, 3), "[Checksum] None");
  const auto sum = static_cast<uint16_t>(IpCheckSum(message) + IpCheckSum(pseudo));
  if (sum == 0xFFFF) {
    s.line(at(2, 3), "[Checksum] 0x%0.4X (OK)", stored);
  } else {
    s.line(at(2, 3), "[Checksum] 0x%0.4X (NG)", stored);
  }
}

void prefix_lines(Section& s, Bytes option) {
  constexpr uint32_t kInfinity = 0xFFFFFFFF;
  const uint8_t flags = option.u8(4);
  const uint32_t valid = option.be32(4);
  const uint32_t preferred = option.be32(8);

  s.line(at(2), "[Prefix Length] %u byte(s)", option.u8(2));
  // Kept: the flags are read from the byte behind theirs.
  s.line(at(3), "[L] %u [A] %u", flags >> 7, flags >> 6 & 1);
  if (valid == kInfinity) {
    s.line(at(4, 7), "[Valid Lifetime] 0xffffffff (infinity)");
  } else {
    s.line(at(4, 7), "[Valid Lifetime] %u sec", valid);
  }
  if (preferred == kInfinity) {
    s.line(at(8, 11), "[Preferred Lifetime] 0xffffffff (infinity)");
  } else {
    s.line(at(8, 11), "[Preferred Lifetime] %u sec", preferred);
  }
  s.line(at(16, 31), "[Prefix] %s", FormatIp6Addr(option.sub(16, 16)).view());
}

// Kept: only the first option of a message is shown.
void NdOptionAnalyze(Section& s, Bytes data) {
  if (data.size() <= 2) return;
  const uint8_t type = data.u8(0);
  const uint8_t units = data.u8(1);  // of 8 bytes, the type and this byte included
  const std::string_view name = kOptions(type);
  if (name.empty()) return remainder(s.list(), data);

  s.line(at(0), "[Option Type] %u (%s)", type, name);
  s.line(at(1), "[Option Length] %u byte(s)", units * 8U);
  switch (type) {
    case 3: prefix_lines(s, data); break;
    case 5: s.value(at(4, 7), "[MTU] %u (0x%0.4X) byte(s)", data.be32(4)); break;
    default:
      if (type != 4 && units == 1) {
        s.line(at(2, 7), "[Link-Layer Address] %0.2X%0.2X%0.2X%0.2X%0.2X%0.2X", data.u8(2), data.u8(3), data.u8(4),
               data.u8(5), data.u8(6), data.u8(7));
      } else {
        data_block(s.list(), data.sub(2, units * 8 - 2), state().frameOffset + 2, kOptionBlock);
      }
      break;
  }
}

void target_line(Section& s, Bytes data) {
  s.line(at(8, 23), "[Target Address] %s", FormatIp6Addr(data.sub(8, 16)).view());
}

void options_from(Section& s, Bytes data, uint32_t offset) {
  if (!s) return;
  advance(offset);
  NdOptionAnalyze(s, data.from(offset));
}

}  // namespace

std::string_view IcmpV6TypeInfoToName(uint8_t type) {
  return kTypes(type);
}

void IcmpV6Analyze(LineList& list, Bytes data, const PseudoHeader& pseudo) {
  if (data.size() < static_cast<int32_t>(kHeader)) return remainder(list, data);

  const uint8_t type = data.u8(0);
  const uint8_t code = data.u8(1);

  Section s(list, kLayer);
  s.title(at(0, IcmpV6TitleLength(type, static_cast<uint32_t>(data.size())) - 1), "ICMPv6 Header %s",
          parens(kTypes(type)));
  s.line(at(0), "[Type] %u %s", type, parens(kTypes(type)));
  s.line(at(1), "[Code] %u %s", code, parens(kCodes(type * 256U + code)));
  checksum_line(s, data, pseudo);
  switch (type) {
    case 130:
    case 131:
    case 132:
      s.line(at(4, 5), "[Maximun Response Delay] %u msec", data.be16(4));
      s.line(at(8, 23), "[Multicast Address] %s", FormatIp6Addr(data.sub(8, 16)).view());
      return;
    case 133: return options_from(s, data, 8);
    case 134:
      s.line(at(4), "[Cur Hop Limit] %u", data.u8(4));
      s.line(at(5), "[M] %u [O] %u", data.u8(5) >> 7, data.u8(5) >> 6 & 1);
      // Kept: the range of the two bytes before it.
      s.line(at(4, 5), "[Router Lifetime] %u sec", data.be16(6));
      s.line(at(8, 11), "[Reachable Time] %u msec", data.be32(8));
      s.line(at(12, 15), "[Retrans Timer] %u msec", data.be32(12));
      return options_from(s, data, 16);
    case 135: target_line(s, data); return options_from(s, data, 24);
    case 136:
      s.line(at(4), "[R] %u [S] %u [O] %u", data.u8(4) >> 7, data.u8(4) >> 6 & 1, data.u8(4) >> 5 & 1);
      target_line(s, data);
      return options_from(s, data, 24);
    case 137:
      target_line(s, data);
      s.line(at(24, 39), "[Destination Address] %s", FormatIp6Addr(data.sub(24, 16)).view());
      return options_from(s, data, 40);
    case 128:
    case 129:
      DspId(list, data.be16(4), s.field(at(4, 5)));
      DspSequenceNo16(list, data.be16(6), s.field(at(6, 7)));
      break;
    default: break;
  }
  if (!s) return;
  advance(kHeader);
  remainder(list, data.from(kHeader));
}

}  // namespace wirelines
