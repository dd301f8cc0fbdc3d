// ICMP (RFC 792, 950, 1256): a type, a code and a checksum, then what the type asks for.
#include "ipv4/icmp.hpp"

#include "core/checksum.hpp"
#include "core/datablock.hpp"
#include "core/names.hpp"
#include "core/nicknames.hpp"
#include "core/printers.hpp"
#include "core/protocol_names.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(46, 2, 3);

enum Type : uint8_t {
  kEchoReply = 0,
  kUnreachable = 3,
  kSourceQuench = 4,
  kRedirect = 5,
  kEchoRequest = 8,
  kRouterAdvertisement = 9,
  kRouterSolicitation = 10,
  kTimeExceeded = 11,
  kParameterProblem = 12,
  kTimestamp = 13,
  kTimestampReply = 14,
  kInformationRequest = 15,
  kInformationReply = 16,
  kAddressMaskRequest = 17,
  kAddressMaskReply = 18,
};

constexpr auto kUnreachableCodes = names({
    {0, "Net Unreachable"},
    {1, "Host Unreachable"},
    {2, "Protocol Unreachable"},
    {3, "Port Unreachable"},
    {4, "Fragmentation Needed and Don't Fragment"},
    {5, "Source Route Failded"},  // Kept: misspelt
    {6, "Destination Network Unknown"},
    {7, "Destination Host Unknown"},
    {8, "Source Host Isolated"},
    {9, "Communication with Destination Network is Prohibited"},
    {10, "Communication with Destination Host is Prohibited"},
    {11, "Destination Network Unreachable for TOS"},
    {12, "Destination Host Unreachable for TOS"},
    {13, "Communication Administratively Prohibited"},
    {14, "Host Precedence Violation"},
    {15, "Precedence cutoff in effect"},
});
static_assert(kUnreachableCodes.distinct());

constexpr auto kRedirectCodes = names({
    {0, "Redirect Datagram for the Network"},
    {1, "Redirect Datagram for the Host"},
    {2, "Redirect Datagram for TOS and Network"},
    {3, "Redirect Datagram for TOS and Host"},
});
static_assert(kRedirectCodes.distinct());

// Bytes that the title covers.
uint32_t IcmpTitleLength(Bytes data) {
  switch (data.u8(0)) {
    case kEchoReply:
    case kUnreachable:
    case kSourceQuench:
    case kRedirect:
    case kEchoRequest:
    case kTimeExceeded:
    case kParameterProblem:
    case kInformationRequest:
    case kInformationReply: return 8;
    // Kept: one byte less than the addresses take, and only type and code of a solicitation.
    case kRouterAdvertisement: return data.u8(4) * 8U + 7;
    case kRouterSolicitation: return 2;
    case kTimestamp:
    case kTimestampReply: return 20;
    case kAddressMaskRequest:
    case kAddressMaskReply: return 12;
    default: return static_cast<uint32_t>(data.size());
  }
}

// A shorter message of a known type ends after its type line.
int32_t least_length(uint8_t type) {
  if (IcmpTypeInfoToName(type).empty()) return 4;
  return type == kTimestamp || type == kTimestampReply ? 20 : 8;
}

void rest(LineList& list, Bytes data, uint32_t header) {
  advance(header);
  remainder(list, data.from(header));
}

void code_line(Section& s, Bytes data) {
  s.line(at(1), "[Code] %u", data.u8(1));
}

void identifier_lines(Section& s, Bytes data) {
  DspId(s.list(), data.be16(4), s.field(at(4, 5)));
  DspSequenceNo16(s.list(), data.be16(6), s.field(at(6, 7)));
}

// Kept: it is the code, not the type, that tells whether addresses follow, and what is left begins one byte early.
void router_lines(Section& s, Bytes data) {
  constexpr uint8_t kCodeWithAddresses = 9;
  if (data.u8(1) != kCodeWithAddresses) return rest(s.list(), data, 4);

  const uint32_t count = data.u8(4);
  s.line(at(4), "[Number Of Address] %u", count);
  s.line(at(5), "[Address Entry Size] %u (%u bits.words)", data.u8(5), data.u8(5) * 16);
  s.line(at(6, 7), "[Lifetime] %u", data.be16(6));
  for (uint32_t i = 0; i < count && s; ++i) {
    const uint32_t entry = 8 + 8 * i;
    if (!data.has(entry)) break;
    const TextBuffer address = ip_text(data.sub(entry, 4));
    s.line(at(entry, entry + 3), "[Router Address] %s %s", address.view(), parens(ip_nickname(address.bytes)));
    s.line(at(entry + 4, entry + 7), "[Preference Level] %u", data.be32(entry + 4));
  }
  rest(s.list(), data, 8 * count + 7);
}

}  // namespace

