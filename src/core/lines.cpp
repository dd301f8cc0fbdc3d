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

void report_out_of_memory() {
  decode_state.out_of_memory = true;
  decode_state.endCount = decode_state.lineCount;
  ErrMessage(VEK4001_OUT_OF_MEMORY);
}

char* take_text(DecodeState& s) {
  if (s.lineCount == s.endCount) [[unlikely]] {
    if (!s.out_of_memory) report_out_of_memory();
    return nullptr;
  }
  char* const text = new_text(s.slab);
  if (text == nullptr) [[unlikely]] {
    report_out_of_memory();
    return nullptr;
  }
  ++s.lineCount;
  return text;
}

bool list_grow(LineList& list, int32_t size) {
  const int64_t step = list.growBy > 0 ? list.growBy : std::max<int64_t>(256, list.count / 2);
  const auto capacity = std::min<int64_t>(INT32_MAX, std::max<int64_t>(size, int64_t{list.capacity} + step));
  void* const data = std::realloc(list.data, static_cast<std::size_t>(capacity) * sizeof(void*));
  if (data == nullptr) return false;
  list.data = static_cast<void**>(data);
  list.capacity = static_cast<int32_t>(capacity);
  return true;
}

// Room for `size` elements at least.
bool list_reserve(LineList& list, int32_t size) {
  return size <= list.capacity || list_grow(list, size);
}

// Gives up a line that cannot be kept.
DisplayLine* drop(DisplayLine* record, char* text) {
  if (record != nullptr) {
    void* const made = record;
    free_lines(&made, 1);
  } else {
    free_text(text);
  }
  report_out_of_memory();
  return nullptr;
}

// The record of a text, put into the list; null when that takes memory that is not there, and then the text is gone.
DisplayLine* append_text(LineList& list, char* text) {
  DisplayLine* const record = new_record(text);
  if (record != nullptr && list_reserve(list, list.count + 1)) [[likely]] {
    list.data[list.count++] = record;
    return record;
  }
  return drop(record, text);
}

// A line for which the heap may have to be asked.
[[gnu::noinline]] DisplayLine* new_line_with_memory(LineList& list) {
  char* const text = take_text(decode_state);
  return text == nullptr ? nullptr : append_text(list, text);
}

}  // namespace

DecodeState& state() {
  return decode_state;
}

char* take_line() {
  return take_text(decode_state);
}

bool append_line(LineList& list, char* text, const LineAttributes& attributes) {
  DisplayLine* const line = append_text(list, text);
  if (line == nullptr) return false;
  set_attributes(*line, attributes);
  return true;
}

DisplayLine* new_line(LineList& list) {
  DecodeState& s = decode_state;
  if (s.lineCount == s.endCount || !has_text(s.slab) || list.count >= list.capacity) [[unlikely]] {
    return new_line_with_memory(list);
  }
  DisplayLine* const record = new_record(new_text(s.slab));
  list.data[list.count++] = record;
  ++s.lineCount;
  return record;
}

bool add_blank(LineList& list) {
  DisplayLine* const line = new_line(list);
  if (line == nullptr) return false;
  set_attributes(*line, {WIRELINES_BLANK, WIRELINES_BLANK, 0, 0, 0, 0});
  line->text[0] = 0;
  return true;
}

bool add_title(LineList& list, std::string_view text, const LineAttributes& attributes) {
  DisplayLine* const line = new_line(list);
  if (line == nullptr) return false;
  set_attributes(*line, attributes);
  std::memset(line->text, '-', kRule);
  line->text[kRule] = 0;
  const uint32_t length = cut_length(text, kTitleText);
  line->text[3] = ' ';
  std::memcpy(line->text + 4, text.data(), length);
  line->text[4 + length] = ' ';
  return true;
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
