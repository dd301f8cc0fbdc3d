// Frames and their lines as they are printed.
#pragma once

#include <wirelines.h>

#include "clock.hpp"
#include "crew.hpp"
#include "decode.hpp"
#include "options.hpp"
#include "output.hpp"
#include "text.hpp"
#include "trace.hpp"

namespace wirelines::host {

// For people: UTF-8, indented by level, in colour when it is wanted.
class LinePrinter {
 public:
  LinePrinter(Output& out, bool color) : out_(out), color_(color) {}

  // "Frame 12  2024-05-01 12:00:00.123456  60 bytes".
  void frame(const Frame& frame);

  void lines(const Lines& lines);

 private:
  void time(const Frame& frame);
  bool plain_line(const DisplayLine& line);
  void careful_line(const DisplayLine& line);
  void colored_line(const DisplayLine& line, std::string_view text);
  void colored(std::string_view color, std::string_view text);

  Output& out_;
  bool color_;
  Text text_;
  bool cut_ = false;  // whether the last frame was captured in part
  Clock clock_;
};

// What stands before a frame in that form: a blank line unless it is the first, and where there are several traces the
// name of its trace, unless the frame before is of that trace too.
Gap frame_gap(const InputOptions& options, bool color);

// For programs and golden files: "CODE LEVEL START-END STYLEINDEX,STYLEGROUP |TEXT|", numbers in unsigned decimal,
// text bytes outside 0x20 to 0x7E and backslashes as \xHH.
void raw_line(Output& out, const DisplayLine& line);

// "# frame N length L top T" before the lines of a frame in that form.
void raw_frame(Output& out, const Frame& frame, std::uint32_t top_line);

}  // namespace wirelines::host
