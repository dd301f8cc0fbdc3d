// Replaces a file so that at each moment either the old or the new one is there, whole.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>

#include "entry.hpp"

namespace wirelines::vek4003 {

namespace {

namespace fs = std::filesystem;

const char* failed(const char* step, int error) {
  thread_local std::array<char, 160> reason;
  (void)std::snprintf(reason.data(), reason.size(), "%s: %s", step, std::strerror(error));
  return reason.data();
}

// The new file, under a name of its own until it takes its place. Goes away unless it did.
class NewFile {
 public:
  explicit NewFile(const fs::path& target)
      : directory_(target.has_parent_path() ? target.parent_path().string() : ".") {}
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (fd_ >= 0) close(fd_);
    if (!path_.empty()) unlink(path_.c_str());
  }

  // Each step returns false, with errno set, when it failed.
  bool create(mode_t mode) {
    static std::atomic<unsigned> serial = 0;
    for (int tries = 0; tries < 100; ++tries) {  // a name may be left over from a process that was killed
      auto path = directory_ + "/.wirelines-" + std::to_string(getpid()) + "-" + std::to_string(serial++) + ".tmp";
      fd_ = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
      if (fd_ >= 0) {
        path_ = std::move(path);
        return true;
      }
      if (errno != EEXIST) return false;
    }
    return false;
  }

  // The owner is kept where the system lets us, the permissions always.
  [[nodiscard]] bool take_permissions(const struct stat& old) const {
    [[maybe_unused]] const int owner_kept = fchown(fd_, old.st_uid, old.st_gid);
    return fchmod(fd_, old.st_mode & 0777) == 0;
  }

  [[nodiscard]] bool write_all(std::string_view text) const {
    while (!text.empty()) {
      const auto written = write(fd_, text.data(), text.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return false;
      text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  bool finish() { return fsync(fd_) == 0 && close(std::exchange(fd_, -1)) == 0; }

  bool replace(const std::string& target) {
    if (rename(path_.c_str(), target.c_str()) != 0) return false;
    path_.clear();
    // The file is there; that its directory reaches the disk too is an extra that not every file system has.
    const int directory = open(directory_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory >= 0) {
      fsync(directory);
      close(directory);
    }
    return true;
  }

 private:
  std::string directory_;
  std::string path_;
  int fd_ = -1;
};

// Follows symbolic links by hand, since the file at their end need not exist. Returns false when they run in a circle.
bool follow_links(fs::path& path) {
  std::error_code error;
  for (int links = 0; links < 40; ++links) {
    const auto target = fs::read_symlink(path, error);
    if (error) return true;
    path = path.parent_path() / target;
  }
  return false;
}

}  // namespace

const char* replace_file(const char* file, std::string_view text) {
  fs::path end = file;
  if (!follow_links(end)) return failed("cannot be followed", ELOOP);
  const auto target = end.string();

  struct stat old {};
  const bool exists = stat(target.c_str(), &old) == 0;
  if (!exists && errno != ENOENT) return failed("cannot be examined", errno);
  if (exists && S_ISDIR(old.st_mode)) return failed("cannot be replaced", EISDIR);
  if (exists && !S_ISREG(old.st_mode)) return "cannot be replaced: it is not a regular file";
  if (exists && access(target.c_str(), W_OK) != 0) return failed("cannot be written", errno);

  NewFile fresh(target);
  if (!fresh.create(exists ? 0600 : 0666)) return failed("cannot create a file beside it", errno);
  if (exists && !fresh.take_permissions(old)) return failed("cannot keep its permissions", errno);
  if (!fresh.write_all(text) || !fresh.finish()) return failed("cannot write the file beside it", errno);
  if (!fresh.replace(target)) return failed("cannot be replaced", errno);
  return nullptr;
}

}  // namespace wirelines::vek4003
