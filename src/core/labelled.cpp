// Labelled texts, wrapped.
#include "core/labelled.hpp"

#include <algorithm>

namespace wirelines {

namespace {

constexpr uint32_t kWidth = 76;  // of label and text on one line

// Text bytes a line; even, so that double-byte characters are not divided.
uint32_t line_capacity(std::string_view label) {
  return label.size() < kWidth ? (kWidth - static_cast<uint32_t>(label.size())) & ~1U : 0;
}

// One line for the bytes `first` to `last` of the text: the label, or as many blanks, and `part`.
bool wrapped_line(LineList& list, std::string_view label, std::string_view part, uint32_t first, uint32_t last,
                  LineAttributes attributes) {
  constexpr std::string_view kBlanks = "                                                                            ";
  static_assert(kBlanks.size() == kWidth);
  const std::string_view margin = first == 0 ? label : kBlanks.substr(0, label.size());
  attributes.end = attributes.start + last;
  attributes.start += first;
  return add_line(list, attributes, "%s%s", margin, part);
}

}  // namespace

int32_t DspTitleString(LineList& list, std::string_view label, Bytes text, int32_t max_bytes,
                       const LineAttributes& attributes) {
  if (max_bytes < 1) return 0;
  text = text.first(max_bytes);
  const auto limit = static_cast<uint32_t>(max_bytes);
  const uint32_t capacity = line_capacity(label);
  uint32_t shown = 0;
  for (;;) {
    const uint32_t first = shown;
    const std::string_view rest = text.from(first).text();
    const auto room = std::min({capacity, limit - first, static_cast<uint32_t>(rest.size())});
    const auto length = static_cast<uint32_t>(std::min<std::size_t>(rest.substr(0, room).find('\0'), room));
    shown += length;
    const bool terminated = length < std::min(capacity, limit - first);
    const uint32_t last = terminated ? shown : shown - 1;
    if (!wrapped_line(list, label, rest.substr(0, length), first, last, attributes)) break;
    if (terminated || shown == limit || capacity == 0) break;
  }
  return static_cast<int32_t>(shown);
}

void DspLabelledText(LineList& list, std::string_view label, Bytes text, const LineAttributes& attributes) {
  const uint32_t capacity = std::max(2U, line_capacity(label));
  for (uint32_t shown = 0; shown < text.readable();) {
    const auto part = text.from(shown).text().substr(0, capacity);
    const auto next = shown + static_cast<uint32_t>(part.size());
    if (!wrapped_line(list, label, part, shown, next - 1, attributes)) return;
    shown = next;
  }
}

}  // namespace wirelines
