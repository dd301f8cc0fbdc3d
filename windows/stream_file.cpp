// A FILE of the C library reads from a file and from nothing else: data that are compressed, or come from a pipe,
// become one first, which goes away with the FILE.
#include "host/stream_file.hpp"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <new>

#include "host/failure.hpp"

namespace wirelines::host {

namespace {

FILE* temporary_file() {
  std::array<char, MAX_PATH + 1> folder{};
  std::array<char, MAX_PATH + 1> name{};
  if (GetTempPathA(static_cast<DWORD>(folder.size()), folder.data()) == 0 ||
      GetTempFileNameA(folder.data(), "wl", 0, name.data()) == 0) {
    throw Failure(EX_IOERR, "there is no folder for temporary files");
  }
  FILE* const file = std::fopen(name.data(), "w+bTD");
  if (file == nullptr) throw Failure(EX_IOERR, std::string(name.data()) + ": cannot be written: " + error_text(errno));
  return file;
}

}  // namespace

FILE* stream_file(Stream& stream, std::span<char> /*read_ahead*/) {
  if (const int fd = stream.whole_file(); fd >= 0) {
    const int twin = _dup(fd);
    return twin >= 0 && _lseeki64(twin, 0, SEEK_SET) == 0 ? _fdopen(twin, "rb") : nullptr;
  }
  FILE* const file = temporary_file();
  std::array<char, 65536> part;
  while (const auto size = stream.read(part.data(), part.size())) {
    if (std::fwrite(part.data(), 1, size, file) == size) continue;
    const int error = errno;
    (void)std::fclose(file);
    throw Failure(EX_IOERR, "the folder for temporary files: " + error_text(error));
  }
  std::rewind(file);
  return file;
}

}  // namespace wirelines::host
