#pragma once

#include "core/lines.hpp"

namespace wirelines {

// DNS, UDP port 53.
void DnsAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
