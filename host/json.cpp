// wirelines json: every frame as one object a line, for programs. docs/json.schema.json describes it.
#include <map>
#include <memory>

#include "commands.hpp"
#include "decode.hpp"
#include "failure.hpp"
#include "json_text.hpp"
#include "names.hpp"
#include "summary.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

constexpr std::uint32_t kHexLineCode = 63;
constexpr std::uint32_t kNoByte = 0xFFFFFFFF;

enum class LinesWanted { kAll, kFields, kNone };

struct JsonOptions {
  InputOptions input;
  NameOptions names;
  LinesWanted lines = LinesWanted::kAll;
};

// "key":value, a comma before it.
void pair(Output& out, std::string_view key_in_quotes, std::uint64_t value) {
  out.append(',');
  out.append(key_in_quotes);
  out.append(':');
  out.number(value);
}

void head(Output& out, const Frame& frame, std::string_view file_in_quotes) {
  out.append("{\"v\":1");
  if (!file_in_quotes.empty()) {
    out.append(",\"file\":");
    out.append(file_in_quotes);
  }
  pair(out, "\"frame\"", frame.number);
  if (const auto seconds = whole_seconds(frame); seconds <= kLastSecond) {
    out.append(R"(,"time":")");
    put_utc(out, seconds, 'T');
    out.append('.');
    const bool finer = frame.nanoseconds % 1000 != 0;
    out.number(finer ? fraction(frame) : fraction(frame) / 1000, finer ? 9 : 6);
    out.append("Z\"");
  }
  pair(out, "\"offset\"", frame.offset);
  pair(out, "\"length\"", frame.length);
  pair(out, "\"originalLength\"", frame.original_length);
}

void sum(Output& out, const Summary& summary) {
  out.append(",\"sum\":");
  char before = '{';
  for (const auto& field : summary_fields()) {
    if (!summary.has(field.part)) continue;
    out.append(before);
    before = ',';
    put_member(out, field, summary);
  }
  out.append(before == '{' ? "{}" : "}");
}

// Lines that follow one another with the same protocol, level and style are one object; most are.
class LineGroups {
 public:
  explicit LineGroups(Output& out) : out_(out) {}

  void begin() {
    out_.append(",\"lines\":[");
    first_ = true;
  }

  void line(const DisplayLine& line) {
    if (line.protocolCode == WIRELINES_BLANK) {
      close();
      next_group();
      out_.append("{}");
      return;
    }
    if (!open_ || !same(line, last_)) {
      close();
      next_group();
      open(line);
    } else {
      out_.append(',');
    }
    last_ = line;
    row(line);
  }

  void end() {
    close();
    out_.append(']');
  }

 private:
  static bool same(const DisplayLine& a, const DisplayLine& b) {
    return a.protocolCode == b.protocolCode && a.level == b.level && a.styleIndex == b.styleIndex &&
           a.styleGroup == b.styleGroup;
  }

  void next_group() {
    if (!first_) out_.append(',');
    first_ = false;
  }

  void open(const DisplayLine& line) {
    out_.append("{\"p\":");
    out_.number(line.protocolCode);
    if (line.level != 1) pair(out_, "\"l\"", line.level);
    out_.append(",\"y\":[");
    out_.number(line.styleIndex);
    out_.append(',');
    out_.number(line.styleGroup);
    out_.append("],\"t\":[");
    open_ = true;
  }

  void row(const DisplayLine& line) {
    out_.append('[');
    text_.append(out_, line.text);
    const auto start = line.startOffset;
    const auto end = line.endOffset;
    const bool no_bytes = start == end && (start == 0 || start == kNoByte);
    if (!no_bytes) {
      out_.append(',');
      out_.number(start);
      if (end != start) {
        out_.append(',');
        out_.number(end);
      }
    }
    out_.append(']');
  }

  void close() {
    if (open_) out_.append("]}");
    open_ = false;
  }

  Output& out_;
  JsonText text_;
  DisplayLine last_{};
  bool first_ = true;
  bool open_ = false;
};

int json(const JsonOptions& options, Output& out) {
  load_names(options.names, options.input.traces());
  Lines lines(options.input.lift_tags);
  Lift lift(options.input.lift_tags);
  LineGroups groups(out);
  const bool several = options.input.traces().size() > 1;
  std::map<const std::string*, std::string> files;  // their names as they are written

  const int exit_code = walk(options.input, out, [&](const Frame& frame) {
    auto& file = files[frame.trace];
    if (several && file.empty()) file = json_string(*frame.trace);
    head(out, frame, file);
    lift.take(frame);
    if (options.lines == LinesWanted::kNone) {
      sum(out, Summary(frame, lift));
    } else {
      pair(out, "\"top\"", lines.decode(frame, options.input.charset));
      sum(out, Summary(frame, lift));
      groups.begin();
      lines.each([&](const DisplayLine& line) {
        if (options.lines == LinesWanted::kAll || line.protocolCode != kHexLineCode) groups.line(line);
      });
      groups.end();
    }
    out.append("}\n");
  });
  return finish(out, exit_code);
}

LinesWanted lines_wanted(const std::string& text) {
  if (text == "all") return LinesWanted::kAll;
  if (text == "fields") return LinesWanted::kFields;
  if (text == "none") return LinesWanted::kNone;
  throw CLI::ValidationError("--lines", in_quotes(text) + " is none of all, fields, none");
}

}  // namespace

void add_json(CLI::App& program, Run& run) {
  auto* app = program.add_subcommand("json", "Write frames as JSON Lines, for programs");
  auto options = std::make_shared<JsonOptions>();
  add_input_options(*app, options->input);
  add_charset_option(*app, options->input);
  add_lift_option(*app, options->input);
  add_name_options(*app, options->names);
  add_utc_option(*app);
  app->add_option_function<std::string>(
         "--lines", [options](const std::string& text) { options->lines = lines_wanted(text); },
         "all, fields (no hex lines of data blocks) or none (no decoding)")
      ->type_name("WHICH");
  app->footer(
      "Frame times are UTC; --utc is for the text of lines. docs/json.schema.json describes the form.\n"
      "Examples:\n"
      "  wirelines json trace.pcap | jq -r '.lines[].t[]?[0]'\n"
      "  wirelines json --lines none trace.pcap | jq 'select(.sum.dstPort == 53) | .frame'");
  app->callback([&run, options] { run = [options](Output& out) { return json(*options, out); }; });
}

}  // namespace wirelines::host
