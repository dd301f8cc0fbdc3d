// wirelines index: keeps beside a trace where its frames begin.
#include <memory>
#include <optional>

#include "command_line.hpp"
#include "failure.hpp"
#include "frame_index.hpp"
#include "options.hpp"

namespace wirelines::host {

namespace {

struct IndexOptions {
  std::vector<std::string> traces;
  bool quiet = false;
};

// Of a damaged trace, the frames before the damage are indexed. Throws Failure.
void index_trace(const std::string& name, bool quiet) {
  FrameIndex index(name);
  Trace trace(name, {});
  if (trace.compressed()) {
    throw Failure(EX_USAGE, name +
                                ": is compressed, so that a frame is reached only through all before it: no index "
                                "can help; decompress it first");
  }
  std::optional<Failure> damage;
  try {
    for (Frame frame{}; trace.next(frame);) index.add(frame);
  } catch (const Failure& failure) {
    damage = failure;
  }
  index.save();
  if (!quiet) complain(FrameIndex::file_of(name) + ": " + std::to_string(index.frames()) + " frame(s)");
  if (damage) throw Failure(damage->exit_code(), damage->what());
}

int index(const IndexOptions& options) {
  int exit_code = 0;
  for (const auto& name : options.traces) {
    try {
      index_trace(name, options.quiet);
    } catch (const Failure& failure) {
      complain(failure.what());
      if (exit_code == 0) exit_code = failure.exit_code();
    }
  }
  return exit_code;
}

}  // namespace

void add_index(CLI::App& program, Run& run) {
  auto options = std::make_shared<IndexOptions>();
  auto& app = add_command(program, run, "index", "Note where the frames of a large trace begin",
                          "Writes FILE.wlx beside each FILE; -N and --at then find frames at once.\n"
                          "Examples:\n"
                          "  wirelines index big.pcap\n"
                          "  wirelines show -N 900000 big.pcap",
                          [options](Output&) { return index(*options); });
  add_files(app, options->traces, "Traces in pcap or pcapng form, not compressed", true);
  add_flag(app, "-q,--quiet", options->quiet, "No summary");
}

}  // namespace wirelines::host
