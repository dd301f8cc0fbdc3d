// wirelines dump: the bytes of every frame.
#include <memory>

#include "command_line.hpp"
#include "decode.hpp"
#include "lines.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

struct DumpOptions {
  InputOptions input;
  ColorOption color;
};

int dump(const DumpOptions& options, Output& out) {
  const auto make = [](Lines& lines, const Frame& frame, std::uint32_t charset) { lines.dump(frame, charset); };
  return finish(out, walk(options.input, out, printed_lines(options.input, options.color.wanted(), make)));
}

}  // namespace

void add_dump(CLI::App& program, Run& run) {
  auto options = std::make_shared<DumpOptions>();
  auto& app = add_command(program, run, "dump", "Show the bytes of frames in hexadecimal and as text",
                          "Examples:\n"
                          "  wirelines dump -N 5-9 trace.pcap           the bytes of frames 5 to 9\n"
                          "  wirelines dump --charset ebcdic trace.pcap   with their text as EBCDIC",
                          [options](Output& out) { return dump(*options, out); });
  add_input_options(app, options->input);
  add_at_option(app, options->input);
  add_jobs_option(app, options->input);
  add_charset_option(app, options->input);
  add_utc_option(app);
  options->color.add(app);
}

}  // namespace wirelines::host
