// wirelines show: every frame decoded.
#include <memory>

#include "commands.hpp"
#include "decode.hpp"
#include "lines.hpp"
#include "names.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

struct ShowOptions {
  InputOptions input;
  NameOptions names;
  ColorOption color;
  bool raw = false;
};

int show(const ShowOptions& options, Output& out) {
  load_names(options.names, options.input.traces());
  Lines lines(options.input.lift_tags && !options.raw);  // the raw form holds the library's own lines
  LinePrinter printer(out, options.color.wanted());
  const bool several = options.input.traces().size() > 1;

  const int exit_code = walk(options.input, out, [&](const Frame& frame) {
    const auto top_line = lines.decode(frame, options.input.charset);
    if (options.raw) {
      raw_frame(out, frame, top_line);
      lines.each([&out](const DisplayLine& line) { raw_line(out, line); });
    } else {
      printer.frame(frame, several);
      printer.lines(lines);
    }
  });
  return finish(out, exit_code);
}

}  // namespace

void add_show(CLI::App& program, Run& run) {
  auto* app = program.add_subcommand("show", "Show the frames of traces, decoded line by line");
  auto options = std::make_shared<ShowOptions>();
  add_input_options(*app, options->input);
  add_charset_option(*app, options->input);
  add_display_filter_option(*app, options->input);
  add_lift_option(*app, options->input);
  add_name_options(*app, options->names);
  add_utc_option(*app);
  options->color.add(*app);
  app->add_flag("--raw", options->raw, "For programs: CODE LEVEL START-END STYLE |TEXT|");
  app->footer(
      "Examples:\n"
      "  wirelines show -N 12 trace.pcap            frame 12\n"
      "  wirelines show -i eth0 -f 'port 53'        frames as they come");
  app->callback([&run, options] { run = [options](Output& out) { return show(*options, out); }; });
}

}  // namespace wirelines::host
