#include "replace_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace wirelines::host {

namespace {

bool write_all(int fd, std::string_view text) {
  while (!text.empty()) {
    const auto written = write(fd, text.data(), text.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

Failure cannot_write(const std::string& path, int error) {
  const bool permission = error == EACCES || error == EPERM;
  return {permission ? EX_NOPERM : EX_IOERR, path + ": cannot be written: " + error_text(error)};
}

// To a file beside it, which then takes its place.
void replace_file(const std::string& path, std::string_view bytes) {
  const auto fresh = path + ".new-" + std::to_string(getpid());
  unlink(fresh.c_str());  // left over from a process of this number that was killed
  struct stat old {};
  const bool exists = stat(path.c_str(), &old) == 0;
  const int fd = open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, exists ? 0600 : 0666);
  if (fd < 0) throw cannot_write(path, errno);
  bool done = true;
  if (exists) {
    [[maybe_unused]] const int owner_kept = fchown(fd, old.st_uid, old.st_gid);
    done = fchmod(fd, old.st_mode & 0777) == 0;
  }
  done = done && write_all(fd, bytes) && fsync(fd) == 0;
  int error = errno;
  if (close(fd) != 0 && done) {
    error = errno;
    done = false;
  }
  if (done && rename(fresh.c_str(), path.c_str()) == 0) return;
  if (done) error = errno;
  unlink(fresh.c_str());
  throw cannot_write(path, error);
}

}  // namespace wirelines::host