void DspIcmpChecksum(Section& s, Bytes data, bool fragmented) {
  const uint16_t stored = data.be16(2);
  if (fragmented) {
    s.line(at(2, 3), "[Checksum] 0x%0.4X", stored);
  } else if (IpCheckSum(data) == 0) {
    s.line(at(2, 3), "[Checksum] 0x%0.4X (OK)", stored);
  } else {
    s.line(at(2, 3), "[Checksum] 0x%0.4X (NG)", stored);
  }
}

void IcmpAnalyze(LineList& list, Bytes data, bool fragmented) {
  if (data.size() < 4) return remainder(list, data);

  const uint8_t type = data.u8(0);
  const uint8_t code = data.u8(1);
  const Parens name = parens(IcmpTypeInfoToName(type));

  Section s(list, kLayer);
  s.title(at(0, IcmpTitleLength(data) - 1), "ICMP Header %s", name);
  s.line(at(0), "[Type] %u %s", type, name);
  if (!s || data.size() < least_length(type)) return;

  switch (type) {
    case kEchoReply:
    case kEchoRequest:
    case kInformationRequest:
    case kInformationReply:
      code_line(s, data);
      DspIcmpChecksum(s, data, fragmented);
      identifier_lines(s, data);
      return rest(list, data, 8);

    case kUnreachable:
      s.line(at(1), "[Code] %u %s", code, parens(kUnreachableCodes(code)));
      DspIcmpChecksum(s, data, fragmented);
      return rest(list, data, 8);

    case kSourceQuench:
      code_line(s, data);
      DspIcmpChecksum(s, data, fragmented);
      return rest(list, data, 8);

    case kRedirect: {
      s.line(at(1), "[Code] %u %s", code, parens(kRedirectCodes(code)));
      DspIcmpChecksum(s, data, fragmented);
      const TextBuffer router = ip_text(data.sub(4, 4));
      s.line(at(4, 7), "[Router IP Address] %s %s", router.view(), parens(ip_nickname(router.bytes)));
      return rest(list, data, 8);
    }

    case kRouterAdvertisement:
    case kRouterSolicitation:
      code_line(s, data);
      DspIcmpChecksum(s, data, fragmented);
      return router_lines(s, data);

    case kTimeExceeded:
      switch (code) {
        case 0: s.line(at(1), "[Code] 0 (time to live exceeded in transit)"); break;
        case 1: s.line(at(1), "[Code] 1 (fragment reassembly time exceeded)"); break;
        default: code_line(s, data); break;
      }
      DspIcmpChecksum(s, data, fragmented);
      return rest(list, data, 8);

    case kParameterProblem:
      switch (code) {
        case 0:
          s.line(at(1), "[Code] 0 (pointer indicates the error)");
          s.line(at(4), "[Pointer] %u", data.u8(4));
          break;
        case 1: s.line(at(1), "[Code] 1 (required option is missing)"); break;
        default: s.line(at(1), "[Code] %u (Unknown)", code); break;
      }
      DspIcmpChecksum(s, data, fragmented);
      return rest(list, data, 8);

    case kTimestamp:
    case kTimestampReply:
      code_line(s, data);
      DspIcmpChecksum(s, data, fragmented);
      identifier_lines(s, data);
      s.line(at(8, 11), "[Originate Timestamp] %u ", data.be32(8));
      s.line(at(12, 15), "[Receive Timestamp] %u ", data.be32(12));
      s.line(at(16, 19), "[Transmit Timestamp] %u ", data.be32(16));
      return;

    case kAddressMaskRequest:
    case kAddressMaskReply:
      code_line(s, data);
      DspIcmpChecksum(s, data, fragmented);
      identifier_lines(s, data);
      // Kept: the parenthesis that was never opened.
      s.line(at(8, 11), "[Address Mask] %u.%u.%u.%u)", data.u8(8), data.u8(9), data.u8(10), data.u8(11));
      return;

    default: DspIcmpChecksum(s, data, fragmented); return rest(list, data, 4);
  }
}

}  // namespace wirelines
