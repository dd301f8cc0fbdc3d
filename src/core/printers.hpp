// Field lines that several protocols share. All are told the attributes of their line.
#pragma once

#include "core/lines.hpp"
#include "core/nicknames.hpp"
#include "core/protocol_names.hpp"

namespace wirelines {

// `transport` is the IP protocol number that chooses between names of TCP and of UDP.
inline void DspSourcePort(LineList& list, uint8_t transport, uint16_t port, const LineAttributes& attributes) {
  add_line(list, attributes, "[Source Port] %u %s", port, parens(PortToName(port, transport)));
}
inline void DspDestinationPort(LineList& list, uint8_t transport, uint16_t port, const LineAttributes& attributes) {
  add_line(list, attributes, "[Destination Port] %u %s", port, parens(PortToName(port, transport)));
}
inline void DspHeaderLength(LineList& list, uint32_t bytes, const LineAttributes& attributes) {
  add_number(list, attributes, "[Header Length] %u (0x%0.2X) byte(s)", bytes);
}
inline void DspFrameLength(LineList& list, uint16_t bytes, const LineAttributes& attributes) {
  add_number(list, attributes, "[Frame Length] %u (0x%0.4X) byte(s)", bytes);
}
inline void DspDataLength16(LineList& list, uint16_t bytes, const LineAttributes& attributes) {
  add_number(list, attributes, "[Data Length] %u (0x%0.4X) byte(s)", bytes);
}
inline void DspDataLength32(LineList& list, uint32_t bytes, const LineAttributes& attributes) {
  add_number(list, attributes, "[Data Length] %u (0x%0.8X) byte(s)", bytes);
}
inline void DspDataOffset(LineList& list, uint32_t bytes, const LineAttributes& attributes) {
  add_number(list, attributes, "[Data Offset] %u (0x%0.4X) byte(s)", bytes);
}
inline void DspId(LineList& list, uint16_t id, const LineAttributes& attributes) {
  add_number(list, attributes, "[ID] %u (0x%0.4X)", id);
}
inline void DspSequenceNo16(LineList& list, uint16_t number, const LineAttributes& attributes) {
  add_number(list, attributes, "[Sequence No] %u (0x%0.4X)", number);
}

// An IPv4 address with the user's name for it.
inline void DspIpAddress(LineList& list, Bytes address, const LineAttributes& attributes) {
  const TextBuffer text = ip_text(address);
  add_line(list, attributes, "[IP Address] %s %s", text.view(), parens(ip_nickname(text.bytes)));
}

// Whether an SMB message begins here: at least 32 bytes, the first four 0xFF 'S' 'M' 'B'.
inline bool IsSmbMessage(Bytes data) {
  return data.size() >= 32 && data.be32(0) == 0xFF534D42;
}

}  // namespace wirelines
