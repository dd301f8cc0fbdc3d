// The frames of a trace, or of what an interface brings, each at hand at once. An index of them is made in the
// background; a trace that grows is followed.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "host/device.hpp"
#include "host/frame_index.hpp"
#include "host/trace.hpp"
#include "spool.hpp"

namespace wirelines::host {

class FrameStore {
 public:
  // Opens the trace, for which a pipe may have to be waited. Throws Failure when it cannot be read.
  explicit FrameStore(std::string trace);
  FrameStore(std::shared_ptr<Device> device, std::string interface);
  ~FrameStore();
  FrameStore(const FrameStore&) = delete;
  FrameStore& operator=(const FrameStore&) = delete;

  // Begins to read, on threads of its own, which take over the signals that the caller's holds.
  void start();

  struct State {
    std::uint64_t frames = 0;  // known so far
    std::uint64_t bytes = 0;   // of the trace, up to the last of them
    std::optional<std::uint64_t> size;
    bool complete = false;  // nothing is known to follow
    bool live = false;
    bool paused = false;
    std::uint64_t dropped = 0;
    std::string damage;                // why the trace could not be read to its end
    std::int64_t first = 0, last = 0;  // the earliest and latest time, as time_of() has it
  };
  [[nodiscard]] State state() const;
  [[nodiscard]] std::uint64_t frames() const { return frames_; }

  [[nodiscard]] const std::string& name() const { return name_; }

  // While paused, frames that come are kept but not known yet.
  void pause(bool paused);

  // Waits until there are more frames than `frames`, or until `stop` is set and wake() called; returns how many there
  // are.
  std::uint64_t wait_for_more(std::uint64_t frames, const std::atomic<bool>& stop) const;
  void wake() const;

  // Frames by number, fastest in ascending order. For one thread.
  class Reader {
   public:
    explicit Reader(const FrameStore& store) : store_(store) {}

    // Good until the next call; null when there is no such frame, or not yet. Throws Failure when it cannot be read any
    // more.
    const Frame* at(std::uint64_t number);

   private:
    bool read_up_to(std::uint64_t number);

    const FrameStore& store_;
    std::unique_ptr<Trace> trace_;
    Frame frame_{};  // its number is 0 before the first
  };

 private:
  // What tells that the file has changed, or that another one has its name.
  struct Look {
    std::uint64_t device = 0, inode = 0, size = 0;
    std::int64_t seconds = 0, nanoseconds = 0;

    bool operator==(const Look&) const = default;
    [[nodiscard]] bool same_file(const Look& other) const { return device == other.device && inode == other.inode; }
  };

  void wait_for_input();
  [[nodiscard]] Look look() const;
  [[nodiscard]] TracePlace place_before(std::uint64_t number) const;
  void run();
  std::string read_on();
  void add(const Frame& frame);

  const std::string name_;  // for people
  std::string path_;
  std::shared_ptr<Device> device_;
  std::unique_ptr<Spool> spool_;  // null: the trace itself can be read at any place
  std::optional<FrameIndex> index_;
  Look opened_;
  State state_;
  std::atomic<std::uint64_t> frames_ = 0;
  std::atomic<std::uint64_t> dropped_ = 0;
  std::atomic<bool> paused_ = false;
  std::atomic<bool> ending_ = false;
  mutable std::mutex mutex_;  // for index_ and state_
  mutable std::condition_variable changed_;
  std::thread thread_;
};

}  // namespace wirelines::host
