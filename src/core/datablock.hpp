// Bytes that no decoder takes apart: a heading and hex lines.
#pragma once

#include "core/bytes.hpp"
#include "core/lines.hpp"

namespace wirelines {

// How a data block looks: its heading's text up to the count, the codes and levels of heading and hex lines, and their
// style pair.
struct BlockLook {
  std::string_view label = "[Data]";
  uint32_t heading_code = 0;
  uint32_t heading_level = 0;
  uint32_t hex_code = 63;
  uint32_t hex_level = 1;
  uint32_t styleIndex = 1;
  uint32_t styleGroup = 10;
};

// A whole data block (blank line, heading, hex lines) of data.size() bytes whose ranges begin at `start`. Nothing when
// the size is below 1. The result line stays where it is.
void data_block(LineList& list, Bytes data, uint32_t start, const BlockLook& look = {});

// What is left of a frame: a data block at the current frame offset.
inline void remainder(LineList& list, Bytes data) {
  data_block(list, data, state().frameOffset);
}

// The hex lines of data.size() bytes. The range of `attributes` is the first and last byte of the whole; each line
// gets its own part, but a start of 0 stays 0 on every line, and so does an end of 0.
void hex_dump(LineList& list, Bytes data, const LineAttributes& attributes);

}  // namespace wirelines
