#include "frame_range.hpp"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "failure.hpp"

namespace wirelines::host {

namespace {

constexpr auto kNoLast = std::numeric_limits<std::uint64_t>::max();

std::optional<std::uint64_t> frame_number(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number == 0) return std::nullopt;
  return number;
}

}  // namespace

std::string FrameRanges::add(std::string_view text) {
  std::vector<Range> added;
  for (bool more = true; more;) {
    const auto comma = text.find(',');
    const auto item = text.substr(0, comma);
    more = comma != std::string_view::npos;
    text.remove_prefix(more ? comma + 1 : text.size());

    const auto hyphen = item.find('-');
    const auto first = frame_number(item.substr(0, hyphen));
    auto last = first;
    if (hyphen != std::string_view::npos) {
      const auto rest = item.substr(hyphen + 1);
      last = rest.empty() ? kNoLast : frame_number(rest);
    }
    if (!first || !last) {
      return in_quotes(item) + " is not a choice of frames; write 12, 5-9, 100- or several with commas";
    }
    if (*last < *first) return in_quotes(item) + " ends before it begins";
    added.push_back({*first, *last});
  }
  for (const auto& range : added) last_ = std::max(last_, range.last);
  if (ranges_.empty()) first_ = added.front().first;
  for (const auto& range : added) first_ = std::min(first_, range.first);
  ranges_.insert(ranges_.end(), added.begin(), added.end());
  return "";
}

bool FrameRanges::contains(std::uint64_t number) const {
  return ranges_.empty() || std::any_of(ranges_.begin(), ranges_.end(), [number](const Range& range) {
           return range.first <= number && number <= range.last;
         });
}

}  // namespace wirelines::host
