// How a decoder writes: a layer's attributes said once, ranges relative to the layer, one statement a line.
#pragma once

#include "core/bytes.hpp"
#include "core/datablock.hpp"
#include "core/lines.hpp"

namespace wirelines {

// The codes and the style pair of a layer. Field lines carry the title code plus 63.
struct Layer {
  uint32_t title;
  uint32_t field;
  uint32_t styleIndex;
  uint32_t styleGroup;
};
constexpr Layer layer(uint32_t title_code, uint32_t style_index, uint32_t style_group) {
  return {title_code, title_code + 63, style_index, style_group};
}

// Bytes of the current layer that a line describes, both ends included, counted from frameOffset.
struct Range {
  uint32_t first;
  uint32_t last;
};
constexpr Range at(uint32_t byte) {
  return {byte, byte};
}
constexpr Range at(uint32_t first, uint32_t last) {
  return {first, last};
}

// The lines of one layer. Ranges count from the frame offset at the time of the call, so that lines written after
// advance() are relative to the new place. Once a line could not be made, every further call does nothing, and the
// section tests false.
class Section {
 public:
  enum class Mark {
    kResult,    // begins a layer: blank line, and its title becomes the frame's result line
    kNoResult,  // begins a layer that is never the result: blank line only
    kInside,    // goes on inside a layer: nothing
  };

  Section(LineList& list, const Layer& layer, Mark mark = Mark::kResult)
      : list_(&list), layer_(layer), state_(&state()) {
    if (mark != Mark::kInside) add_blank(list);
    if (mark == Mark::kResult) state_->topLineIndex = state_->lineCount;
  }

  explicit operator bool() const { return !state_->out_of_memory; }
  [[nodiscard]] LineList& list() const { return *list_; }
  [[nodiscard]] const Layer& codes() const { return layer_; }

  template <typename... Args>
  [[gnu::always_inline]] void title(Range range, Format<std::type_identity_t<Args>...> format, const Args&... args) {
    add_title(*list_, TextBuffer(format, args...), attributes(layer_.title, 0, range));
  }

  // A field: level 1.
  template <typename... Args>
  [[gnu::always_inline]] void line(Range range, Format<std::type_identity_t<Args>...> format, const Args&... args) {
    add_line(*list_, field(range), format, args...);
  }

  // A field whose every conversion shows the same number.
  [[gnu::always_inline]] void value(Range range, NumberFormat format, uint32_t v) {
    add_number(*list_, field(range), format, v);
  }

  // A line below a field: level 2.
  template <typename... Args>
  [[gnu::always_inline]] void detail(Range range, Format<std::type_identity_t<Args>...> format, const Args&... args) {
    add_line(*list_, attributes(layer_.field, 2, range), format, args...);
  }
  [[gnu::always_inline]] void detail_value(Range range, NumberFormat format, uint32_t v) {
    add_number(*list_, attributes(layer_.field, 2, range), format, v);
  }

  // A sub-heading: the title code at level 1.
  template <typename... Args>
  [[gnu::always_inline]] void heading(Range range, Format<std::type_identity_t<Args>...> format, const Args&... args) {
    add_line(*list_, attributes(layer_.title, 1, range), format, args...);
  }

  [[gnu::always_inline]] void heading_value(Range range, NumberFormat format, uint32_t v) {
    add_number(*list_, attributes(layer_.title, 1, range), format, v);
  }

  // A field that is not there: no bytes, no style.
  template <std::size_t N>
  void absent(const char (&text)[N]) {
    add_line(*list_, {layer_.field, 1, 0, 0, 0, 0}, "%s", std::string_view(text, N - 1));
  }

  // The attributes of this layer's lines, for printers that several layers share.
  [[nodiscard]] LineAttributes attributes(uint32_t code, uint32_t level, Range range) const {
    const uint32_t base = state_->frameOffset;
    return {code, level, base + range.first, base + range.last, layer_.styleIndex, layer_.styleGroup};
  }
  [[nodiscard]] LineAttributes field(Range range) const { return attributes(layer_.field, 1, range); }

 private:
  LineList* list_;
  Layer layer_;
  DecodeState* state_;
};

}  // namespace wirelines
