// Names of the NCP functions.
#pragma once

#include <string_view>

#include "core/bytes.hpp"

namespace wirelines {

// The name of a function, or an empty text.
std::string_view NcpFunctionToName(uint8_t function, uint8_t subfunction);

// Whether a request of this function carries a subfunction byte.
bool ncp_has_subfunctions(uint8_t function);

}  // namespace wirelines
