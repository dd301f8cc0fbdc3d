#include "stream_file.hpp"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cstdio>

namespace wirelines::host {

namespace {

ssize_t read_stream(void* stream, char* to, std::size_t size) {
  return static_cast<ssize_t>(static_cast<Stream*>(stream)->read(to, size));
}

// Answers where the stream is, which is all that ftello asks for.
int seek_stream(void* stream, off64_t* offset, int whence) {
  if (*offset != 0 || whence != SEEK_CUR) return -1;
  *offset = static_cast<off64_t>(static_cast<Stream*>(stream)->offset());
  return 0;
}

}  // namespace

// A plain file is left to the C library, which copies less.
FILE* stream_file(Stream& stream, std::span<char> read_ahead) {
  const int fd = stream.whole_file();
  if (fd < 0) return fopencookie(&stream, "rb", {read_stream, nullptr, seek_stream, nullptr});
  const int twin = fcntl(fd, F_DUPFD_CLOEXEC, 0);
  FILE* const file = twin >= 0 ? fdopen(twin, "rb") : nullptr;
  if (file == nullptr) {
    if (twin >= 0) close(twin);
    return nullptr;
  }
  (void)std::setvbuf(file, read_ahead.data(), _IOFBF, read_ahead.size());
  std::rewind(file);  // having been told its position, it keeps account and does not ask for it at each frame
  return file;
}

}  // namespace wirelines::host
