#include "scan.hpp"

namespace wirelines::host {

Scan::Scan(const FrameStore& store, const Choice& choice, bool lift_tags, std::function<void(const Frame&)> take)
    : store_(store), choice_(choice), scratch_(lift_tags, 0), take_(std::move(take)) {
  if (!choice.filter.empty()) filter_.emplace(choice.filter);
  thread_ = std::thread(&Scan::run, this);
}

Scan::~Scan() {
  ending_ = true;
  store_.wake();
  thread_.join();
}

void Scan::run() {
  FrameStore::Reader reader(store_);
  while (!ending_) {
    const auto known = store_.wait_for_more(looked_at_, ending_);
    for (auto number = looked_at_ + 1; number <= known && !ending_; number++) {
      try {
        const auto* const frame = reader.at(number);
        if (wanted(*frame)) take_(*frame);
      } catch (const Failure&) {
        // The trace is no longer what it was; its state tells.
        looked_at_ = std::numeric_limits<std::uint64_t>::max();
        return;
      }
      looked_at_ = number;
    }
  }
}

bool Scan::wanted(const Frame& frame) {
  const auto time = time_of(frame);
  if (time < choice_.after || time >= choice_.before) return false;
  return !filter_ || filter_->matches(frame, scratch_);
}

}  // namespace wirelines::host
