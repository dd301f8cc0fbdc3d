// Lines that the NetBIOS services and DNS share (RFC 1001, RFC 1002, RFC 1035).
#include "ipapps/name_printers.hpp"

#include "core/names.hpp"
#include "core/printers.hpp"
#include "smb/smb.hpp"

namespace wirelines {

namespace {

constexpr auto kOpcodeNames = names(
    {
        {0, "query"},
        {5, "registration"},
        {6, "release"},
        {7, "WACK"},
        {8, "refresh"},
    },
    "Unknown");
static_assert(kOpcodeNames.distinct());

constexpr auto kRcodeNames = names(
    {
        {0, "OK"},
        {1, "Format Error"},
        {2, "Server failure"},
        {3, "Name Error"},
        {4, "Unsupported request error"},
        {5, "Refused error"},
        {6, "Active error"},
        {7, "Name in conflict error"},
    },
    "Unknown");
static_assert(kRcodeNames.distinct());

constexpr auto kClassNames = names(
    {
        {1, "Internet"},
        {2, "CSNET"},
        {3, "CHAOS"},
        {4, "Hesiod"},
        {255, "any"},
    },
    "Unknown");
static_assert(kClassNames.distinct());

constexpr uint8_t kLongestLabel = 63;

}  // namespace

void DspNsFlags(LineList& list, uint16_t flags, BroadcastFlag broadcast, const LineAttributes& attributes) {
  const bool response = (flags & 0x8000) != 0;
  const uint32_t opcode = flags >> 11 & 15;
  const uint32_t rcode = flags & 15;

  add_line(list, attributes, "[R] %s", response ? "1 (response)" : "0 (request)");
  add_line(list, attributes, "[OPCODE] %u %s", opcode, parens(kOpcodeNames(opcode)));
  if (response) {
    add_line(list, attributes, "[AA] Authoritative Answer flag = %u", flags >> 10 & 1);
    add_line(list, attributes, "[TC] Truncation Flag = %u", flags >> 9 & 1);
    add_line(list, attributes, "[RD] Recursion Desired Flag = %u", flags >> 8 & 1);
    // Kept: RA shows the bit of RD; hosts know the line so.
    add_line(list, attributes, "[RA] Recursion Available Flag = %u", flags >> 8 & 1);
  }
  if (broadcast == BroadcastFlag::kShow) {
    // Kept: the bit shown is RA's, not the name service's own broadcast bit 4.
    add_line(list, attributes, "[B] %s", (flags & 0x0080) != 0 ? "1 (Broadcast)" : "0 (Unicast)");
  }
  if (response) add_line(list, attributes, "[RCODE] %u %s", rcode, parens(kRcodeNames(rcode)));
}

void DspSectionCounts(LineList& list, Bytes header, const LineAttributes& attributes) {
  add_line(list, attributes, "[QDCOUNT] %u [ANCOUNT] %u [NSCOUNT] %u [ARCOUNT] %u", header.be16(4), header.be16(6),
           header.be16(8), header.be16(10));
}

void DspRecordClass(LineList& list, uint16_t record_class, const LineAttributes& attributes) {
  add_line(list, attributes, "[CLASS] %u (%s)", record_class, kClassNames(record_class));
}

NetBiosName DecodeNetBiosName(Bytes encoded) {
  NetBiosName name;
  if (encoded.u8(0) > kLongestLabel) return name;
  for (uint32_t i = 0; i < NetBiosName::kSize; ++i) {
    const uint32_t high = encoded.u8(1 + 2 * i);
    const uint32_t low = encoded.u8(2 + 2 * i);
    const auto c = static_cast<uint8_t>(high * 16 + low - ('A' * 16 + 'A'));
    name.text_[i] = c >= 0x20 && c <= 0x7E ? static_cast<char>(c) : ' ';
  }
  name.length_ = NetBiosName::kSize;
  return name;
}

void DspNetBiosName(LineList& list, std::string_view label, Bytes encoded, const LineAttributes& attributes) {
  const NetBiosName name = DecodeNetBiosName(encoded);
  if (!name.empty()) add_line(list, attributes, "%s%s", label, std::string_view(name));
}

void netbios_payload(LineList& list, Bytes payload) {
  if (IsSmbMessage(payload)) return SmbAnalyze(list, payload);
  remainder(list, payload);
}

}  // namespace wirelines
