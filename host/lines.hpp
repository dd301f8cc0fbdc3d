// Frames and their lines as they are printed.
#pragma once

#include <wirelines.h>

#include "crew.hpp"
#include "decode.hpp"
#include "options.hpp"
#include "output.hpp"
#include "trace.hpp"

namespace wirelines::host {

// For people: UTF-8, indented by level, in colour when it is wanted, below "Frame 12  2024-05-01 12:00:00.123456  60
// bytes". `make` fills in the lines of a frame. Between two frames stands a blank line, and where there are several
// traces the name of a frame's trace before it, unless the frame before is of that trace too.
Handling printed_lines(const InputOptions& options, bool color,
                       void (*make)(Lines& lines, const Frame& frame, std::uint32_t charset));

// For programs and golden files: "CODE LEVEL START-END STYLEINDEX,STYLEGROUP |TEXT|", numbers in unsigned decimal,
// text bytes outside 0x20 to 0x7E and backslashes as \xHH.
void raw_line(Output& out, const DisplayLine& line);

// "# frame N length L top T" before the lines of a frame in that form.
void raw_frame(Output& out, const Frame& frame, std::uint32_t top_line);

}  // namespace wirelines::host
