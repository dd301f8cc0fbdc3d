// Frames and their lines as they are printed.
#pragma once

#include <wirelines.h>

#include "clock.hpp"
#include "decode.hpp"
#include "output.hpp"
#include "text.hpp"
#include "trace.hpp"

namespace wirelines::host {

// For people: UTF-8, indented by level, in colour when it is wanted.
class LinePrinter {
 public:
  LinePrinter(Output& out, bool color) : out_(out), color_(color) {}

  // "Frame 12  2024-05-01 12:00:00.123456  60 bytes", with a blank line before it unless it is the first; where there
  // are several traces, their names stand before their frames.
  void frame(const Frame& frame, bool name_trace);

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
  const std::string* trace_ = nullptr;  // the trace of the last frame
  bool cut_ = false;                    // whether that frame was captured in part
  Clock clock_;
};

// For programs and golden files: "CODE LEVEL START-END STYLEINDEX,STYLEGROUP |TEXT|", numbers in unsigned decimal,
// text bytes outside 0x20 to 0x7E and backslashes as \xHH.
void raw_line(Output& out, const DisplayLine& line);

// "# frame N length L top T" before the lines of a frame in that form.
void raw_frame(Output& out, const Frame& frame, std::uint32_t top_line);

}  // namespace wirelines::host
