// Going through all frames that are chosen, in the background, and on when more come.
#pragma once

#include <atomic>
#include <compare>
#include <cstdint>
#include <functional>
#include <limits>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "frame_set.hpp"
#include "frame_store.hpp"
#include "host/filter.hpp"
#include "host/tally.hpp"

namespace wirelines::host {

struct Choice {
  std::string filter;                                             // a display filter; empty: every frame
  std::int64_t after = std::numeric_limits<std::int64_t>::min();  // nanoseconds since 1970
  std::int64_t before = std::numeric_limits<std::int64_t>::max();

  bool operator==(const Choice&) const = default;
};

class Scan {
 public:
  // Calls `take` for each frame, on a thread of its own. Throws FilterError.
  Scan(const FrameStore& store, const Choice& choice, bool lift_tags, std::function<void(const Frame&)> take);
  ~Scan();
  Scan(const Scan&) = delete;
  Scan& operator=(const Scan&) = delete;

  // Whether all frames that are known were looked at.
  [[nodiscard]] bool caught_up() const { return looked_at_ >= store_.frames(); }

  // The number of the last frame that was looked at.
  [[nodiscard]] std::uint64_t looked_at() const { return looked_at_; }

 private:
  void run();
  [[nodiscard]] bool wanted(const Frame& frame);

  const FrameStore& store_;
  const Choice choice_;
  std::optional<Filter> filter_;
  FilterScratch scratch_;
  std::function<void(const Frame&)> take_;
  std::atomic<std::uint64_t> looked_at_ = 0;
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

// What a scan gathers of the chosen frames.
template <typename Result>
class Gathered {
 public:
  // `add` takes a frame into the result, which is made of `arguments`.
  template <typename... Arguments>
  Gathered(const FrameStore& store, const Choice& choice, bool lift_tags, void (*add)(Result&, const Frame&),
           Arguments... arguments)
      : result_(arguments...), scan_(store, choice, lift_tags, [this, add](const Frame& frame) {
          const std::lock_guard lock(mutex_);
          add(result_, frame);
        }) {}

  [[nodiscard]] bool caught_up() const { return scan_.caught_up(); }
  [[nodiscard]] std::uint64_t looked_at() const { return scan_.looked_at(); }

  template <typename Use>
  auto use(Use use) const {
    const std::lock_guard lock(mutex_);
    return use(result_);
  }

 private:
  mutable std::mutex mutex_;
  Result result_;
  Scan scan_;
};

using ChosenRows = Gathered<FrameSet>;
using ChosenTally = Gathered<Tally>;

// The scans asked for last; older ones end.
template <typename T>
class Recent {
 public:
  template <typename Make>
  std::shared_ptr<T> get(const Choice& choice, Make make) {
    constexpr std::size_t kMost = 3;
    std::list<std::pair<Choice, std::shared_ptr<T>>> ended;  // outside the lock
    const std::lock_guard lock(mutex_);
    for (auto one = all_.begin(); one != all_.end(); ++one) {
      if (one->first == choice) {
        all_.splice(all_.begin(), all_, one);
        return all_.front().second;
      }
    }
    all_.emplace_front(choice, make());
    if (all_.size() > kMost) ended.splice(ended.begin(), all_, std::prev(all_.end()));
    return all_.front().second;
  }

  void clear() {
    const std::lock_guard lock(mutex_);
    all_.clear();
  }

 private:
  std::mutex mutex_;
  std::list<std::pair<Choice, std::shared_ptr<T>>> all_;
};

}  // namespace wirelines::host
