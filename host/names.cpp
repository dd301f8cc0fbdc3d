#include "names.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "failure.hpp"
#include "names_file.hpp"
#include "text.hpp"

namespace wirelines::host {

namespace {

void tell(const char* file, std::int32_t line, const char* reason, void* /*context*/) {
  const auto place = line > 0 ? std::string(file) + ":" + std::to_string(line) : std::string(file);
  complain(place + ": " + reason);
}

bool exists(const std::string& file) {
  return access(file.c_str(), F_OK) == 0;
}

// Files of names are UTF-8 like any other text of the user's; the library puts names into lines as they are.
void make_line_bytes() {
  std::vector<std::pair<NameKey, std::string>> changed;
  NickNameEach(
      [](NickNameKind kind, const char* key, const char* name, void* to) {
        auto bytes = line_bytes(name);
        if (bytes != name) static_cast<decltype(changed)*>(to)->emplace_back(NameKey{kind, key}, std::move(bytes));
        return 1;
      },
      &changed);
  for (const auto& [key, name] : changed) NickNameAdd(key.first, key.second.c_str(), name.c_str());
}

}  // namespace

// The XDG rules: a folder that is not absolute does not count.
std::string user_names() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config != nullptr && std::filesystem::path(config).is_absolute()) return std::string(config) + "/wirelines/names";
  const char* home = std::getenv("HOME");
  return home != nullptr && home[0] == '/' ? std::string(home) + "/.config/wirelines/names" : "";
}

std::vector<NameFile> name_files(const NameOptions& options, const std::vector<std::string>& traces) {
  std::vector<NameFile> files;
  const auto add = [&files](const std::string& path, NickNameFormat format) {
    if (!path.empty() && exists(path)) files.push_back({path, format});
  };
  if (options.system) {
    add("/etc/services", NICKNAME_SERVICES);
    add("/etc/ethers", NICKNAME_ETHERS);
    add("/etc/hosts", NICKNAME_HOSTS);
  }
  add(user_names(), NICKNAME_OWN);
  for (const auto& trace : traces) {
    if (trace != "-") add(trace + ".names", NICKNAME_OWN);
  }
  for (const auto& file : options.files) files.push_back({file, NICKNAME_OWN});
  return files;
}

void need_names(const std::string& file) {
  if (access(file.c_str(), R_OK) == 0) return;
  throw Failure(errno == EACCES ? EX_NOPERM : EX_NOINPUT, file + ": cannot be read: " + error_text(errno));
}

void load_name_file(const NameFile& file) {
  NickNameLoad(file.path.c_str(), file.format, tell, nullptr);
}

void load_names(const NameOptions& options, const std::vector<std::string>& traces) {
  for (const auto& file : options.files) need_names(file);
  if (options.none) return;
  NickNameClear();
  for (const auto& file : name_files(options, traces)) load_name_file(file);
  make_line_bytes();
}

}  // namespace wirelines::host
