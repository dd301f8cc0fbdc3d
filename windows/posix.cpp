// What of the declarations in include/ takes more than a line.
#include <fcntl.h>
#include <iconv.h>
#include <poll.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <cstring>

namespace wirelines {

int isatty(int fd) {
  DWORD mode = 0;
  return GetConsoleMode(reinterpret_cast<HANDLE>(_get_osfhandle(fd)), &mode) != 0 ? 1 : 0;
}

}  // namespace wirelines

// Of files and devices something can be read at once, be it their end.
int poll(pollfd* wait, unsigned /*count*/, int /*milliseconds*/) {
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(wait->fd));
  DWORD ready = 0;
  const bool empty = wait->events == POLLIN && GetFileType(handle) == FILE_TYPE_PIPE &&
                     PeekNamedPipe(handle, nullptr, 0, nullptr, &ready, nullptr) != 0 && ready == 0;
  wait->revents = empty ? 0 : wait->events;
  return empty ? 0 : 1;
}

struct wirelines_iconv {
  unsigned to, from;  // code pages
};

namespace {

unsigned code_page(const char* name) {
  return std::strcmp(name, "CP932") == 0 ? 932 : CP_UTF8;
}

// How many bytes the character takes that begins with `first`, by that byte alone.
std::size_t size_of_character(unsigned page, unsigned char first) {
  if (page == 932) return (first >= 0x81 && first <= 0x9F) || (first >= 0xE0 && first <= 0xFC) ? 2 : 1;
  return first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// One character; returns the bytes written, or 0 when there is no such character on one of the two sides.
std::size_t convert(const wirelines_iconv& pages, const char* from, std::size_t size, char (&to)[4]) {
  wchar_t units[2];
  const int count = MultiByteToWideChar(pages.from, MB_ERR_INVALID_CHARS, from, static_cast<int>(size), units, 2);
  if (count == 0) return 0;
  BOOL lacking = FALSE;
  const bool utf8 = pages.to == CP_UTF8;
  const int written = WideCharToMultiByte(pages.to, utf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS, units, count,
                                          to, sizeof to, nullptr, utf8 ? nullptr : &lacking);
  return lacking ? 0 : static_cast<std::size_t>(written);
}

}  // namespace

iconv_t iconv_open(const char* to, const char* from) {
  return new wirelines_iconv{code_page(to), code_page(from)};
}

int iconv_close(iconv_t converter) {
  delete converter;
  return 0;
}

size_t iconv(iconv_t converter, char** in, size_t* in_left, char** out, size_t* out_left) {
  if (in == nullptr) return 0;  // there is no state to reset
  while (*in_left > 0) {
    char bytes[4];
    const auto size = size_of_character(converter->from, static_cast<unsigned char>(**in));
    const auto written = size <= *in_left ? convert(*converter, *in, size, bytes) : 0;
    if (written == 0 || written > *out_left) {
      errno = written == 0 ? EILSEQ : E2BIG;
      return static_cast<size_t>(-1);
    }
    std::memcpy(*out, bytes, written);
    *in += size;
    *in_left -= size;
    *out += written;
    *out_left -= written;
  }
  return 0;
}
