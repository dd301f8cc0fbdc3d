// Which frames of a trace are chosen, a bit each: the n-th of them and the number before a frame are found fast.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

namespace wirelines::host {

class FrameSet {
 public:
  // Frame numbers count from 1 and come in ascending order.
  void add(std::uint64_t number) {
    const auto word = number / kBits;
    while (words_.size() <= word) {
      if (words_.size() % kBlock == 0) before_.push_back(size_);
      words_.push_back(0);
    }
    words_[word] |= std::uint64_t{1} << number % kBits;
    size_++;
  }

  [[nodiscard]] std::uint64_t size() const { return size_; }

  // The chosen frame at `index`, below size(), counted from 0.
  [[nodiscard]] std::uint64_t at(std::uint64_t index) const {
    const auto behind = std::upper_bound(before_.begin(), before_.end(), index);
    auto word = static_cast<std::uint64_t>(behind - before_.begin() - 1) * kBlock;
    auto left = index - *(behind - 1);
    for (; left >= count(word); word++) left -= count(word);
    auto bits = words_[word];
    for (; left > 0; left--) bits &= bits - 1;
    return word * kBits + static_cast<std::uint64_t>(std::countr_zero(bits));
  }

  // How many chosen frames come before this one.
  [[nodiscard]] std::uint64_t below(std::uint64_t number) const {
    const auto last = number / kBits;
    if (last >= words_.size()) return size_;
    auto sum = before_[last / kBlock];
    for (auto word = last / kBlock * kBlock; word < last; word++) sum += count(word);
    const auto mask = (std::uint64_t{1} << number % kBits) - 1;
    return sum + static_cast<std::uint64_t>(std::popcount(words_[last] & mask));
  }

 private:
  static constexpr std::uint64_t kBits = 64;
  static constexpr std::uint64_t kBlock = 16;  // words for which before_ has an entry

  [[nodiscard]] std::uint64_t count(std::uint64_t word) const {
    return static_cast<std::uint64_t>(std::popcount(words_[word]));
  }

  std::uint64_t size_ = 0;
  std::vector<std::uint64_t> words_;
  std::vector<std::uint64_t> before_;  // frames before each block
};

}  // namespace wirelines::host
