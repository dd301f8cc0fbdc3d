// Reads files of names: cuts them into lines, and lines into entries.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "entry.hpp"

namespace wirelines::vek4003 {

namespace {

constexpr std::size_t kLongestLine = 8192;  // hosts lines may carry many aliases
constexpr std::string_view kBlanks = " \t";

std::string_view trim(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Cuts the first word off `text`; what stays begins with the next word.
std::string_view next_word(std::string_view& text) {
  const auto end = std::min(text.find_first_of(kBlanks), text.size());
  const auto word = text.substr(0, end);
  text = trim(text.substr(end));
  return word;
}

// In our own format a name may hold a '#', so that only one at the start or after a blank begins a comment.
std::string_view without_comment(std::string_view line, NickNameFormat format) {
  auto hash = line.find('#');
  if (format == NICKNAME_OWN) {
    while (hash != std::string_view::npos && hash > 0 && kBlanks.find(line[hash - 1]) == std::string_view::npos) {
      hash = line.find('#', hash + 1);
    }
  }
  return line.substr(0, hash);
}

bool equal_ignoring_case(std::string_view text, std::string_view lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                    [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

const char* parse_own(std::string_view line, Entry& entry) {
  const auto word = next_word(line);
  const auto* const kind = std::find(kKindNames.begin(), kKindNames.end(), word);
  if (kind == kKindNames.end()) return "the line does not begin with station, ip, ip6, port, sap or type";
  const auto key = next_word(line);
  return parse_entry(static_cast<NickNameKind>(kind - kKindNames.begin()), key, line, entry);
}

const char* parse_hosts(std::string_view line, Entry& entry) {
  const auto address = next_word(line);
  const auto kind = address.find(':') == std::string_view::npos ? NICKNAME_IP : NICKNAME_IP6;
  return parse_entry(kind, address, next_word(line), entry);
}

const char* parse_ethers(std::string_view line, Entry& entry) {
  const auto address = next_word(line);
  return parse_entry(NICKNAME_STATION, address, next_word(line), entry);
}

// A service of another protocol than TCP and UDP is no mistake, but its port is none of ours.
const char* parse_services(std::string_view line, std::optional<Entry>& entry) {
  const auto name = next_word(line);
  const auto port = next_word(line);
  const auto slash = port.find('/');
  if (slash == std::string_view::npos || slash + 1 == port.size()) return "the name is not followed by port/protocol";
  const auto protocol = port.substr(slash + 1);
  Entry made;
  if (const char* reason = parse_entry(NICKNAME_PORT, port.substr(0, slash), name, made)) return reason;
  if (equal_ignoring_case(protocol, "tcp") || equal_ignoring_case(protocol, "udp")) entry = made;
  return nullptr;
}

// What a line holds: an entry, nothing, or a reason why it cannot be used.
const char* parse_line(NickNameFormat format, std::string_view line, std::optional<Entry>& entry) {
  if (line.find('\0') != std::string_view::npos) return "the line holds a NUL byte";
  if (line.ends_with('\r')) line.remove_suffix(1);
  line = trim(without_comment(line, format));
  if (line.empty()) return nullptr;
  if (format == NICKNAME_SERVICES) return parse_services(line, entry);
  Entry made;
  const auto parse = format == NICKNAME_HOSTS ? parse_hosts : format == NICKNAME_ETHERS ? parse_ethers : parse_own;
  if (const char* reason = parse(line, made)) return reason;
  entry = made;
  return nullptr;
}

// A file open for reading that hands out its lines without ever holding more than one of them.
class LineReader {
 public:
  explicit LineReader(const char* file)
      : fd_(open(file, O_RDONLY | O_CLOEXEC | O_NOCTTY)), error_(fd_ < 0 ? errno : 0) {}
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;
  ~LineReader() {
    if (fd_ >= 0) close(fd_);
  }

  // False at the end, and when error() says why there is no more. A line that is too long is cut and says so.
  bool next() {
    line_.clear();
    too_long_ = false;
    if (error_ != 0) return false;
    for (bool any = false;; any = true) {
      if (left_.empty() && !fill()) {
        if (!any || error_ != 0) return false;
        break;
      }
      const auto end = left_.find('\n');
      const auto piece = left_.substr(0, end);
      too_long_ = too_long_ || piece.size() > kLongestLine - line_.size();
      line_.append(piece.substr(0, kLongestLine - line_.size()));
      left_.remove_prefix(end == std::string_view::npos ? left_.size() : end + 1);
      if (end != std::string_view::npos) break;
    }
    if (number_ < std::numeric_limits<std::int32_t>::max()) ++number_;
    return true;
  }

  [[nodiscard]] std::string_view line() const { return line_; }
  [[nodiscard]] bool too_long() const { return too_long_; }
  [[nodiscard]] std::int32_t number() const { return number_; }
  [[nodiscard]] int error() const { return error_; }

 private:
  bool fill() {
    ssize_t got = 0;
    do {
      got = read(fd_, chunk_.data(), chunk_.size());
    } while (got < 0 && errno == EINTR);
    if (got < 0) error_ = errno;
    if (got <= 0) return false;
    left_ = {chunk_.data(), static_cast<std::size_t>(got)};
    return true;
  }

  std::vector<char> chunk_ = std::vector<char>(65536);  // first, so that nothing is open yet when it cannot be had
  int fd_;
  int error_;
  std::string_view left_;  // what of the chunk has not been handed out
  std::string line_;
  bool too_long_ = false;
  std::int32_t number_ = 0;
};

}  // namespace

bool read_file(const char* file, NickNameFormat format, NickNameProblem problem, void* context, Tables& tables) {
  const auto tell = [&](std::int32_t line, const char* reason) {
    if (problem != nullptr) problem(file, line, reason, context);
  };
  if (format != NICKNAME_OWN && format != NICKNAME_HOSTS && format != NICKNAME_ETHERS && format != NICKNAME_SERVICES) {
    tell(0, "there is no such format of name files");
    return false;
  }
  LineReader reader(file);
  while (reader.next()) {
    auto line = reader.line();
    if (reader.number() == 1 && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);  // byte order mark
    std::optional<Entry> entry;
    const char* reason = reader.too_long() ? "the line is longer than 8192 bytes" : parse_line(format, line, entry);
    if (reason != nullptr) tell(reader.number(), reason);
    if (!entry) continue;
    auto& table = tables.at(entry->kind);
    // The system takes the first line that fits from its own files; of ours the last one counts.
    if (format == NICKNAME_OWN) {
      table.insert_or_assign(entry->key, entry->name);
    } else {
      table.try_emplace(entry->key, entry->name);
    }
  }
  if (reader.error() != 0) {
    const auto reason = std::string("cannot be read: ") + std::strerror(reader.error());
    tell(0, reason.c_str());
    return false;
  }
  return true;
}

}  // namespace wirelines::vek4003
