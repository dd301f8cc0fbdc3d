#include "options.hpp"

#include <unistd.h>
#include <wirelines.h>

#include <CLI/CLI.hpp>
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

CLI::Validator from(std::uint64_t least, std::uint64_t most) {
  return CLI::Range(least, most).description("");  // which the help would show
}

// A variable that is set to nothing counts as not set.
std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

void open_live(const CLI::App& app, InputOptions& options) {
  if (options.live.interface.empty()) {
    for (const auto* const name : {"--interface", "--snaplen", "--no-promiscuous", "--buffer", "--seconds", "--user"}) {
      if (app.count(name) > 0) throw CLI::RequiredError(std::string(name) + ": -i NAME, an interface,");
    }
    return;
  }
  if (!options.files.empty() || !options.read_files.empty()) {
    throw CLI::ValidationError("-i", "frames come from an interface or from traces, not both");
  }
  options.device = std::make_shared<Device>(options.live, options.filter, Device::Use::kDecode);
}

}  // namespace

void add_flag(CLI::App& app, const char* names, bool& value, const char* about) {
  app.add_flag(names, value, about);
}

void add_number(CLI::App& app, const char* names, std::uint64_t& value, std::uint64_t least, std::uint64_t most,
                const char* unit, const char* about) {
  app.add_option(names, value, about)->type_name(unit)->check(from(least, most));
}

void add_files(CLI::App& app, std::vector<std::string>& files, const char* about, bool required) {
  app.add_option("FILE", files, about)->type_name("")->required(required);
}

void add_one_of_words(CLI::App& app, const char* names, std::vector<std::string> words, const char* about,
                      std::function<void(std::size_t)> choose) {
  const auto type = CLI::detail::join(words, "|");
  app.add_option_function<std::string>(
         names,
         [names, words = std::move(words), choose = std::move(choose)](const std::string& word) {
           const auto found = std::find(words.begin(), words.end(), word);
           if (found == words.end()) {
             throw CLI::ValidationError(names, in_quotes(word) + " is none of " + CLI::detail::join(words, ", "));
           }
           choose(static_cast<std::size_t>(found - words.begin()));
         },
         about)
      ->type_name(type);
}

std::vector<std::string> InputOptions::traces() const {
  if (at) {
    if (!device && files.empty() && read_files.empty() && frames.all()) return {at_file};
    throw CLI::ValidationError("--at", "names the trace and the frame itself; no FILE, -r, -i and -N with it");
  }
  if (device) return {};
  auto all = read_files;
  all.insert(all.end(), files.begin(), files.end());
  if (std::count(all.begin(), all.end(), "-") > 1) throw CLI::ValidationError("FILE", "- can be named only once");
  if (!all.empty()) return all;
  if (isatty(STDIN_FILENO) != 0) throw CLI::RequiredError("FILE: the trace to read, or - for standard input,");
  return {"-"};
}

void add_source_options(CLI::App& app, InputOptions& options) {
  add_files(app, options.files, "Traces (or -r FILE): pcap, pcapng, .gz, .zst; - is stdin", false);
  app.add_option("-r,--read", options.read_files)->type_name("FILE")->allow_extra_args(false)->group("");
  add_live_options(app, options.live, false);
  app.parse_complete_callback([&app, &options] {
    if (app.remaining_size() > 0) return;  // an error, told soon
    open_live(app, options);
  });
}

void add_input_options(CLI::App& app, InputOptions& options) {
  add_source_options(app, options);
  app.add_option_function<std::string>(
         "-N,--frames",
         [&options](const std::string& text) {
           if (const auto wrong = options.frames.add(text); !wrong.empty()) {
             throw CLI::ValidationError("--frames", wrong);
           }
         },
         "Only these frames: 12, 5-9, 100-, or several: 3,7-9")
      ->type_name("RANGES");
  add_choice_options(app, options);
}

