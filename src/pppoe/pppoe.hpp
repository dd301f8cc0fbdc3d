// PPP over Ethernet.
#pragma once

#include <string_view>

#include "core/lines.hpp"

namespace wirelines {

void PPPoEDiscoveryAnalyze(LineList& list, Bytes data);
void PPPSessionAnalyze(LineList& list, Bytes data);

std::string_view PPPSessionToName(uint8_t code);
std::string_view PppProtocolToName(uint16_t protocol);

}  // namespace wirelines
