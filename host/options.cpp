#include "options.hpp"

#include <unistd.h>
#include <wirelines.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <thread>
#include <utility>

#include "failure.hpp"

namespace wirelines::host {

namespace {

// A variable that is set to nothing counts as not set.
std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

void open_live(const CLI::App& app, InputOptions& options) {
  if (options.live.interface.empty()) {
    for (const auto* const name : {"--interface", "--snaplen", "--no-promiscuous", "--buffer", "--seconds", "--user"}) {
      if (is_given(app, name)) throw UsageError(std::string(name) + ": -i NAME, an interface, is required");
    }
    return;
  }
  if (!options.files.empty() || !options.read_files.empty()) {
    throw UsageError("-i: frames come from an interface or from traces, not both");
  }
  options.device = std::make_shared<Device>(options.live, options.filter, Device::Use::kDecode);
}

}  // namespace

std::vector<std::string> InputOptions::traces() const {
  if (at) {
    if (!device && files.empty() && read_files.empty() && frames.all()) return {at_file};
    throw UsageError("--at: names the trace and the frame itself; no FILE, -r, -i and -N with it");
  }
  if (device) return {};
  auto all = read_files;
  all.insert(all.end(), files.begin(), files.end());
  if (std::count(all.begin(), all.end(), "-") > 1) throw UsageError("FILE: - can be named only once");
  if (!all.empty()) return all;
  if (isatty(STDIN_FILENO) != 0) throw UsageError("FILE: the trace to read, or - for standard input, is required");
  return {"-"};
}

void add_source_options(CLI::App& app, InputOptions& options) {
  add_files(app, options.files, "Traces (or -r FILE): pcap, pcapng, .gz, .zst; - is stdin", false);
  add_texts(app, "-r,--read", options.read_files, "FILE", "");
  add_live_options(app, options.live, false);
  when_understood(app, [&app, &options] { open_live(app, options); });
}

void add_input_options(CLI::App& app, InputOptions& options) {
  add_source_options(app, options);
  const auto take = [&options](const std::string& text) {
    if (const auto wrong = options.frames.add(text); !wrong.empty()) throw UsageError("--frames: " + wrong);
  };
  add_text(app, "-N,--frames", take, "RANGES", "Only these frames: 12, 5-9, 100-, or several: 3,7-9");
  add_choice_options(app, options);
}

void add_choice_options(CLI::App& app, InputOptions& options) {
  add_text(app, "-f,--filter", options.filter, "EXPR", "Only frames that this BPF expression lets through");
  add_number(app, "-c,--count", options.count, 1, InputOptions{}.count, "COUNT", "At most so many frames");
  add_flag(app, "-q,--quiet", options.quiet, "No progress and no summary");
}

void add_live_options(CLI::App& app, LiveOptions& options, bool in_help) {
  constexpr std::uint64_t kMostSeconds = std::numeric_limits<std::uint32_t>::max();
  constexpr std::uint64_t kMostBuffer = 2047;  // what libpcap can be told
  const auto in = [in_help](const char* about) { return in_help ? about : ""; };
  add_text(app, "-i,--interface", options.interface, "NAME",
           in_help ? "The interface, any for all; see -D" : "Live from this interface; see capture");
  add_number(app, "-s,--snaplen", options.snaplen, 1, kLongestFrame, "BYTES", in("At most so many bytes of a frame"));
  add_flag(app, "-p,--no-promiscuous", options.no_promiscuous, in("Only what the interface takes anyway"));
  add_number(app, "--buffer", options.buffer, 1, kMostBuffer, "MB", in("Size of the kernel's buffer (default 16)"));
  add_number(app, "--seconds", options.seconds, 1, kMostSeconds, "N", in("End after so many seconds"));
  add_text(app, "--user", options.user, "NAME", in("Whom root becomes when the interface is open"));
}

void add_at_option(CLI::App& app, InputOptions& options) {
  const auto take = [&options](const std::string& place) {
    const auto colon = place.rfind(':');
    const auto* const end = place.data() + place.size();
    const auto* const digits = colon == std::string::npos ? end : place.data() + colon + 1;
    std::uint64_t offset = 0;
    const auto [last, error] = std::from_chars(digits, end, offset);
    if (colon == 0 || error != std::errc() || last != end) {
      throw UsageError("--at: " + in_quotes(place) + " is not FILE:OFFSET");
    }
    options.at_file = place.substr(0, colon);
    options.at = offset;
  };
  add_text(app, "--at", take, "FILE:OFFSET", "Only the frame at this offset; see classify");
}

void add_jobs_option(CLI::App& app, InputOptions& options) {
  constexpr unsigned kMost = 64;
  constexpr unsigned kMostUnlessGiven = 8;  // beyond, reading and writing leave the others little to do
  options.jobs = std::clamp(std::thread::hardware_concurrency(), 1U, kMostUnlessGiven);
  add_number(app, "-j,--jobs", options.jobs, 1, kMost, "N", "Threads, unless given one a processor, 8 at most");
}

void add_charset_option(CLI::App& app, InputOptions& options) {
  add_one_of<std::uint32_t>(app, "--charset", options.charset,
                            {{"ascii", WIRELINES_ASCII},
                             {"sjis", WIRELINES_SJIS},
                             {"jis", WIRELINES_JIS},
                             {"utf16", WIRELINES_UNICODE},
                             {"euc", WIRELINES_EUC},
                             {"ebcdic", WIRELINES_EBCDIC},
                             {"raw", WIRELINES_EBCDIC + 1}},
                            "Text of data blocks");
}

void add_lift_option(CLI::App& app, InputOptions& options) {
  const auto keep_tags = [&options] { options.lift_tags = false; };
  add_flag(app, "--no-lift", keep_tags, "Show a frame with VLAN tags as the data it carries");
}

void add_display_filter_option(CLI::App& app, InputOptions& options) {
  const auto take = [&options](const std::string& text) {
    try {
      options.display_filter.emplace(text);
    } catch (const FilterError& error) {
      throw Failure(EX_USAGE, std::string("--display-filter: ") + error.what(), pointed_at(text, error.position()));
    }
  };
  add_text(app, "-Y,--display-filter", take, "EXPR", "Only frames that this display filter lets through");
}

void add_utc_option(CLI::App& app) {
  const auto set = [] {
    setenv("TZ", "UTC0", 1);
    tzset();
  };
  add_flag(app, "--utc", set, "Times in UTC instead of local time");
}

void ColorOption::add(CLI::App& app) {
  add_one_of(app, "--color", when_, {{"auto", When::kAuto}, {"always", When::kAlways}, {"never", When::kNever}},
             "Auto: on a terminal only");
}

bool ColorOption::wanted() const {
  if (when_ != When::kAuto) return when_ == When::kAlways;
  const auto terminal = environment("TERM");
  return isatty(STDOUT_FILENO) != 0 && environment("NO_COLOR").empty() && !terminal.empty() && terminal != "dumb";
}

void add_name_options(CLI::App& app, NameOptions& options) {
  add_flag(app, "-n", options.none, "Show no names of stations, addresses, ports");
  add_name_file_options(app, options);
}

void add_name_file_options(CLI::App& app, NameOptions& options) {
  add_texts(app, "--names", options.files, "FILE", "Names, on top of the trace's own and the user's");
  add_flag(app, "--system-names", options.system, "Also /etc/hosts, /etc/ethers and /etc/services");
}

}  // namespace wirelines::host