void add_choice_options(CLI::App& app, InputOptions& options) {
  app.add_option("-f,--filter", options.filter, "Only frames that this BPF expression lets through")->type_name("EXPR");
  app.add_option("-c,--count", options.count, "At most so many frames")
      ->type_name("COUNT")
      ->check([](const std::string& count) {
        return count == "0" ? std::string("at least one frame must be wanted") : std::string();
      });
  add_flag(app, "-q,--quiet", options.quiet, "No progress and no summary");
}

void add_live_options(CLI::App& app, LiveOptions& options, bool in_help) {
  constexpr std::uint64_t kMostSeconds = std::numeric_limits<std::uint32_t>::max();
  constexpr std::uint64_t kMostBuffer = 2047;  // what libpcap can be told
  app.add_option("-i,--interface", options.interface,
                 in_help ? "The interface, any for all; see -D" : "Live from this interface; see capture")
      ->type_name("NAME");
  const std::array others = {
      app.add_option("-s,--snaplen", options.snaplen, "At most so many bytes of a frame")
          ->type_name("BYTES")
          ->check(from(1, kLongestFrame)),
      app.add_flag("-p,--no-promiscuous", options.no_promiscuous, "Only what the interface takes anyway"),
      app.add_option("--buffer", options.buffer, "Size of the kernel's buffer (default 16)")
          ->type_name("MB")
          ->check(from(1, kMostBuffer)),
      app.add_option("--seconds", options.seconds, "End after so many seconds")
          ->type_name("N")
          ->check(from(1, kMostSeconds)),
      app.add_option("--user", options.user, "Whom root becomes when the interface is open")->type_name("NAME"),
  };
  for (auto* const option : others) {
    if (!in_help) option->group("");
  }
}

void add_at_option(CLI::App& app, InputOptions& options) {
  app.add_option_function<std::string>(
         "--at",
         [&options](const std::string& place) {
           const auto colon = place.rfind(':');
           const auto* const end = place.data() + place.size();
           const auto* const digits = colon == std::string::npos ? end : place.data() + colon + 1;
           std::uint64_t offset = 0;
           const auto [last, error] = std::from_chars(digits, end, offset);
           if (colon == 0 || error != std::errc() || last != end) {
             throw CLI::ValidationError("--at", in_quotes(place) + " is not FILE:OFFSET");
           }
           options.at_file = place.substr(0, colon);
           options.at = offset;
         },
         "Only the frame at this offset; see classify")
      ->type_name("FILE:OFFSET");
}

void add_jobs_option(CLI::App& app, InputOptions& options) {
  constexpr unsigned kMost = 64;
  constexpr unsigned kMostUnlessGiven = 8;  // beyond, reading and writing leave the others little to do
  options.jobs = std::clamp(std::thread::hardware_concurrency(), 1U, kMostUnlessGiven);
  app.add_option("-j,--jobs", options.jobs, "Threads, unless given one a processor, 8 at most")
      ->type_name("N")
      ->check(from(1, kMost));
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
  app.add_flag_callback(
      "--no-lift", [&options] { options.lift_tags = false; }, "Show a frame with VLAN tags as the data it carries");
}

void add_display_filter_option(CLI::App& app, InputOptions& options) {
  app.add_option_function<std::string>(
         "-Y,--display-filter",
         [&options](const std::string& text) {
           try {
             options.display_filter.emplace(text);
           } catch (const FilterError& error) {
             throw Failure(EX_USAGE, std::string("--display-filter: ") + error.what(),
                           pointed_at(text, error.position()));
           }
         },
         "Only frames that this display filter lets through")
      ->type_name("EXPR");
}

void add_utc_option(CLI::App& app) {
  app.add_flag_callback(
      "--utc",
      [] {
        setenv("TZ", "UTC0", 1);
        tzset();
      },
      "Times in UTC instead of local time");
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
  app.add_option("--names", options.files, "Names, on top of the trace's own and the user's")
      ->type_name("FILE")
      ->allow_extra_args(false);
  add_flag(app, "--system-names", options.system, "Also /etc/hosts, /etc/ethers and /etc/services");
}

}  // namespace wirelines::host
