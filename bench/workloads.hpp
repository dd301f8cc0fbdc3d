// What the benchmarks do many times over.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "core/section.hpp"
#include "wirelines.h"

namespace wirelines::bench {

// Ten field lines as decoders write them: numbers, numbers shown twice, names, an address.
inline void field_lines(LineList& list, Bytes data) {
  Section s(list, layer(47, 4, 3), Section::Mark::kInside);
  s.line(at(0), "[Version] %u", data.u8(0) >> 4);
  s.value(at(0), "[Header Length] %u (0x%0.2X) byte(s)", (data.u8(0) & 15U) * 4);
  s.line(at(1), "[Precedence] %u (%s)", data.u8(1) >> 5, "Routine");
  s.value(at(2, 3), "[Total Length] %u (0x%0.4X) byte(s)", data.be16(2));
  s.value(at(4, 5), "[ID] %u (0x%0.4X)", data.be16(4));
  s.line(at(6, 7), "[Flags] [Don't Fragment] %u [More Fragments] %u", data.u8(6) >> 6 & 1, data.u8(6) >> 5 & 1);
  s.line(at(8), "[TTL] %u seconds/hops", data.u8(8));
  s.line(at(9), "[Protocol] %u %s", data.u8(9), parens("TCP"));
  s.line(at(10, 11), "[Checksum] 0x%0.4X (OK)", data.be16(10));
  s.line(at(12, 15), "[Source Address] %u.%u.%u.%u", data.u8(12), data.u8(13), data.u8(14), data.u8(15));
}
constexpr uint32_t kFieldLines = 10;

inline const uint8_t kHeader[20] = {0x45, 0x00, 0x05, 0xDC, 0x3A, 0x7F, 0x40, 0x00, 0x40, 0x06,
                                    0xB1, 0xE6, 192,  0,    2,    17,   198,  51,   100,  42};

// A TCP segment of `payload` bytes in an Ethernet II frame, IPv4, checksums not right.
inline std::vector<uint8_t> tcp_frame(std::size_t payload) {
  const uint8_t ethernet[14] = {2, 0, 0, 0, 0, 1, 2, 0, 0, 0, 0, 2, 8, 0};
  const uint8_t tcp[20] = {0xC0, 0x01, 0x00, 0x50, 1, 2, 3, 4, 5, 6, 7, 8, 0x50, 0x18, 0x20, 0x00, 0x12, 0x34, 0, 0};
  std::vector<uint8_t> frame(54 + payload);
  std::copy_n(ethernet, 14, frame.begin());
  std::copy_n(kHeader, 20, frame.begin() + 14);
  std::copy_n(tcp, 20, frame.begin() + 34);
  frame[16] = static_cast<uint8_t>((40 + payload) >> 8);
  frame[17] = static_cast<uint8_t>(40 + payload);
  for (std::size_t i = 0; i < payload; ++i) frame[54 + i] = static_cast<uint8_t>(' ' + i * 7 % 160);
  return frame;
}

}  // namespace wirelines::bench
