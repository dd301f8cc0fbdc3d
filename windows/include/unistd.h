// Files, and the little that we ask of processes.
#pragma once

#include <errno.h>
#include <io.h>
#include_next <unistd.h>

extern "C" __declspec(dllimport) int __stdcall MoveFileExA(const char* from, const char* to, unsigned long flags);

namespace wirelines {  // where these two are found before the C library's

// The C library's takes every device for a terminal, NUL too.
int isatty(int fd);

// The C library's does not replace a file.
inline int rename(const char* from, const char* to) {
  constexpr unsigned long kReplaceAndWriteThrough = 9;
  if (MoveFileExA(from, to, kReplaceAndWriteThrough) != 0) return 0;
  errno = EACCES;
  return -1;
}

}  // namespace wirelines

// Sizes are size_t in POSIX.
inline ssize_t read(int fd, void* to, size_t size) {
  return read(fd, to, static_cast<unsigned>(size));
}
inline ssize_t write(int fd, const void* from, size_t size) {
  return write(fd, from, static_cast<unsigned>(size));
}

inline int fsync(int fd) {
  return _commit(fd);
}
inline unsigned geteuid() {
  return 0;  // there are no capabilities to give up
}
