#include "walk.hpp"

#include <unistd.h>
#include <vek4001.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>

#include "failure.hpp"

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

void module_message(std::int32_t /*code*/, const char* text, void* troubles) {
  static_cast<Troubles*>(troubles)->add(EX_OSERR, text);
}

}  // namespace

int walk(const InputOptions& options, Output& out, const std::function<void(const Frame&)>& visit) {
  const auto traces = options.traces();
  Troubles troubles;
  SetErrMessageHandler(module_message, &troubles);
  {
    Progress progress(options.quiet);
    Frame frame{};
    std::uint64_t read = 0;
    std::uint64_t shown = 0;
    const auto done = [&] {
      return shown == options.count || options.frames.ends_before(read + 1) || out.error() != 0;
    };
    for (const auto& name : traces) {
      if (done()) break;
      try {
        Trace trace(name, read, [&out] { out.flush(); });
        while (!done() && trace.next(frame)) {
          read = frame.number;
          progress.frame(read);
          if (!options.frames.contains(read)) continue;
          visit(frame);
          shown++;
        }
      } catch (const Failure& failure) {
        out.flush();  // so that on a terminal the message stands behind the frames before it
        troubles.add(failure.exit_code(), failure.what());
      }
    }
    if (shown == 0 && troubles.exit_code() == 0 && !options.quiet) {
      complain(read == 0 ? "there are no frames" : "none of the " + std::to_string(read) + " frame(s) was chosen");
    }
  }
  SetErrMessageHandler(nullptr, nullptr);
  return troubles.exit_code();
}

int finish(Output& out, int exit_code) {
  out.flush();
  if (out.error() == 0 || out.error() == EPIPE) return exit_code;
  complain("the output cannot be written: " + error_text(out.error()));
  return EX_IOERR;
}

}  // namespace wirelines::host
