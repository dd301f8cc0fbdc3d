// DNS messages.
#pragma once

#include "core/lines.hpp"

namespace wirelines {

void DnsAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
