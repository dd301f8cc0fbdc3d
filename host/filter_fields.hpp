// The fields of display filters, and what a frame has of them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "filter.hpp"
#include "summary.hpp"

namespace wirelines::host {

// A frame while a filter looks at it.
struct FilterPacket {
  FilterPacket(const Frame& its_frame, FilterScratch& its_scratch)
      : frame(its_frame), scratch(its_scratch), summary(its_frame, its_scratch.lift) {}

  // Its lines, decoded when they are first asked for.
  const Lines& lines() {
    if (!decoded_) scratch.lines.decode(frame, scratch.charset);
    decoded_ = true;
    return scratch.lines;
  }

  const Frame& frame;
  FilterScratch& scratch;
  Summary summary;

 private:
  bool decoded_ = false;
};

enum class FilterType { kFlag, kNumber, kHex, kMac, kIp, kIp6, kIpx, kStation, kText, kTime };

// The type as the manual calls it.
std::string_view type_name(FilterType type);

enum class FilterNames { kNone, kAddress, kPort, kSocket };

struct FilterField {
  std::string_view name;
  FilterType type;
  std::string_view about;
  bool (*when)(FilterPacket& packet) = nullptr;  // whether a frame can have it; null: always. Of a flag this is all
  std::array<const Field*, 2> summary = {};      // where its values come from: up to two fields of the summary,
  void (*collect)(FilterPacket& packet, std::vector<FilterValue>& values) = nullptr;  // or this
  FilterNames names = FilterNames::kNone;                                             // how its values are named
};

// The field called `name`, in letters of either case; null when there is none.
const FilterField* find_filter_field(std::string_view name);

// The name most like `name`; empty when none is.
std::string_view nearest_filter_field(std::string_view name);

std::span<const FilterField> filter_fields();

// The values that the frame has; good until the next call.
std::span<const FilterValue> values_of(const FilterField& field, FilterPacket& packet);

// The text of a value in UTF-8: the text itself, or the user's name for an address or port, empty if it has none. Good
// until the next call.
std::string_view text_of(const FilterField& field, const FilterValue& value, FilterPacket& packet);

constexpr char fold(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
std::string folded(std::string_view text);

}  // namespace wirelines::host
