// What the PPP control protocols share: a header of code, identifier and length (RFC 1661, section 5), one look, and
// the options of LCP and IPCP.
#pragma once

#include <algorithm>
#include <string_view>

#include "core/names.hpp"
#include "core/section.hpp"

namespace wirelines {

constexpr Layer kPppLayer = layer(13, 5, 9);
constexpr int32_t kPppHeader = 4;

// Bytes of a packet, header included: what its length field claims, cut to what is there.
inline int32_t packet_size(Bytes packet) {
  return std::min<int32_t>(packet.size(), packet.be16(2));
}

// The codes of LCP; IPCP has the first seven.
std::string_view PppCodeToName(uint8_t code);

// The fields of the packet header.
void packet_lines(Section& s, Bytes packet, std::string_view code_name);

// A data block in the look of the layer, `offset` bytes into it.
void packet_block(Section& s, uint32_t offset, Bytes data);

struct PppOption {
  Bytes bytes;   // from its type on; they can be read past the option's end
  uint32_t pos;  // counted from the first option
  uint8_t type;
  uint8_t length;
  std::string_view name;

  [[nodiscard]] Range range(uint32_t first, uint32_t last) const { return {pos + first, pos + last}; }
};

// Options of {type, length, value}; `value_lines` shows the value of one.
template <std::size_t N>
void option_lines(Section& s, Bytes options, const NameTable<N>& names,
                  void (*value_lines)(Section&, const PppOption&)) {
  uint32_t number = 0;
  for (int32_t pos = 0; s && options.size() - pos >= 2;) {
    const Bytes bytes = options.from(static_cast<uint32_t>(pos));
    const uint8_t type = bytes.u8(0);
    const uint8_t length = bytes.u8(1);
    if (length == 0 || length > options.size() - pos) return;

    const PppOption option = {bytes, static_cast<uint32_t>(pos), type, length, names(type)};
    s.line(option.range(0, length - 1U), "--- Option %u ----------------------------", ++number);
    s.line(option.range(0, 0), "[Type] %u (%s)", type, option.name);
    s.line(option.range(1, 1), "[Length] %u byte(s)", length);
    value_lines(s, option);
    pos += length;
  }
}

}  // namespace wirelines
