#include "names.hpp"

#include <unistd.h>
#include <vek4003.h>

#include <cerrno>
#include <cstdlib>

#include "failure.hpp"

namespace wirelines::host {

namespace {

void tell(const char* file, std::int32_t line, const char* reason, void* /*context*/) {
  const auto place = line > 0 ? std::string(file) + ":" + std::to_string(line) : std::string(file);
  complain(place + ": " + reason);
}

// A file that need not be there.
void load(const std::string& file, NickNameFormat format) {
  if (!file.empty() && access(file.c_str(), F_OK) == 0) NickNameLoad(file.c_str(), format, tell, nullptr);
}

// The XDG rules: a folder that is not absolute does not count.
std::string user_names() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config != nullptr && config[0] == '/') return std::string(config) + "/wirelines/names";
  const char* home = std::getenv("HOME");
  return home != nullptr && home[0] == '/' ? std::string(home) + "/.config/wirelines/names" : "";
}

}  // namespace

void load_names(const NameOptions& options, const std::vector<std::string>& traces) {
  for (const auto& file : options.files) {
    if (access(file.c_str(), R_OK) == 0) continue;
    throw Failure(errno == EACCES ? EX_NOPERM : EX_NOINPUT, file + ": cannot be read: " + error_text(errno));
  }
  if (options.none) return;

  NickNameClear();
  if (options.system) {
    load("/etc/services", NICKNAME_SERVICES);
    load("/etc/ethers", NICKNAME_ETHERS);
    load("/etc/hosts", NICKNAME_HOSTS);
  }
  load(user_names(), NICKNAME_OWN);
  for (const auto& trace : traces) {
    if (trace != "-") load(trace + ".names", NICKNAME_OWN);
  }
  for (const auto& file : options.files) NickNameLoad(file.c_str(), NICKNAME_OWN, tell, nullptr);
}

}  // namespace wirelines::host
