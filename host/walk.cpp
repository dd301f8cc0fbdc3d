#include "walk.hpp"

#include <sys/resource.h>
#include <unistd.h>
#include <vek4001.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "device.hpp"
#include "failure.hpp"
#include "frame_index.hpp"

namespace wirelines::host {

namespace {

// How far we are, for work of more than a second whose result goes elsewhere than to the terminal.
class Progress {
 public:
  explicit Progress(bool quiet) : on_(!quiet && isatty(STDERR_FILENO) != 0 && isatty(STDOUT_FILENO) == 0) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() {
    if (shown_) show("\r\x1B[K");
  }

  void frame(std::uint64_t number) {
    if (!on_ || number % 1024 != 0) return;
    const auto now = std::chrono::steady_clock::now();
    if (now - last_ < std::chrono::seconds(1)) return;
    last_ = now;
    shown_ = true;
    show("\r" + std::to_string(number) + " frames");
  }

 private:
  static void show(const std::string& text) {
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), text.size());
  }

  bool on_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

// The trouble of the whole way: told at once, and the first decides the exit code.
class Troubles {
 public:
  void add(int exit_code, std::string_view message) {
    complain(message);
    if (exit_code_ == 0) exit_code_ = exit_code;
  }
  [[nodiscard]] int exit_code() const { return exit_code_; }

 private:
  int exit_code_ = 0;
};

// What the library has to say: memory is exhausted. Told once, by whichever thread meets it first.
class LibraryTrouble {
 public:
  LibraryTrouble() { SetErrMessageHandler(tell, &met_); }
  LibraryTrouble(const LibraryTrouble&) = delete;
  LibraryTrouble& operator=(const LibraryTrouble&) = delete;
  ~LibraryTrouble() { SetErrMessageHandler(nullptr, nullptr); }

  [[nodiscard]] bool met() const { return met_; }

 private:
  static void tell(std::int32_t /*code*/, const char* text, void* met) {
    if (!static_cast<std::atomic_bool*>(met)->exchange(true)) complain(text);
  }

  std::atomic_bool met_ = false;
};

// Where to begin when an index of the only trace leads to the first frame that is wanted. An index that is of no use is
// told of; the trace is then read from its beginning.
TracePlace place_of(const InputOptions& options, const std::vector<std::string>& names) {
  if (names.size() != 1 || names[0] == "-" || (!options.at && options.frames.first() <= FrameIndex::kStep)) return {};
  try {
    const auto index = FrameIndex::load(names[0]);
    if (!index) return {};
    return options.at ? index->before_offset(*options.at) : index->before_frame(options.frames.first());
  } catch (const Failure& failure) {
    complain(std::string(failure.what()) + "; going without it (wirelines index " + names[0] + " makes a new one)");
    return {};
  }
}

// The frames of several traces in the order of time. Of each trace that has frames left, the next one is at hand.
class Merge {
 public:
  // `names` are those of the traces; frames point to them.
  Merge(const InputOptions& options, const std::vector<std::string>& names, Crew& crew, Troubles& troubles)
      : crew_(crew), troubles_(troubles) {
    if (options.device) {
      options.device->before_wait([this] { return crew_.flush(); });
      add(std::make_unique<Reader>(Reader{options.device, {}, 0}));
      return;
    }
    refuse_too_many(names.size());
    const auto place = place_of(options, names);
    for (const auto& name : names) open(name, place, options.filter);
    if (place.offset > 0 && !readers_.empty()) passed_ = readers_.front()->frame.number - 1;
  }

  // How many frames come before the first one.
  [[nodiscard]] std::uint64_t passed() const { return passed_; }

  // The next frame, good until the call after it; null at the end. A trace is only asked for a frame when its last one
  // has been dealt with: the next may have to be waited for.
  Frame* next() {
    if (current_) add(std::move(current_));
    if (readers_.empty()) return nullptr;
    std::pop_heap(readers_.begin(), readers_.end(), later);
    current_ = std::move(readers_.back());
    readers_.pop_back();
    return &current_->frame;
  }

