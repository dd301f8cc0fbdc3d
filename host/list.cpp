// wirelines list: a row for every frame.
#include <memory>

#include "commands.hpp"
#include "names.hpp"
#include "rows.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

struct ListOptions {
  InputOptions input;
  NameOptions names;
  ColorOption color;
};

int list(const ListOptions& options, Output& out) {
  load_names(options.names, options.input.traces());
  RowPrinter printer(out, options.color.wanted(), options.input.lift_tags);

  const int exit_code = walk(options.input, out, [&printer](const Frame& frame) { printer.row(frame); });
  return finish(out, exit_code);
}

}  // namespace

void add_list(CLI::App& program, Run& run) {
  auto* app = program.add_subcommand("list", "List the frames of traces, one a line");
  auto options = std::make_shared<ListOptions>();
  add_input_options(*app, options->input);
  add_display_filter_option(*app, options->input);
  add_lift_option(*app, options->input);
  add_name_options(*app, options->names);
  add_utc_option(*app);
  options->color.add(*app);
  app->footer(
      "A line has number, time of day, source, destination, protocol, length on the\n"
      "wire and a note.\n"
      "Examples:\n"
      "  wirelines list trace.pcap | grep checksum  frames with a wrong checksum\n"
      "  wirelines list -i eth0 -f 'not port 22'    frames as they come");
  app->callback([&run, options] { run = [options](Output& out) { return list(*options, out); }; });
}

}  // namespace wirelines::host
