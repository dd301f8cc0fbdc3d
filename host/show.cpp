// wirelines show: every frame decoded.
#include <memory>

#include "command_line.hpp"
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

class RawShower : public Visitor {
 public:
  RawShower(Output& out, const ShowOptions& options) : out_(out), charset_(options.input.charset) {}

  void visit(const Frame& frame) override {
    raw_frame(out_, frame, lines_.decode(frame, charset_));
    lines_.each([this](const DisplayLine& line) { raw_line(out_, line); });
  }

 private:
  Output& out_;
  Lines lines_{false};  // the raw form holds the library's own lines
  std::uint32_t charset_;
};

int show(const ShowOptions& options, Output& out) {
  load_names(options.names, options.input.traces());
  if (options.raw) {
    const auto shower = [&options](Output& to) { return std::make_unique<RawShower>(to, options); };
    return finish(out, walk(options.input, out, {shower, {}}));
  }
  const auto make = [](Lines& lines, const Frame& frame, std::uint32_t charset) { lines.decode(frame, charset); };
  return finish(out, walk(options.input, out, printed_lines(options.input, options.color.wanted(), make)));
}

}  // namespace

void add_show(CLI::App& program, Run& run) {
  auto options = std::make_shared<ShowOptions>();
  auto& app = add_command(program, run, "show", "Show the frames of traces, decoded line by line",
                          "Examples:\n"
                          "  wirelines show -N 12 trace.pcap            frame 12\n"
                          "  wirelines show -i eth0 -f 'port 53'        frames as they come",
                          [options](Output& out) { return show(*options, out); });
  add_input_options(app, options->input);
  add_at_option(app, options->input);
  add_jobs_option(app, options->input);
  add_charset_option(app, options->input);
  add_display_filter_option(app, options->input);
  add_lift_option(app, options->input);
  add_name_options(app, options->names);
  add_utc_option(app);
  options->color.add(app);
  add_flag(app, "--raw", options->raw, "For programs: CODE LEVEL START-END STYLE |TEXT|");
}

}  // namespace wirelines::host
