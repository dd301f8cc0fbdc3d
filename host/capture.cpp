// wirelines capture: frames from an interface to files.
#include <unistd.h>

#include <array>
#include <ctime>
#include <memory>

#include "command_line.hpp"
#include "device.hpp"
#include "failure.hpp"
#include "options.hpp"
#include "recorder.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

struct CaptureOptions {
  InputOptions input;
  RecordOptions record;
  std::uint64_t megabytes = 0;
  bool list = false;
};

// eth0_20261121103000.pcap, in the current folder.
std::string default_file(const std::string& interface) {
  const auto now = std::time(nullptr);
  std::tm local{};
  std::array<char, 32> time{};
  (void)std::strftime(time.data(), time.size(), "_%Y%m%d%H%M%S.pcap", localtime_r(&now, &local));
  return interface + time.data();
}

int capture(CaptureOptions& options, Output& out) {
  if (options.list) {
    list_interfaces(out);
    return finish(out, 0);
  }
  auto& record = options.record;
  const auto& input = options.input;
  auto& device = *input.device;
  const bool dated = record.file.empty() && record.size == 0 && record.seconds == 0;
  if (record.file.empty()) record.file = dated ? default_file(input.live.interface) : input.live.interface + ".pcap";

  Recorder recorder(record, device.pcap());
  if (!input.quiet && record.file != "-") complain("capturing to " + recorder.file_name() + "; Ctrl-C ends it");

  std::uint64_t frames = 0;
  int exit_code = 0;
  const auto attempt = [&exit_code](const auto& work) {
    try {
      work();
    } catch (const Failure& failure) {
      complain(failure.what());
      exit_code = failure.exit_code();
    }
  };
  attempt([&] {
    device.before_wait([&recorder] {
      recorder.flush();
      return !recorder.reader_gone();
    });
    for (Frame frame{}; frames < input.count && !recorder.reader_gone() && device.next(frame); frames++) {
      recorder.write(frame);
    }
  });
  // Also what came before the interface failed.
  attempt([&] { recorder.flush(); });
  device.tell_counts(frames, "captured", input.quiet || recorder.reader_gone());
  return exit_code;
}

void check(const CaptureOptions& options) {
  if (options.list) return;
  const auto& record = options.record;
  const bool several = record.size > 0 || record.seconds > 0;
  if (options.input.live.interface.empty()) {
    throw UsageError("-i NAME: the interface, one of those that -D lists, is required");
  }
  if (record.files > 0 && !several) {
    throw UsageError("--files: needs --file-size or --file-seconds, which end a file");
  }
  if (record.file != "-") return;
  if (several) throw UsageError("-w: standard output is only one file");
  if (isatty(STDOUT_FILENO) != 0) {
    throw UsageError("-w: standard output is a terminal; to see frames: wirelines list -i " +
                     options.input.live.interface);
  }
}

}  // namespace

void add_capture(CLI::App& program, Run& run) {
  auto options = std::make_shared<CaptureOptions>();
  auto& app = add_command(program, run, "capture", "Capture from an interface to files",
                          "Examples:\n"
                          "  wirelines capture -i eth0 -w trace.pcap -f 'port 53'\n"
                          "  wirelines capture -i eth0 --file-size 100 --files 10   the last 900 MB or more",
                          [options](Output& out) { return capture(*options, out); });
  auto& input = options->input;
  auto& record = options->record;
  constexpr std::uint64_t kMost = 1'000'000'000;
  add_live_options(app, input.live, true);
  add_text(app, "-w,--write", record.file, "FILE", "The file, - for standard output (default NAME_TIME.pcap)");
  add_number(app, "--file-size", options->megabytes, 1, kMost, "MB",
             "Begin another file, FILE_NUMBER_TIME, before this size");
  add_number(app, "--file-seconds", record.seconds, 1, kMost, "N", "Begin another file after so many seconds");
  add_number(app, "--files", record.files, 1, kMost, "N", "Keep so many files: the oldest is removed");
  add_choice_options(app, input);
  add_flag(app, "-D,--interfaces", options->list, "List the interfaces and end");
  when_understood(app, [&input, options = options.get()] {
    options->record.size = options->megabytes * 1'000'000;
    check(*options);
    if (!options->list) input.device = std::make_shared<Device>(input.live, input.filter, Device::Use::kRecord);
  });
}

}  // namespace wirelines::host
