#include "rights.hpp"

#include <grp.h>
#include <linux/capability.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "failure.hpp"

namespace wirelines::host {

namespace {

struct User {
  uid_t uid;
  gid_t gid;
  std::string name, home;
};

User user_of(const passwd& entry) {
  return {entry.pw_uid, entry.pw_gid, entry.pw_name, entry.pw_dir};
}

User user_named(const std::string& name) {
  const auto* const entry = getpwnam(name.c_str());
  if (entry == nullptr) throw Failure(EX_USAGE, "--user: there is no user " + in_quotes(name));
  return user_of(*entry);
}

// A user or group number that sudo tells; none for root's.
std::optional<std::uint32_t> sudo_id(const char* variable) {
  const char* const text = std::getenv(variable);
  if (text == nullptr) return {};
  const std::string_view digits = text;
  std::uint32_t id = 0;
  const auto [end, error] = std::from_chars(digits.begin(), digits.end(), id);
  return error == std::errc() && end == digits.end() && id != 0 ? std::optional(id) : std::nullopt;
}

User who_called(uid_t uid) {
  if (const auto* const entry = getpwuid(uid); entry != nullptr) return user_of(*entry);
  return {uid, sudo_id("SUDO_GID").value_or(uid), "", "/"};
}

// Whom root becomes.
User successor(const std::string& user, bool stay_root) {
  if (!user.empty()) return user_named(user);
  if (getuid() != 0) return who_called(getuid());  // the program's file is root's and has the setuid bit
  if (const auto uid = sudo_id("SUDO_UID")) return who_called(*uid);
  return stay_root ? User{0, 0, "root", "/root"} : user_named("nobody");
}

void become(const User& user) {
  const bool groups = user.name.empty() ? setgroups(1, &user.gid) == 0 : initgroups(user.name.c_str(), user.gid) == 0;
  if (!groups || setresgid(user.gid, user.gid, user.gid) != 0 || setresuid(user.uid, user.uid, user.uid) != 0) {
    throw Failure(EX_OSERR, "root's rights cannot be given up: " + error_text(errno));
  }
  // What is root's own is out of reach now; sudo hands on the caller's, if anything.
  setenv("HOME", user.home.c_str(), 1);
  if (!sudo_id("SUDO_UID")) unsetenv("XDG_CONFIG_HOME");
}

}  // namespace

void give_up_rights(const std::string& user, bool stay_root) {
  if (geteuid() == 0) {
    if (const auto next = successor(user, stay_root); next.uid != 0) become(next);
  } else if (!user.empty() && user_named(user).uid != geteuid()) {
    throw Failure(EX_NOPERM, "--user: only root can become another user");
  }
  give_up_capabilities();
}

// Without new privileges, running another program brings none back either.
void give_up_capabilities() {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  const std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || syscall(SYS_capset, &header, none.data()) != 0) {
    throw Failure(EX_OSERR, "capabilities cannot be given up: " + error_text(errno));
  }
}

}  // namespace wirelines::host
