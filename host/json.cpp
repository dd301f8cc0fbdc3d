// wirelines json: every frame as one object a line, for programs. docs/json.schema.json describes it.
#include <charconv>
#include <cstring>
#include <map>
#include <memory>

#include "command_line.hpp"
#include "decode.hpp"
#include "failure.hpp"
#include "json_text.hpp"
#include "names.hpp"
#include "plain.hpp"
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
  LinesWanted lines = LinesWanted::kFields;
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

// The display lines, one object each. Protocol, level and style of most are those of the line before: left out then.
class LineObjects {
 public:
  explicit LineObjects(Output& out) : out_(out) {}

  void begin() {
    out_.append(",\"lines\":[");
    before_ = nullptr;
    first_ = true;
  }

  // `line` must stay until the next one.
  void line(const DisplayLine& line) {
    char* to = out_.reserve(kRoom);
    if (!first_) *to++ = ',';
    first_ = false;
    to = text(put(to, "{\"t\":"), line.text);
    if (line.protocolCode != WIRELINES_BLANK) {
      to = attributes(to, line);
      before_ = &line;
    }
    *to++ = '}';
    out_.commit(to);
  }

  void end() { out_.append(']'); }

 private:
  static constexpr std::size_t kRoom = 300;  // of a plain line, and of another without its text

  template <std::size_t N>
  static char* put(char* to, const char (&text)[N]) {
    std::memcpy(to, text, N - 1);
    return to + N - 1;
  }
  template <std::size_t N>
  static char* put(char* to, const char (&key)[N], std::uint32_t value) {
    to = put(to, key);
    return std::to_chars(to, to + 10, value).ptr;
  }

  char* text(char* to, const char* text) {
    *to = '"';
    char* const end = copy_plain_line<'"', '\\'>(to + 1, text);
    if (end != nullptr) {
      *end = '"';
      return end + 1;
    }
    out_.commit(to);
    text_.append(out_, text);
    return out_.reserve(kRoom);
  }

  // A line without text always has its protocol: it is no blank line.
  char* attributes(char* to, const DisplayLine& line) {
    const bool all = before_ == nullptr;
    if (all || line.protocolCode != before_->protocolCode || *line.text == '\0') {
      to = put(to, ",\"p\":", line.protocolCode);
    }
    if (all || line.level != before_->level) to = put(to, ",\"l\":", line.level);
    const auto start = line.startOffset;
    const auto end = line.endOffset;
    if (start != end || (start != 0 && start != kNoByte)) {
      to = put(to, ",\"s\":", start);
      if (end != start) to = put(to, ",\"e\":", end);
    }
    if (all || line.styleIndex != before_->styleIndex || line.styleGroup != before_->styleGroup) {
      to = put(to, ",\"y\":[", line.styleIndex);
      to = put(to, ",", line.styleGroup);
      *to++ = ']';
    }
    return to;
  }

  Output& out_;
  JsonText text_;
  const DisplayLine* before_ = nullptr;  // the line before that was not blank
  bool first_ = true;
};

class JsonWriter : public Visitor {
 public:
  JsonWriter(Output& out, const JsonOptions& options)
      : out_(out),
        options_(options),
        several_(options.input.traces().size() > 1),
        lines_(options.input.lift_tags),
        lift_(options.input.lift_tags),
        objects_(out) {}

  void visit(const Frame& frame) override {
    auto& file = files_[frame.trace];
    if (several_ && file.empty()) file = json_string(*frame.trace);
    head(out_, frame, file);
    lift_.take(frame);
    if (options_.lines == LinesWanted::kNone) {
      sum(out_, Summary(frame, lift_));
    } else {
      const auto top_line = lines_.decode(frame, options_.input.charset);
      std::uint32_t at = 0;
      std::uint32_t top = 0;  // among the lines that are written
      lines_.each([&](const DisplayLine& line) { top += at++ < top_line && wanted(line) ? 1U : 0U; });
      pair(out_, "\"top\"", top);
      sum(out_, Summary(frame, lift_));
      objects_.begin();
      lines_.each([this](const DisplayLine& line) {
        if (wanted(line)) objects_.line(line);
      });
      objects_.end();
    }
    out_.append("}\n");
  }

 private:
  [[nodiscard]] bool wanted(const DisplayLine& line) const {
    return options_.lines == LinesWanted::kAll || line.protocolCode != kHexLineCode;
  }

  Output& out_;
  const JsonOptions& options_;
  bool several_;
  Lines lines_;
  Lift lift_;
  LineObjects objects_;
  std::map<const std::string*, std::string> files_;  // their names as they are written
};

int json(const JsonOptions& options, Output& out) {
  load_names(options.names, options.input.traces());
  const auto writer = [&options](Output& to) { return std::make_unique<JsonWriter>(to, options); };
  return finish(out, walk(options.input, out, {writer, {}}));
}

}  // namespace

void add_json(CLI::App& program, Run& run) {
  auto options = std::make_shared<JsonOptions>();
  auto& app = add_command(program, run, "json", "Write frames as JSON Lines, for programs",
                          "Times of frames are UTC; --utc is for the text of lines.\n"
                          "Examples:\n"
                          "  wirelines json trace.pcap | jq -r '.lines[].t'\n"
                          "  wirelines json --lines none trace.pcap | jq 'select(.sum.dstPort == 53)'",
                          [options](Output& out) { return json(*options, out); });
  add_input_options(app, options->input);
  add_at_option(app, options->input);
  add_jobs_option(app, options->input);
  add_charset_option(app, options->input);
  add_display_filter_option(app, options->input);
  add_lift_option(app, options->input);
  add_name_options(app, options->names);
  add_utc_option(app);
  add_one_of(app, "--lines", options->lines,
             {{"fields", LinesWanted::kFields}, {"all", LinesWanted::kAll}, {"none", LinesWanted::kNone}},
             "Without hex lines (the default), all, no decoding");
}

}  // namespace wirelines::host
