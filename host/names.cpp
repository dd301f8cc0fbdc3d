#include "names.hpp"

#include <unistd.h>
#include <vek4003.h>

#include <cerrno>
#include <cstdlib>
#include <utility>

#include "failure.hpp"

namespace wirelines::host {

namespace {

void tell(const char* file, std::int32_t line, const char* reason, void* /*context*/) {
  const auto place = line > 0 ? std::string(file) + ":" + std::to_string(line) : std::string(file);
  complain(place + ": " + reason);
}

bool exists(const std::string& file) {
  return access(file.c_str(), F_OK) == 0;
}

// A file that need not be there.
void load(const std::string& file, NickNameFormat format, NickNameProblem problem) {
  if (!file.empty() && exists(file)) NickNameLoad(file.c_str(), format, problem, nullptr);
}

// The XDG rules: a folder that is not absolute does not count.
std::string user_names() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config != nullptr && config[0] == '/') return std::string(config) + "/wirelines/names";
  const char* home = std::getenv("HOME");
  return home != nullptr && home[0] == '/' ? std::string(home) + "/.config/wirelines/names" : "";
}

}  // namespace

// At once, not when the first frame is shown: what was named must be there.
Names::Names(NameOptions options) : options_(std::move(options)) {
  for (const auto& file : options_.files) {
    if (access(file.c_str(), R_OK) == 0) continue;
    throw Failure(errno == EACCES ? EX_NOPERM : EX_NOINPUT, file + ": cannot be read: " + error_text(errno));
  }
}

void Names::use(const std::string& trace) {
  if (options_.none) return;
  auto sidecar = trace + ".names";
  if (trace == "-" || !exists(sidecar)) sidecar.clear();
  if (loaded_ && sidecar == sidecar_) return;

  const NickNameProblem problem = loaded_ ? nullptr : tell;  // what is loaded again has been told
  NickNameClear();
  if (options_.system) {
    load("/etc/services", NICKNAME_SERVICES, problem);
    load("/etc/ethers", NICKNAME_ETHERS, problem);
    load("/etc/hosts", NICKNAME_HOSTS, problem);
  }
  load(user_names(), NICKNAME_OWN, problem);
  load(sidecar, NICKNAME_OWN, tell);
  for (const auto& file : options_.files) NickNameLoad(file.c_str(), NICKNAME_OWN, problem, nullptr);
  sidecar_ = sidecar;
  loaded_ = true;
}

}  // namespace wirelines::host
