#include "names_file.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "failure.hpp"
#include "replace_file.hpp"

namespace wirelines::host {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kLongestLine = 8192;  // the module passes over longer ones

Failure cannot_read(const std::string& path, int error) {
  return {error == EACCES ? EX_NOPERM : EX_NOINPUT, path + ": cannot be read: " + error_text(error)};
}

// The file at the end of symbolic links, which need not exist. A circle is met when it is opened.
std::string end_of_links(fs::path path) {
  std::error_code error;
  for (int links = 0; links < 40; links++) {
    const auto target = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / target;
  }
  return path.string();
}

fs::path folder_of(const std::string& path) {
  const auto folder = fs::path(path).parent_path();
  return folder.empty() ? "." : folder;
}

// The parts of a line: what stands before the name, the name, and what follows (a comment, the line's end).
struct Parts {
  std::string_view kind, key, before, name, behind;
};

Parts parts_of(std::string_view line) {
  const auto past = [line](std::size_t at) { return std::min(at, line.size()); };
  const auto word_end = [&](std::size_t from) { return past(line.find_first_of(" \t\r\n", from)); };
  std::size_t begin = line.starts_with("\xEF\xBB\xBF") ? 3 : 0;
  begin = past(line.find_first_not_of(kBlanks, begin));
  const auto kind_end = word_end(begin);
  const auto key_begin = past(line.find_first_not_of(kBlanks, kind_end));
  const auto key_end = word_end(key_begin);
  const auto name_begin = past(line.find_first_not_of(kBlanks, key_end));
  auto name_end = name_begin;
  while (name_end < line.size()) {
    const bool comment = line[name_end] == '#' && kBlanks.find(line[name_end - 1]) != std::string_view::npos;
    if (comment || line[name_end] == '\n') break;
    name_end++;
  }
  while (name_end > name_begin && std::string_view(" \t\r").find(line[name_end - 1]) != std::string_view::npos) {
    name_end--;
  }
  return {line.substr(begin, kind_end - begin), line.substr(key_begin, key_end - key_begin), line.substr(0, name_begin),
          line.substr(name_begin, name_end - name_begin), line.substr(name_end)};
}

}  // namespace

std::optional<NickNameKind> kind_named(std::string_view name) {
  for (int kind = 0; kind < kKindCount; kind++) {
    if (kKindNames[kind] == name) return static_cast<NickNameKind>(kind);
  }
  return {};
}

std::optional<NameKey> make_key(NickNameKind kind, const std::string& text, const char** reason) {
  NickNameClear();
  if (const char* wrong = NickNameAdd(kind, text.c_str(), "x"); wrong != nullptr) {
    if (reason != nullptr) *reason = wrong;
    return {};
  }
  NameKey made{kind, ""};
  NickNameEach(
      [](NickNameKind, const char* key, const char*, void* result) {
        *static_cast<std::string*>(result) = key;
        return 0;
      },
      &made.second);
  NickNameClear();
  return made;
}

NamesFile::NamesFile(const std::string& path) : path_(end_of_links(path)) {
  const auto folder = folder_of(path_).string();
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw cannot_write(folder, error.value());
  // Without a lock, of two changes at the same time one would be lost. Some file systems have none: so be it.
  folder_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder_ >= 0) flock(folder_, LOCK_EX);
  try {
    read_lines();
  } catch (...) {
    if (folder_ >= 0) close(folder_);
    throw;
  }
}

NamesFile::~NamesFile() {
  if (folder_ >= 0) close(folder_);
}

void NamesFile::read_lines() {
  struct stat status {};
  if (stat(path_.c_str(), &status) != 0) {
    if (errno != ENOENT) throw cannot_read(path_, errno);
    lines_.emplace_back("# Names for wirelines, one a line: kind key name\n");
    return;
  }
  exists_ = true;
  if (!S_ISREG(status.st_mode)) throw Failure(EX_NOINPUT, path_ + ": is not a regular file");
  const int fd = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) throw cannot_read(path_, errno);
  std::string chunk(65536, '\0');
  ssize_t got = 0;
  while ((got = read(fd, chunk.data(), chunk.size())) > 0) text_.append(chunk, 0, static_cast<std::size_t>(got));
  const int error = errno;
  close(fd);
  if (got < 0) throw cannot_read(path_, error);

  for (std::size_t at = 0; at < text_.size();) {
    const auto end = std::min(text_.find('\n', at), text_.size() - 1) + 1;
    lines_.push_back(text_.substr(at, end - at));
    at = end;
  }
  if (!lines_.empty() && lines_[0].ends_with("\r\n")) line_end_ = "\r\n";
  for (std::size_t i = 0; i < lines_.size(); i++) {
    const auto parts = parts_of(lines_[i]);
    const auto kind = kind_named(parts.kind);
    // Of a line that the module passes over, a new name would be passed over too.
    if (!kind || lines_[i].size() > kLongestLine || lines_[i].find('\0') != std::string::npos) continue;
    if (const auto key = make_key(*kind, std::string(parts.key))) lines_of_[*key].push_back(i);
  }
}

NamesFile::Change NamesFile::set(const NameKey& key, std::string_view name) {
  auto& lines = lines_of_[key];
  if (lines.empty()) {
    if (!lines_.empty() && !lines_.back().empty() && lines_.back().back() != '\n') lines_.back() += line_end_;
    lines.push_back(lines_.size());
    lines_.push_back(std::string(kKindNames[key.first]) + " " + key.second + " " + std::string(name) + line_end_);
    return Change::kAdded;
  }
  auto& line = lines_[lines.back()];
  const auto parts = parts_of(line);
  if (parts.name == name) return Change::kNone;
  const bool blank = kBlanks.find(parts.before.back()) != std::string_view::npos;
  const bool comment = parts.behind.starts_with('#');  // right behind the key: the line had no name
  line = std::string(parts.before) + (blank ? "" : " ") + std::string(name) + (comment ? " " : "") +
         std::string(parts.behind);
  return Change::kReplaced;
}

bool NamesFile::remove(const NameKey& key) {
  const auto found = lines_of_.find(key);
  if (found == lines_of_.end()) return false;
  for (const auto line : found->second) lines_[line].clear();
  lines_of_.erase(found);
  return true;
}

void NamesFile::save() const {
  std::string text;
  for (const auto& line : lines_) text += line;
  if (exists_ && text == text_) return;
  if (exists_ && access(path_.c_str(), W_OK) != 0) throw cannot_write(path_, errno);
  replace_file(path_, text);
}

}  // namespace wirelines::host
