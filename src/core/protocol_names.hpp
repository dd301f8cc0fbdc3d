// Name look-ups that several layers share.
#pragma once

#include <string_view>

#include "core/bytes.hpp"

namespace wirelines {

std::string_view TypeToProtocolName(uint16_t ether_type);
std::string_view SapPairToName(uint8_t dsap, uint8_t ssap);

}  // namespace wirelines
