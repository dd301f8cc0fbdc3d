#pragma once

#include "core/bytes.hpp"
#include "core/lines.hpp"

namespace wirelines {

void TftpAnalyze(LineList& list, Bytes data);

}  // namespace wirelines
