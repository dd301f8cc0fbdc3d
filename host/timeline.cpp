#include "timeline.hpp"

#include <algorithm>
#include <array>

namespace wirelines::host {

namespace {

constexpr std::size_t kMostBins = 2048;

// Widths of bins; each is a multiple of the one before.
constexpr std::uint64_t kMicrosecond = 1000;
constexpr std::uint64_t kSecond = 1'000'000 * kMicrosecond;
constexpr std::uint64_t kDay = 86400 * kSecond;
constexpr std::array<std::uint64_t, 14> kWidths = {
    kMicrosecond, 10 * kMicrosecond, 100 * kMicrosecond, kSecond / 1000, kSecond / 100, kSecond / 10, kSecond,
    10 * kSecond, 60 * kSecond,      600 * kSecond,      3600 * kSecond, kDay,          10 * kDay,    1000 * kDay};

// As many bins as make a column: 1, 2, 5, 10, 20 and so on, whichever is the first that is enough.
std::uint64_t round_up(std::uint64_t count) {
  for (std::uint64_t power = 1;; power *= 10) {
    for (const std::uint64_t digit : {1U, 2U, 5U}) {
      if (digit * power >= count) return digit * power;
    }
  }
}

}  // namespace

void Timeline::add(std::uint64_t time, std::uint32_t length) {
  if (bins_.empty()) {
    first_ = time / kWidths[step_];
    bins_.resize(1);
  }
  if (const auto bin = time / kWidths[step_] - first_; bin >= bins_.size()) make_room(time);
  bins_[time / kWidths[step_] - first_].add(length);
}

// Bins before the first or behind the last; wider ones where there would be too many.
void Timeline::make_room(std::uint64_t time) {
  auto low = std::min(first_, time / kWidths[step_]);
  auto high = std::max(first_ + bins_.size() - 1, time / kWidths[step_]);
  while (high - low >= kMostBins) {  // the widest bins are too few for the whole range of times
    const auto factor = kWidths[step_ + 1] / kWidths[step_];
    std::vector<Count> wider((first_ + bins_.size() - 1) / factor - first_ / factor + 1);
    for (std::size_t i = 0; i < bins_.size(); i++) wider[(first_ + i) / factor - first_ / factor] += bins_[i];
    bins_ = std::move(wider);
    first_ /= factor;
    low /= factor;
    high /= factor;
    step_++;
  }
  bins_.insert(bins_.begin(), first_ - low, Count{});
  first_ = low;
  bins_.resize(high - low + 1);
}

Timeline::Columns Timeline::columns(std::size_t most) const {
  Columns columns;
  if (bins_.empty() || most == 0) return columns;
  const auto last = first_ + bins_.size() - 1;
  auto group = round_up((bins_.size() + most - 1) / most);
  while (last / group - first_ / group >= most) group = round_up(group + 1);  // its ends may lie across two columns
  columns.width = kWidths[step_] * group;
  columns.start = first_ / group * columns.width;
  columns.counts.resize(last / group - first_ / group + 1);
  for (std::size_t i = 0; i < bins_.size(); i++) columns.counts[(first_ + i) / group - first_ / group] += bins_[i];
  return columns;
}

}  // namespace wirelines::host
