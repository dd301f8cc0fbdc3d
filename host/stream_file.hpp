// A stream as libpcap takes it.
#pragma once

#include <cstdio>
#include <span>

#include "stream.hpp"

namespace wirelines::host {

// The bytes of `stream`, which must stay as long as the file; its position is the stream's. Null when memory is
// exhausted. `read_ahead` is the memory that a plain file is read through, and must stay as long.
FILE* stream_file(Stream& stream, std::span<char> read_ahead);

}  // namespace wirelines::host
