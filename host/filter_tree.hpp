// What a display filter is compiled to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "filter_fields.hpp"

namespace wirelines::host {

enum class Relation { kPresent, kEqual, kNotEqual, kLess, kLessOrEqual, kGreater, kGreaterOrEqual, kContains };

// What a field is compared with.
struct Wanted {
  enum class Form { kNumbers, kAddress, kText, kTime };
  // A time as far as it is told: year, month, day, hour, minute, second, fraction.
  using Time = std::array<std::int64_t, 7>;

  Form form = Form::kNumbers;
  std::uint64_t first = 0, last = 0;  // the numbers from first to last
  std::string bytes = {};             // of an address, or a folded text in UTF-8
  std::size_t bits = 0;               // of an address that count
  Time time = {};
  std::size_t time_parts = 0;
  std::uint32_t fraction_unit = 1;  // of the time's fraction, in nanoseconds
};

struct Filter::Node {
  enum class Kind { kAll, kAny, kNot, kTest };

  Kind kind = Kind::kTest;
  std::vector<Node> parts = {};  // of kAll and kAny at least two, of kNot one

  const FilterField* field = nullptr;
  Relation relation = Relation::kPresent;
  std::vector<Wanted> wanted = {};  // several for "in": one of them must hold
};

// Throws FilterError.
Filter::Node parse_filter(std::string_view text);

// The address that a field of this type is compared with: its bytes, and how many bits count. Empty bytes when `text`
// is no such address.
Wanted filter_address(FilterType type, std::string_view text);

}  // namespace wirelines::host