  // Whether the filter lets that frame through.
  [[nodiscard]] bool matches() const { return current_->source->matches(current_->frame); }

 private:
  struct Reader {
    std::shared_ptr<Source> source;
    Frame frame;
    std::size_t order;
  };
  using ReaderPtr = std::unique_ptr<Reader>;

  static bool later(const ReaderPtr& a, const ReaderPtr& b) {
    return std::tie(a->frame.seconds, a->frame.nanoseconds, a->order) >
           std::tie(b->frame.seconds, b->frame.nanoseconds, b->order);
  }

  // All traces are open together, besides standard input, output and error.
  static void refuse_too_many(std::size_t traces) {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || traces + 3 <= limit.rlim_cur) return;
    throw Failure(EX_USAGE, std::to_string(traces) + " traces are too many: only " + std::to_string(limit.rlim_cur) +
                                " files may be open at once; \"ulimit -n\" raises that, or merge some traces first");
  }

  void open(const std::string& name, const TracePlace& place, const std::string& filter) {
    try {
      auto trace = std::make_unique<Trace>(
          name, [this] { crew_.flush(); }, place);
      if (!filter.empty()) trace->set_filter(filter);
      add(std::make_unique<Reader>(Reader{std::move(trace), {}, opened_++}));
    } catch (const Failure& failure) {
      if (failure.exit_code() == EX_USAGE) throw;
      tell(failure);
    }
  }

  // Puts a trace back with its next frame, or closes it when there is none.
  void add(ReaderPtr reader) {
    try {
      if (!reader->source->next(reader->frame)) return;
    } catch (const Failure& failure) {
      return tell(failure);
    }
    readers_.push_back(std::move(reader));
    std::push_heap(readers_.begin(), readers_.end(), later);
  }

  void tell(const Failure& failure) {
    crew_.flush();  // so that on a terminal the message stands behind the frames before it
    troubles_.add(failure.exit_code(), failure.what());
  }

  Crew& crew_;
  Troubles& troubles_;
  std::size_t opened_ = 0;
  std::uint64_t passed_ = 0;
  std::vector<ReaderPtr> readers_;  // a heap, the earliest frame first
  ReaderPtr current_;
};

}  // namespace

int walk(const InputOptions& options, Output& out, const Handling& handling) {
  const auto names = options.traces();
  Troubles troubles;
  const LibraryTrouble library;
  Crew crew(options, handling, out);
  Merge traces(options, names, crew, troubles);
  {
    Progress progress(options.quiet);
    std::uint64_t read = traces.passed();
    std::uint64_t taken = 0;
    std::optional<std::uint64_t> offset;  // of the last frame that was read
    const auto done = [&] {
      const auto counted = options.display_filter ? crew.put_out() : taken;
      return counted == options.count || options.frames.ends_before(read + 1) || (options.at && offset >= options.at) ||
             out.error() != 0;
    };
    while (!done()) {
      Frame* const frame = traces.next();
      if (frame == nullptr) break;
      frame->number = ++read;
      progress.frame(read);
      offset = frame->offset;
      if (!options.frames.contains(read) || (options.at && offset != options.at) || !traces.matches()) continue;
      crew.take(*frame);
      taken++;
    }
    crew.flush();
    if (options.device) {
      options.device->tell_counts(crew.put_out(), "shown", options.quiet || out.error() == EPIPE);
    } else if (options.at && offset != options.at && troubles.exit_code() == 0) {
      troubles.add(EX_USAGE, names[0] + ": no frame begins at offset " + std::to_string(*options.at));
    } else if (crew.put_out() == 0 && troubles.exit_code() == 0 && !options.quiet) {
      complain(read == 0 ? "there are no frames" : "none of the " + std::to_string(read) + " frame(s) was chosen");
    }
  }
  return troubles.exit_code() == 0 && library.met() ? EX_OSERR : troubles.exit_code();
}

int finish(Output& out, int exit_code) {
  out.flush();
  if (out.error() == 0 || out.error() == EPIPE) return exit_code;
  complain("the output cannot be written: " + error_text(out.error()));
  return EX_IOERR;
}

}  // namespace wirelines::host
