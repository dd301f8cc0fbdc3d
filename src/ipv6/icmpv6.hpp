// ICMPv6.
#pragma once

#include <string_view>

#include "core/checksum.hpp"
#include "core/lines.hpp"

namespace wirelines {

std::string_view IcmpV6TypeInfoToName(uint8_t type);

void IcmpV6Analyze(LineList& list, Bytes data, const PseudoHeader& pseudo);

}  // namespace wirelines
