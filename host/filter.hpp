// Display filters: which frames are wanted, by what the classifier and the decoded lines tell of them. The language is
// described in docs/filter.md.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "clock.hpp"
#include "decode.hpp"
#include "lift.hpp"
#include "text.hpp"
#include "trace.hpp"

namespace wirelines::host {

class FilterError : public std::runtime_error {
 public:
  FilterError(std::size_t position, const std::string& message) : std::runtime_error(message), position_(position) {}
  [[nodiscard]] std::size_t position() const { return position_; }  // of the fault, in bytes

 private:
  std::size_t position_;
};

// A value that a field has in a frame: a number, or an address or a text.
struct FilterValue {
  std::uint64_t number;
  std::string_view bytes;
};

// What evaluating needs besides the frame; each thread has its own.
struct FilterScratch {
  FilterScratch(bool lift_tags, std::uint32_t its_charset) : lift(lift_tags), lines(lift_tags), charset(its_charset) {}

  Lift lift;
  Lines lines;
  std::uint32_t charset;  // as AnalyzeOutput takes it
  Text text;
  Clock clock;
  std::vector<FilterValue> values;
  std::string name;
  std::string utf8;
};

class Filter {
 public:
  // Throws FilterError when `text` is not understood.
  explicit Filter(std::string_view text);

  // Any number of threads may ask at the same time. Lines are decoded only where the expression asks for them.
  [[nodiscard]] bool matches(const Frame& frame, FilterScratch& scratch) const;

  struct Node;

 private:
  std::shared_ptr<const Node> root_;
};

// All fields, in the order of the manual.
struct FilterFieldInfo {
  std::string_view name, type, about;
};
std::vector<FilterFieldInfo> filter_field_infos();

}  // namespace wirelines::host
