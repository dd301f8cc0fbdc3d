#include "lines.hpp"

#include <cstring>
#include <memory>

#include "clock.hpp"
#include "plain.hpp"
#include "text.hpp"

namespace wirelines::host {

namespace {

// Middle tones of the 256-colour palette: they can be read on light and on dark ground alike.
constexpr std::string_view kPlain = "\x1B[0m";
constexpr std::string_view kFrameColor = "\x1B[1m";
constexpr std::string_view kTitleColor = "\x1B[1;38;5;32m";
constexpr std::string_view kLabelColor = "\x1B[38;5;30m";
constexpr std::string_view kGoodColor = "\x1B[38;5;28m";
constexpr std::string_view kBadColor = "\x1B[1;38;5;160m";

constexpr std::string_view kGood = "(OK)";
constexpr std::string_view kBad = "(NG)";

constexpr std::uint32_t kHexLineCode = 63;
constexpr std::size_t kIndentation = 4;  // of the deepest level

using MakeLines = void (*)(Lines& lines, const Frame& frame, std::uint32_t charset);

class LinePrinter : public Visitor {
 public:
  LinePrinter(Output& out, const InputOptions& options, bool color, MakeLines make)
      : out_(out), color_(color), charset_(options.charset), make_(make), lines_(options.lift_tags) {}

  void visit(const Frame& frame) override {
    make_(lines_, frame, charset_);
    head(frame);
    lines_.each([this](const DisplayLine& line) {
      if (color_ || !plain_line(line)) careful_line(line);
    });
  }

 private:
  void head(const Frame& frame);
  void time(const Frame& frame);
  bool plain_line(const DisplayLine& line);
  void careful_line(const DisplayLine& line);
  void colored_line(const DisplayLine& line, std::string_view text);
  void colored(std::string_view color, std::string_view text);

  Output& out_;
  bool color_;
  std::uint32_t charset_;
  MakeLines make_;
  Lines lines_;
  Text text_;
  bool cut_ = false;  // whether the frame was captured in part
  Clock clock_;
};

Gap frame_gap(const InputOptions& options, bool color) {
  const bool several = options.traces().size() > 1;
  return [several, color](Output& out, const std::string* before, const std::string& trace) {
    if (before != nullptr) out.append('\n');
    if (!several || before == &trace) return;
    if (color) out.append(kFrameColor);
    out.append("Trace ");
    for (const char c : trace) out.append(static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? '?' : c);
    if (color) out.append(kPlain);
    out.append("\n\n");
  };
}

void LinePrinter::head(const Frame& frame) {
  if (color_) out_.append(kFrameColor);
  out_.append("Frame ");
  out_.number(frame.number);
  out_.append("  ");
  time(frame);
  out_.append("  ");
  out_.number(frame.length);
  out_.append(" bytes");
  cut_ = frame.length < frame.original_length;
  if (cut_) {
    out_.append(" (cut at capture from ");
    out_.number(frame.original_length);
    out_.append(" bytes)");
  }
  if (color_) out_.append(kPlain);
  out_.append('\n');
}

// Microseconds, or nanoseconds where the trace has them.
void LinePrinter::time(const Frame& frame) {
  const std::tm& local = clock_.at(frame.seconds);
  const auto put = [this](int value, int width, char behind) {
    out_.number(static_cast<std::uint64_t>(value), width);
    out_.append(behind);
  };
  put(local.tm_year + 1900, 4, '-');
  put(local.tm_mon + 1, 2, '-');
  put(local.tm_mday, 2, ' ');
  put(local.tm_hour, 2, ':');
  put(local.tm_min, 2, ':');
  put(local.tm_sec, 2, '.');
  if (frame.nanoseconds % 1000 == 0) {
    out_.number(frame.nanoseconds / 1000, 6);
  } else {
    out_.number(frame.nanoseconds, 9);
  }
}

// Nearly every line: indented, copied and ended in one piece. False, and nothing written, when it is no plain one.
inline bool LinePrinter::plain_line(const DisplayLine& line) {
  char* to = out_.reserve(kIndentation + kLineRoom + 1);
  std::memset(to, ' ', kIndentation);
  if (line.level <= 2 && line.text[0] != 0) to += std::size_t{2} * line.level;
  char* const end = copy_plain_line(to, line.text);
  if (end == nullptr) return false;
  *end = '\n';
  out_.commit(end + 1);
  return true;
}

void LinePrinter::careful_line(const DisplayLine& line) {
  const std::string_view text = line.text;
  if (!text.empty()) {
    if (line.level <= 2) out_.blanks(std::size_t{2} * line.level);
    if (color_) {
      colored_line(line, text);
    } else {
      text_.append(out_, text);
    }
  }
  out_.append('\n');
}

// A title is coloured whole; of a field the label in brackets before the value; a verdict at the end of either.
void LinePrinter::colored_line(const DisplayLine& line, std::string_view text) {
  if (line.level == 0) return colored(kTitleColor, text);
  if (line.protocolCode == kHexLineCode) return text_.append(out_, text);

  std::string_view verdict;
  if (text.ends_with(kGood) || text.ends_with(kBad)) {
    verdict = text.substr(text.size() - kGood.size());
    text.remove_suffix(verdict.size());
  }
  if (line.level == 1 && text.starts_with('[')) {
    const auto label = text.substr(0, text.find(']') + 1);
    colored(kLabelColor, label);
    text.remove_prefix(label.size());
  }
  text_.append(out_, text);
  if (verdict == kBad && cut_) {
    out_.append(verdict);  // a sum over bytes that are missing
  } else if (!verdict.empty()) {
    colored(verdict == kGood ? kGoodColor : kBadColor, verdict);
  }
}

void LinePrinter::colored(std::string_view color, std::string_view text) {
  out_.append(color);
  text_.append(out_, text);
  out_.append(kPlain);
}

}  // namespace

Handling printed_lines(const InputOptions& options, bool color, MakeLines make) {
  const auto printer = [&options, color, make](Output& out) {
    return std::make_unique<LinePrinter>(out, options, color, make);
  };
  return {printer, frame_gap(options, color)};
}

void raw_frame(Output& out, const Frame& frame, std::uint32_t top_line) {
  out.append("# frame ");
  out.number(frame.number);
  out.append(" length ");
  out.number(frame.length);
  out.append(" top ");
  out.number(top_line);
  out.append('\n');
}

void raw_line(Output& out, const DisplayLine& line) {
  const auto put = [&out](std::uint32_t value, char behind) {
    out.number(value);
    out.append(behind);
  };
  put(line.protocolCode, ' ');
  put(line.level, ' ');
  put(line.startOffset, '-');
  put(line.endOffset, ' ');
  put(line.styleIndex, ',');
  put(line.styleGroup, ' ');
  out.append('|');
  const std::string_view text = line.text;
  if (is_plain(text) && text.find('\\') == std::string_view::npos) {
    out.append(text);
  } else {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    for (const char c : text) {
      const auto byte = static_cast<unsigned char>(c);
      if (byte >= 0x20 && byte < 0x7F && c != '\\') {
        out.append(c);
      } else {
        out.append("\\x");
        out.append(kDigits[byte >> 4]);
        out.append(kDigits[byte & 0x0F]);
      }
    }
  }
  out.append("|\n");
}

}  // namespace wirelines::host
