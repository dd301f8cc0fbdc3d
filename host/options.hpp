// Options that several subcommands share.
#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "command_line.hpp"
#include "device.hpp"
#include "filter.hpp"
#include "frame_range.hpp"

namespace wirelines::host {

// Which frames of which traces or of which interface, and how they are decoded.
struct InputOptions {
  // What was named, or standard input; none when live.
  [[nodiscard]] std::vector<std::string> traces() const;

  std::vector<std::string> files;
  std::vector<std::string> read_files;  // those of -r
  LiveOptions live;
  std::shared_ptr<Device> device;  // null: not live
  FrameRanges frames;
  std::optional<std::uint64_t> at;  // only the frame whose record begins there,
  std::string at_file;              // in this trace
  std::uint64_t count = std::numeric_limits<std::uint64_t>::max();
  std::string filter;  // a BPF expression; empty: every frame
  std::optional<Filter> display_filter;
  bool lift_tags = true;      // decode what follows VLAN tags
  std::uint32_t charset = 0;  // as AnalyzeOutput takes it
  bool quiet = false;
  unsigned jobs = 1;  // threads that handle frames
};

// An interface that is asked for is opened, and the rights for that are given up, as soon as the command line is
// understood: before any file of names is read.
void add_input_options(CLI::App& app, InputOptions& options);

// Those of them that tell where frames come from.
void add_source_options(CLI::App& app, InputOptions& options);

// -f, -c and -q.
void add_choice_options(CLI::App& app, InputOptions& options);

// -i and how to open it; all of them but -i only where `in_help` stand in the help.
void add_live_options(CLI::App& app, LiveOptions& options, bool in_help);

// --at, for the commands that show what one frame holds.
void add_at_option(CLI::App& app, InputOptions& options);

// -j, for the commands whose work several threads can share; unless given, as many as there are processors.
void add_jobs_option(CLI::App& app, InputOptions& options);

// --charset, for the commands that show data blocks.
void add_charset_option(CLI::App& app, InputOptions& options);

// --no-lift, for the commands that look into frames.
void add_lift_option(CLI::App& app, InputOptions& options);

// -Y, likewise.
void add_display_filter_option(CLI::App& app, InputOptions& options);

// --utc: takes effect at once, for the library's time line and for our own.
void add_utc_option(CLI::App& app);

// --color: whether colour is wanted on standard output.
class ColorOption {
 public:
  void add(CLI::App& app);
  [[nodiscard]] bool wanted() const;

 private:
  enum class When { kAuto, kAlways, kNever };
  When when_ = When::kAuto;
};

struct NameOptions {
  std::vector<std::string> files;
  bool none = false;
  bool system = false;
};

// -n, and which files of names count.
void add_name_options(CLI::App& app, NameOptions& options);
void add_name_file_options(CLI::App& app, NameOptions& options);

}  // namespace wirelines::host
