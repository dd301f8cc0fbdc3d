// The state of a decode, and how a line gets into the list.
#pragma once

#include <cstddef>

#include "core/bytes.hpp"
#include "core/format.hpp"
#include "wirelines.h"

namespace wirelines {

struct Slab;

// The most lines of one call, some 190 MB of them. Blocks of an SMB chain may overlap, and so may the names of NetBIOS
// records: without it a frame of 64 KB could have hundreds of millions. What stations send has some thousands.
constexpr uint32_t kMostLines = 1'000'000;

// What all decoders of one decode share. Each thread has its own.
struct DecodeState {
  uint32_t charSetMode = 0;
  uint32_t lineCount = 0;          // line buffers made, and so the index of the next line
  uint32_t topLineIndex = 0;       // title of the innermost layer that marked itself
  uint32_t frameOffset = 0;        // frame offset of the layer now being decoded; every range is built on it
  uint32_t andxDepth = 0;          // command blocks of the current SMB message so far
  bool out_of_memory = false;      // a line could not be made: the decode is over
  uint32_t endCount = kMostLines;  // the lineCount from which no line can be made

  Slab* slab = nullptr;  // where this thread takes its lines from

  // The static texts of the interface, valid until the next call.
  char parenthesis[120] = {};
  char port_name[36] = {};

  void reset(uint32_t mode) {
    charSetMode = mode;
    lineCount = topLineIndex = frameOffset = 0;
    begin();
  }

  // A call from the host begins: memory may be had again.
  void begin() {
    out_of_memory = false;
    endCount = lineCount + kMostLines;
  }
};

DecodeState& state();

// Moves the current layer's start past `length` bytes of header.
inline void advance(uint32_t length) {
  state().frameOffset += length;
}

// Everything of a line but its text. The range is absolute.
struct LineAttributes {
  uint32_t code = 0;
  uint32_t level = 0;
  uint32_t start = 0;
  uint32_t end = 0;
  uint32_t styleIndex = 0;
  uint32_t styleGroup = 0;
};

// Appends a line whose attributes and text are to be written. Null when it could not be made; ErrMessage has then been
// called and the decode is over: every later call returns null at once.
DisplayLine* new_line(LineList& list);

[[gnu::always_inline]] inline void set_attributes(DisplayLine& line, const LineAttributes& attributes) {
  line.protocolCode = attributes.code;
  line.level = attributes.level;
  line.startOffset = attributes.start;
  line.endOffset = attributes.end;
  line.styleIndex = attributes.styleIndex;
  line.styleGroup = attributes.styleGroup;
}

// The same in the two steps of the exported interface.
char* take_line();
bool append_line(LineList& list, char* text, const LineAttributes& attributes);  // takes `text` over

template <typename... Args>
[[gnu::always_inline]] inline bool add_line(LineList& list, const LineAttributes& attributes,
                                            Format<std::type_identity_t<Args>...> format, const Args&... args) {
  DisplayLine* const line = new_line(list);
  if (line == nullptr) return false;
  set_attributes(*line, attributes);
  render_here(line->text, format.pieces, args...);
  return true;
}

// A line whose every conversion shows `v`.
[[gnu::always_inline]] inline bool add_number(LineList& list, const LineAttributes& attributes, NumberFormat format,
                                              uint32_t v) {
  DisplayLine* const line = new_line(list);
  if (line == nullptr) return false;
  set_attributes(*line, attributes);
  render_number(line->text, format, v);
  return true;
}

bool add_blank(LineList& list);
bool add_title(LineList& list, std::string_view text, const LineAttributes& attributes);

// The list itself, as the exported calls of the same purpose describe it.
bool list_set(LineList& list, int32_t index, void* element);
bool list_resize(LineList& list, int32_t size, int32_t grow_by);
void list_free_lines(LineList& list);

}  // namespace wirelines
