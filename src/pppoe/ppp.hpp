// The PPP control protocols.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

// What PPP carries: their numbers, and IPv4's.
constexpr uint16_t kPppIp = 0x0021;
constexpr uint16_t kPppIpcp = 0x8021;
constexpr uint16_t kPppLcp = 0xC021;
constexpr uint16_t kPppPap = 0xC023;
constexpr uint16_t kPppChap = 0xC223;

void LcpAnalyze(LineList& list, Bytes data);
void IpcpAnalyze(LineList& list, Bytes data);
void PapAnalyze(LineList& list, Bytes data);
void ChapAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
