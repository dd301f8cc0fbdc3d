// Frame entry and data link.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

// Framings, numbered as the interface numbers them.
enum class FrameKind : uint8_t { kRaw8023 = 1, kLlc = 2, kSnap = 3, kEthernetII = 4, kLlcSU = 5 };

FrameKind CheckFrameType(const Bytes& frame);

// The protocol type of a frame: EtherType, SNAP protocol type, or DSAP x 256 + SSAP. False when it has none.
bool GetProtocolType(Bytes frame, uint16_t& type);

// Decodes a frame and returns the result line's index.
uint32_t FrameAnalyze(LineList& list, Bytes frame, uint32_t time_word0, uint32_t time_word1, uint32_t charset_mode);

}  // namespace wirelines
