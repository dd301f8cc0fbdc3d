// The frames that a user chose by number: "3,7-9,100-".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wirelines::host {

class FrameRanges {
 public:
  // Adds the frames of `text`: numbers from 1, FIRST-LAST or FIRST-, set apart by commas. Returns an empty text, or
  // what is wrong with it; the choice is then unchanged.
  std::string add(std::string_view text);

  // Whether frame `number` is chosen; without any choice every frame is.
  [[nodiscard]] bool contains(std::uint64_t number) const;

  // The first frame that can be chosen, and whether any frame can.
  [[nodiscard]] std::uint64_t first() const { return first_; }
  [[nodiscard]] bool all() const { return ranges_.empty(); }

  // Whether no frame from `number` on can be chosen: time to stop reading.
  [[nodiscard]] bool ends_before(std::uint64_t number) const { return !ranges_.empty() && last_ < number; }

 private:
  struct Range {
    std::uint64_t first, last;
  };
  std::vector<Range> ranges_;
  std::uint64_t first_ = 1;
  std::uint64_t last_ = 0;
};

}  // namespace wirelines::host
