// Decode state, line list and the making of lines.
#include "core/lines.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "core/blocks.hpp"
#include "vek4001.h"

namespace wirelines {

namespace {

constexpr uint32_t kRule = 75;       // a title's line
constexpr uint32_t kTitleText = 70;  // of which a text can take this much

thread_local constinit DecodeState decode_state;

bool report_out_of_memory() {
  decode_state.out_of_memory = true;
  ErrMessage(VEK4001_OUT_OF_MEMORY);
  return false;
}

// Room for `size` elements at least.
bool list_reserve(LineList& list, int32_t size) {
  if (size <= list.capacity) return true;
  const int64_t step = list.growBy > 0 ? list.growBy : std::max<int64_t>(64, list.count / 2);
  const auto capacity = std::min<int64_t>(INT32_MAX, std::max<int64_t>(size, int64_t{list.capacity} + step));
  void* const data = std::realloc(list.data, static_cast<std::size_t>(capacity) * sizeof(void*));
  if (data == nullptr) return false;
  list.data = static_cast<void**>(data);
  list.capacity = static_cast<int32_t>(capacity);
  return true;
}

}  // namespace

DecodeState& state() {
  return decode_state;
}

char* take_line() {
  DecodeState& s = decode_state;
  if (s.out_of_memory) return nullptr;
  char* const text = new_text();
  if (text == nullptr) {
    report_out_of_memory();
    return nullptr;
  }
  ++s.lineCount;
  return text;
}

bool append_line(LineList& list, char* text, const LineAttributes& attributes) {
  DisplayLine* const record = new_record(text);
  if (record == nullptr || !list_reserve(list, list.count + 1)) {
    if (record != nullptr) {
      void* const made = record;
      free_lines(&made, 1);
    } else {
      free_text(text);
    }
    return report_out_of_memory();
  }
  record->protocolCode = attributes.code;
  record->level = attributes.level;
  record->startOffset = attributes.start;
  record->endOffset = attributes.end;
  record->styleIndex = attributes.styleIndex;
  record->styleGroup = attributes.styleGroup;
  list.data[list.count++] = record;
  return true;
}

bool print_line(LineList& list, const LineAttributes& attributes, const FormatPieces& format, const Value* values,
                uint32_t step) {
  char* const text = take_line();
  if (text == nullptr) return false;
  render(text, format, values, step);
  return append_line(list, text, attributes);
}

bool print_title(LineList& list, const LineAttributes& attributes, const FormatPieces& format, const Value* values) {
  char text[kMaxText + 1];
  const uint32_t length = render(text, format, values, 1);
  return add_title(list, {text, length}, attributes);
}

bool add_blank(LineList& list) {
  char* const text = take_line();
  if (text == nullptr) return false;
  text[0] = 0;
  return append_line(list, text, {WIRELINES_BLANK, WIRELINES_BLANK, 0, 0, 0, 0});
}

bool add_title(LineList& list, std::string_view text, const LineAttributes& attributes) {
  char* const line = take_line();
  if (line == nullptr) return false;
  std::memset(line, '-', kRule);
  line[kRule] = 0;
  const uint32_t length = cut_length(text, kTitleText);
  line[3] = ' ';
  std::memcpy(line + 4, text.data(), length);
  line[4 + length] = ' ';
  return append_line(list, line, attributes);
}

bool list_set(LineList& list, int32_t index, void* element) {
  if (index < 0 || index == INT32_MAX) return false;
  if (index >= list.count) {
    if (!list_reserve(list, index + 1)) return false;
    std::fill(list.data + list.count, list.data + index, nullptr);
    list.count = index + 1;
  }
  list.data[index] = element;
  return true;
}

bool list_resize(LineList& list, int32_t size, int32_t grow_by) {
  if (size < 0) return false;
  if (size > list.count) {
    if (!list_reserve(list, size)) return false;
    std::fill(list.data + list.count, list.data + size, nullptr);
  }
  if (grow_by >= 0) list.growBy = grow_by;
  list.count = size;
  if (size == 0) {
    std::free(list.data);
    list.data = nullptr;
    list.capacity = 0;
  }
  return true;
}

void list_free_lines(LineList& list) {
  if (list.count <= 0) return;
  free_lines(list.data, static_cast<uint32_t>(list.count));
  list_resize(list, 0, -1);
}

}  // namespace wirelines
