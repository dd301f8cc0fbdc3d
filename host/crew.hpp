// Frames on their way to the output: one after another, or in batches by several threads, with the same result.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "filter.hpp"
#include "options.hpp"
#include "output.hpp"
#include "trace.hpp"

namespace wirelines::host {

// Does with a frame what a command is for. It may have an output and memory of its own, but what it puts out for a
// frame does not hang on the frames before.
class Visitor {
 public:
  virtual ~Visitor() = default;
  virtual void visit(const Frame& frame) = 0;
};

// Puts out what stands before a frame of `trace`; `before` is the trace of the frame before that one, or null.
using Gap = std::function<void(Output&, const std::string* before, const std::string& trace)>;

struct Handling {
  // Makes a visitor that writes to that output. Where there are several, they are called on several threads at a time.
  std::function<std::unique_ptr<Visitor>(Output&)> visitor;
  Gap gap;  // may be empty
};

class Crew {
 public:
  // By the options come the number of threads, of which the caller's is one, and the display filter. No other thread is
  // started before there is work for it.
  Crew(const InputOptions& options, Handling handling, Output& out);
  // Frames that were not written are dropped.
  ~Crew();
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;

  // Takes the next frame, which may change afterwards: its bytes are copied where other threads handle it.
  void take(const Frame& frame);

  // Returns when everything taken so far is written; false when nothing can be written any more.
  bool flush();

  // Frames that were put out. Where the display filter chooses among frames of which only so many are wanted, that is
  // known at once: one thread does it all, so that not a frame too many is waited for.
  [[nodiscard]] std::uint64_t put_out() const { return put_out_; }

 private:
  // What a thread needs to handle frames.
  struct Place {
    Place(const Crew& crew, Output& out);

    std::unique_ptr<Visitor> visitor;
    FilterScratch scratch;
  };
  struct Batch {
    explicit Batch(const Crew& crew) : place(crew, text) {}

    Output text;
    Place place;
    std::vector<Frame> frames;
    std::vector<std::uint8_t> bytes;  // of all frames, one behind the other
    std::uint64_t put_out = 0;
    const std::string *first = nullptr, *last = nullptr;  // traces of the frames that were put out
    bool done = false;
    std::exception_ptr failure;
  };

  [[nodiscard]] bool chosen(const Frame& frame, Place& place) const;
  void handle(Batch& batch) const;
  void handle_next(std::unique_lock<std::mutex>& lock);
  void hand_over();
  void start_helper();
  void help();
  void write_oldest();
  Batch& batch(std::uint64_t number) { return *ring_[number % ring_.size()]; }

  const InputOptions& options_;
  const Handling handling_;
  const unsigned jobs_;
  Output& out_;
  std::optional<Place> alone_;           // of the only thread
  const std::string* before_ = nullptr;  // the trace of the last frame that was put out
  std::uint64_t put_out_ = 0;

  // Batches are numbered: below written_ they are written, below begun_ some thread has taken them, below filled_ they
  // wait for one, and filled_ is being filled. Each has its place in a ring, used again and again.
  std::vector<std::unique_ptr<Batch>> ring_;
  std::uint64_t written_ = 0;
  std::uint64_t begun_ = 0;
  std::uint64_t filled_ = 0;
  bool ending_ = false;
  std::mutex mutex_;  // for begun_, filled_, ending_ and done
  std::condition_variable filled_one_;
  std::condition_variable done_one_;
  std::vector<std::thread> helpers_;
};

}  // namespace wirelines::host
