#include "frame_store.hpp"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <tuple>
#include <utility>

namespace wirelines::host {

namespace {

// An index that does not belong to the trace is made anew, for this time.
std::optional<FrameIndex> saved_index(const std::string& trace) {
  try {
    return FrameIndex::load(trace);
  } catch (const Failure& failure) {
    complain(failure.what());
    return {};
  }
}

}  // namespace

FrameStore::FrameStore(std::string trace) : name_(std::move(trace)), path_(name_) {
  auto source = std::make_shared<Trace>(name_, [this] { wait_for_input(); });
  if (source->seekable()) {
    if (auto saved = saved_index(path_)) index_.emplace(std::move(*saved));
  } else {
    const int link_type = source->link_type();
    spool_ = std::make_unique<Spool>(std::move(source), link_type);
    path_ = spool_->path();
  }
  opened_ = look();
  if (!index_) index_.emplace(path_);
  if (frames_ = index_->frames(); frames_ > 0) {
    Reader reader(*this);
    std::tie(state_.first, state_.last) = std::minmax({time_of(*reader.at(1)), time_of(*reader.at(frames_))});
  }
}

// Standard input may bring nothing for long, and we may be asked to end meanwhile.
void FrameStore::wait_for_input() {
  constexpr int kMilliseconds = 100;
  pollfd input{STDIN_FILENO, POLLIN, 0};
  while (spool_ && spool_->flush() && name_ == "-") {
    if (poll(&input, 1, kMilliseconds) != 0) return;
  }
}

FrameStore::FrameStore(std::shared_ptr<Device> device, std::string interface)
    : name_(std::move(interface)), device_(std::move(device)) {
  state_.live = true;
  spool_ = std::make_unique<Spool>(device_, pcap_datalink(device_->pcap()));
  path_ = spool_->path();
  opened_ = look();
  index_.emplace(path_);
  device_->before_wait([this] { return spool_->flush(); });
}

void FrameStore::start() {
  if (spool_) {
    spool_->start([this] {
      if (device_) dropped_ = device_->dropped();
    });
  }
  thread_ = std::thread(&FrameStore::run, this);
}

FrameStore::~FrameStore() {
  ending_ = true;
  wake();
  if (thread_.joinable()) thread_.join();
}

FrameStore::State FrameStore::state() const {
  const std::lock_guard lock(mutex_);
  auto state = state_;
  state.frames = frames_;
  state.dropped = dropped_;
  state.paused = paused_;
  return state;
}

void FrameStore::pause(bool paused) {
  paused_ = paused;
  wake();
}

std::uint64_t FrameStore::wait_for_more(std::uint64_t frames, const std::atomic<bool>& stop) const {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return frames_ > frames || stop; });
  return frames_;
}

void FrameStore::wake() const {
  const std::lock_guard lock(mutex_);
  changed_.notify_all();
}

FrameStore::Look FrameStore::look() const {
  struct stat status {};
  if (stat(path_.c_str(), &status) != 0) return {};
  return {.device = status.st_dev,
          .inode = status.st_ino,
          .size = static_cast<std::uint64_t>(status.st_size),
          .seconds = status.st_mtim.tv_sec,
          .nanoseconds = status.st_mtim.tv_nsec};
}

// Throws Failure when the trace is another one by now, of which frames would pass for those that are known.
TracePlace FrameStore::place_before(std::uint64_t number) const {
  const std::lock_guard lock(mutex_);
  try {
    if (look().same_file(opened_)) return index_->before_frame(number);
  } catch (const Failure&) {
    // The bytes there are others.
  }
  throw Failure(EX_DATAERR, name_ + ": was replaced or removed since the viewer opened it; start the viewer again");
}

// Reads whenever the file has changed, and once more when what fills it is done. As long as it is being written, it may
// end in the middle of a frame: that is damage only if it stays so.
void FrameStore::run() {
  constexpr std::time_t kJustNow = 2;  // seconds
  constexpr auto kLook = std::chrono::milliseconds(100);
  Look read;
  bool read_all = false;
  std::unique_lock lock(mutex_);
  while (!ending_) {
    const bool all = !spool_ || spool_->done();
    const auto now = look();
    if (!paused_ && (now != read || all != read_all)) {
      state_.complete = false;
      if (all) state_.size = now.size;
      lock.unlock();
      auto problem = read_on();
      lock.lock();
      changed_.notify_all();
      if (paused_) continue;
      if (spool_) problem = all ? spool_->problem() : "";
      const bool unsure = !spool_ && !problem.empty() && std::abs(std::time(nullptr) - now.seconds) < kJustNow;
      state_.damage = unsure ? "" : std::move(problem);
      state_.complete = all;
      if (all && device_) state_.live = false;
      read = unsure ? Look{} : now;
      read_all = all;
      if (all != (!spool_ || spool_->done())) continue;
    }
    changed_.wait_for(lock, kLook);
  }
}

// Takes in what is there; returns what is wrong with the next frame, if anything is.
std::string FrameStore::read_on() {
  try {
    Trace trace(path_, nullptr, place_before(frames_ + 1));
    Frame frame{};
    while (!ending_ && !paused_ && trace.next(frame)) {
      if (frame.number > frames_) add(frame);
    }
  } catch (const Failure& failure) {
    return failure.what();
  }
  return {};
}

void FrameStore::add(const Frame& frame) {
  constexpr std::uint64_t kTellEach = 1024;
  constexpr std::uint64_t kRecordHeader = 16;  // pcapng's are longer: so exact as this, progress need not be
  const auto time = time_of(frame);
  const std::lock_guard lock(mutex_);
  index_->add(frame);
  state_.first = frames_ == 0 ? time : std::min(state_.first, time);
  state_.last = frames_ == 0 ? time : std::max(state_.last, time);
  state_.bytes = frame.offset + kRecordHeader + frame.length;
  if (++frames_ % kTellEach == 0) changed_.notify_all();
}

const Frame* FrameStore::Reader::at(std::uint64_t number) {
  constexpr std::uint64_t kNear = 512;  // so many frames are read sooner than a trace is opened again
  if (number == 0 || number > store_.frames()) return nullptr;
  const bool near = trace_ && number >= frame_.number && number - frame_.number <= kNear;
  if (near && read_up_to(number)) return &frame_;
  const auto place = store_.place_before(number);
  trace_ = std::make_unique<Trace>(store_.path_, nullptr, place);
  frame_.number = place.number - 1;
  if (read_up_to(number)) return &frame_;
  throw Failure(EX_DATAERR, store_.name() + ": frame " + std::to_string(number) + " cannot be read any more");
}

// False where the trace ends before: when it was opened there was less of it.
bool FrameStore::Reader::read_up_to(std::uint64_t number) {
  try {
    while (frame_.number < number) {
      if (!trace_->next(frame_)) return false;
    }
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace wirelines::host
