// wirelines stats: what the frames of traces add up to.
#include <langinfo.h>

#include <clocale>
#include <functional>
#include <memory>
#include <string_view>

#include "command_line.hpp"
#include "names.hpp"
#include "report.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

constexpr std::uint64_t kMostRows = 1'000'000'000;

struct StatsOptions {
  InputOptions input;
  NameOptions names;
  ColorOption color;
  std::uint64_t top = 10;
  bool json = false;
};

bool utf8_locale() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (locale == nullptr) return false;
  const bool utf8 = std::string_view(nl_langinfo_l(CODESET, locale)) == "UTF-8";
  freelocale(locale);
  return utf8;
}

class Adder : public Visitor {
 public:
  explicit Adder(Tally& tally) : tally_(tally) {}
  void visit(const Frame& frame) override { tally_.add(frame); }

 private:
  Tally& tally_;
};

int stats(const StatsOptions& options, Output& out) {
  load_names(options.names, options.input.traces());
  const auto tally = std::make_unique<Tally>(options.input.lift_tags);
  const auto adder = [&tally](Output&) { return std::make_unique<Adder>(*tally); };
  const int exit_code = walk(options.input, out, {adder, {}});
  if (options.json) {
    write_json(out, *tally, options.top);
  } else if (tally->total.frames > 0) {
    write_text(out, *tally, {options.top, options.color.wanted(), utf8_locale()});
  }
  return finish(out, exit_code);
}

}  // namespace

void add_stats(CLI::App& program, Run& run) {
  auto options = std::make_shared<StatsOptions>();
  auto& app = add_command(program, run, "stats", "Sum up traces: protocols, talkers, ports, checksums",
                          "Examples:\n"
                          "  wirelines stats --top 5 trace.pcap         the five busiest of everything\n"
                          "  wirelines stats --json trace.pcap | jq .checksums",
                          [options](Output& out) { return stats(*options, out); });
  add_input_options(app, options->input);
  add_display_filter_option(app, options->input);
  add_lift_option(app, options->input);
  add_name_options(app, options->names);
  add_utc_option(app);
  options->color.add(app);
  add_number(app, "--top", options->top, 0, kMostRows, "ROWS", "Rows a table (default 10); 0 for all");
  add_flag(app, "--json", options->json, "One JSON object, for programs");
}

}  // namespace wirelines::host
