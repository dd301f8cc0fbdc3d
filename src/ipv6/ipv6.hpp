// IPv6.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void Ip6Analyze(LineList& list, Bytes data);

}  // namespace wirelines
