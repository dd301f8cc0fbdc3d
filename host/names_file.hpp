// The user's own file of names, edited line by line: comments, order and the user's way of writing stay.
#pragma once

#include <vek4003.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace wirelines::host {

// What a file calls each kind, in the order of NickNameKind.
inline constexpr std::string_view kKindNames[] = {"station", "ip", "ip6", "port", "sap", "type"};
inline constexpr int kKindCount = 6;

std::optional<NickNameKind> kind_named(std::string_view name);

// A key in the one form of its kind, as the name module makes it.
using NameKey = std::pair<NickNameKind, std::string>;

// Empty when `text` is no key of the kind; `reason`, where it is given, then says why. The module's names are lost.
std::optional<NameKey> make_key(NickNameKind kind, const std::string& text, const char** reason = nullptr);

class NamesFile {
 public:
  // Reads `path`, or makes its folder when there is no file; other programs that edit files of that folder this way
  // wait until this object goes. Throws Failure.
  explicit NamesFile(const std::string& path);
  ~NamesFile();
  NamesFile(const NamesFile&) = delete;
  NamesFile& operator=(const NamesFile&) = delete;

  enum class Change { kNone, kAdded, kReplaced };

  // The name must be one that the module takes. What is replaced is the name alone, in the line that counted.
  Change set(const NameKey& key, std::string_view name);

  // Drops every line of the key. False when there was none.
  bool remove(const NameKey& key);

  // Puts a new file in the place of the old one, if anything changed. Throws Failure.
  void save() const;

 private:
  void read_lines();

  std::string path_;  // with symbolic links followed
  int folder_ = -1;   // open, and locked
  bool exists_ = false;
  std::string text_;
  std::vector<std::string> lines_;  // with their ends
  std::string line_end_ = "\n";
  std::map<NameKey, std::vector<std::size_t>> lines_of_;
};

}  // namespace wirelines::host
