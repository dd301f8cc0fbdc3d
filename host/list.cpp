// wirelines list: a row for every frame.
#include <memory>

#include "command_line.hpp"
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

class Lister : public Visitor {
 public:
  Lister(Output& out, const ListOptions& options) : rows_(out, options.color.wanted(), options.input.lift_tags) {}
  void visit(const Frame& frame) override { rows_.row(frame); }

 private:
  RowPrinter rows_;
};

int list(const ListOptions& options, Output& out) {
  load_names(options.names, options.input.traces());
  const auto lister = [&options](Output& to) { return std::make_unique<Lister>(to, options); };
  return finish(out, walk(options.input, out, {lister, {}}));
}

}  // namespace

void add_list(CLI::App& program, Run& run) {
  auto options = std::make_shared<ListOptions>();
  auto& app = add_command(program, run, "list", "List the frames of traces, one a line",
                          "A line has number, time of day, source, destination, protocol, length on the\n"
                          "wire and a note.\n"
                          "Examples:\n"
                          "  wirelines list trace.pcap | grep checksum  frames with a wrong checksum\n"
                          "  wirelines list -i eth0 -f 'not port 22'    frames as they come",
                          [options](Output& out) { return list(*options, out); });
  add_input_options(app, options->input);
  add_jobs_option(app, options->input);
  add_display_filter_option(app, options->input);
  add_lift_option(app, options->input);
  add_name_options(app, options->names);
  add_utc_option(app);
  options->color.add(app);
}

}  // namespace wirelines::host
