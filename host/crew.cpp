#include "crew.hpp"

#include <system_error>
#include <utility>

namespace wirelines::host {

namespace {

// A batch is work for about a tenth of a millisecond or more, so that handing it over costs little beside it.
constexpr std::size_t kBatchFrames = 256;
constexpr std::size_t kBatchBytes = 131072;  // the last frame may go beyond
constexpr std::size_t kBatchesPerThread = 4;

}  // namespace

Crew::Place::Place(const Crew& crew, Output& out)
    : visitor(crew.handling_.visitor(out)), scratch(crew.options_.lift_tags, crew.options_.charset) {}

Crew::Crew(const InputOptions& options, Handling handling, Output& out)
    : options_(options),
      handling_(std::move(handling)),
      jobs_(options.display_filter && options.count != InputOptions{}.count ? 1 : options.jobs),
      out_(out) {
  if (jobs_ == 1) {
    alone_.emplace(*this, out_);
  } else {
    ring_.resize(jobs_ * kBatchesPerThread);
  }
}

Crew::~Crew() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  filled_one_.notify_all();
  for (auto& helper : helpers_) helper.join();
}

void Crew::take(const Frame& frame) {
  if (jobs_ == 1) {
    if (!chosen(frame, *alone_)) return;
    if (handling_.gap) handling_.gap(out_, before_, *frame.trace);
    alone_->visitor->visit(frame);
    before_ = frame.trace;
    put_out_++;
    return;
  }
  auto& place = ring_[filled_ % ring_.size()];
  if (!place) place = std::make_unique<Batch>(*this);
  place->frames.push_back(frame);
  place->bytes.insert(place->bytes.end(), frame.data, frame.data + frame.length);
  if (place->frames.size() < kBatchFrames && place->bytes.size() < kBatchBytes) return;
  hand_over();
  if (helpers_.size() + 1 < jobs_) start_helper();
}

// What is left in the batch that is being filled is most often handled here: waking another thread takes longer.
bool Crew::flush() {
  if (jobs_ > 1) {
    const auto& filling = ring_[filled_ % ring_.size()];
    if (filling && !filling->frames.empty()) hand_over();
    while (written_ < filled_) write_oldest();
  }
  out_.flush();
  return out_.error() == 0;
}

// Ends the batch that is being filled, and sees to it that there is room for another.
void Crew::hand_over() {
  auto& filled = batch(filled_);
  const auto* data = filled.bytes.data();
  for (auto& frame : filled.frames) {
    frame.data = data;
    data += frame.length;
  }
  {
    const std::lock_guard lock(mutex_);
    filled_++;
  }
  filled_one_.notify_one();
  while (filled_ - written_ == ring_.size()) write_oldest();
}

void Crew::start_helper() {
  try {
    helpers_.emplace_back([this] { help(); });
  } catch (const std::system_error&) {
    // The system gives no more threads: those that are there do all the work.
  }
}

void Crew::help() {
  std::unique_lock lock(mutex_);
  while (true) {
    filled_one_.wait(lock, [this] { return ending_ || begun_ < filled_; });
    if (ending_) return;
    handle_next(lock);
  }
}

void Crew::handle_next(std::unique_lock<std::mutex>& lock) {
  auto& next = batch(begun_++);
  lock.unlock();
  handle(next);
  lock.lock();
  next.done = true;
  done_one_.notify_one();
}

bool Crew::chosen(const Frame& frame, Place& place) const {
  return !options_.display_filter || options_.display_filter->matches(frame, place.scratch);
}

void Crew::handle(Batch& batch) const {
  try {
    for (const auto& frame : batch.frames) {
      if (!chosen(frame, batch.place)) continue;
      // What stands before the first one is put out with the batch.
      if (batch.put_out++ == 0) {
        batch.first = frame.trace;
      } else if (handling_.gap) {
        handling_.gap(batch.text, batch.last, *frame.trace);
      }
      batch.place.visitor->visit(frame);
      batch.last = frame.trace;
    }
  } catch (...) {
    batch.failure = std::current_exception();
  }
}

// Waits for the oldest batch by handling what still waits for a thread; then writes it.
void Crew::write_oldest() {
  auto& oldest = batch(written_);
  {
    std::unique_lock lock(mutex_);
    while (!oldest.done) {
      if (begun_ < filled_) {
        handle_next(lock);
      } else {
        done_one_.wait(lock);
      }
    }
  }
  if (oldest.failure) std::rethrow_exception(oldest.failure);
  if (oldest.put_out > 0) {
    if (handling_.gap) handling_.gap(out_, before_, *oldest.first);
    out_.append(oldest.text);
    before_ = oldest.last;
    put_out_ += oldest.put_out;
  }
  oldest.put_out = 0;
  oldest.text.clear();
  oldest.frames.clear();
  oldest.bytes.clear();
  oldest.done = false;
  written_++;
}

}  // namespace wirelines::host
