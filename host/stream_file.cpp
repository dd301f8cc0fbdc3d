#include "stream_file.hpp"

#include <sys/types.h>

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

FILE* stream_file(Stream& stream) {
  return fopencookie(&stream, "rb", {read_stream, nullptr, seek_stream, nullptr});
}

}  // namespace wirelines::host
