// A stream as libpcap takes it.
#pragma once

#include <cstdio>

#include "stream.hpp"

namespace wirelines::host {

// The bytes of `stream`, which must stay as long as the file; its position is the stream's. Null when memory is
// exhausted.
FILE* stream_file(Stream& stream);

}  // namespace wirelines::host
