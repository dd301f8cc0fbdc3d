// Lines that the PPP control protocols share.
#include "pppoe/ppp_packet.hpp"

#include "core/datablock.hpp"

namespace wirelines {

namespace {

constexpr auto kCodes = names(
    {
        {1, "Configuration Request"},
        {2, "Configuration Ack"},
        {3, "Configuration Nak"},
        {4, "Configuration Reject"},
        {5, "Termination Request"},
        {6, "Termination Ack"},
        {7, "Code Reject"},
        {8, "Protocol Reject"},
        {9, "Echo Request"},
        {10, "Echo Reply"},
        {11, "Discard Request"},
        {12, "Identification"},
        {13, "Time Remaining"},
    },
    "Unknown");
static_assert(kCodes.distinct());

}  // namespace

std::string_view PppCodeToName(uint8_t code) {
  return kCodes(code);
}

void packet_lines(Section& s, Bytes packet, std::string_view code_name) {
  s.line(at(0), "[Code] %u (%s)", packet.u8(0), code_name);
  s.line(at(1), "[Identifier] 0x%0.2X", packet.u8(1));
  s.value(at(2, 3), "[Length] %u (0x%0.4X) byte(s)", packet.be16(2));
}

void packet_block(Section& s, uint32_t offset, Bytes data) {
  constexpr BlockLook kLook = {.heading_code = kPppLayer.title,
                               .heading_level = 1,
                               .hex_code = kPppLayer.title,
                               .hex_level = 1,
                               .styleIndex = kPppLayer.styleIndex,
                               .styleGroup = kPppLayer.styleGroup};
  data_block(s.list(), data, s.field(at(offset)).start, kLook);
}

}  // namespace wirelines
