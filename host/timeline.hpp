// Traffic over time in a fixed number of bins, whose width grows with the time that a trace takes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace wirelines::host {

struct Count {
  std::uint64_t frames = 0;
  std::uint64_t bytes = 0;

  void add(std::uint32_t length) {
    frames++;
    bytes += length;
  }
  Count& operator+=(const Count& other) {
    frames += other.frames;
    bytes += other.bytes;
    return *this;
  }
  bool operator==(const Count&) const = default;
};

class Timeline {
 public:
  // Times are nanoseconds since 1970, in any order.
  void add(std::uint64_t time, std::uint32_t length);

  struct Columns {
    std::uint64_t start = 0;  // of the first column
    std::uint64_t width = 0;  // nanoseconds a column
    std::vector<Count> counts;
  };

  // The whole time in at most `most` columns of a round width.
  [[nodiscard]] Columns columns(std::size_t most) const;

 private:
  void make_room(std::uint64_t time);

  std::size_t step_ = 0;     // how wide the bins are
  std::uint64_t first_ = 0;  // number of the first bin: its time divided by the width
  std::vector<Count> bins_;
};

}  // namespace wirelines::host
