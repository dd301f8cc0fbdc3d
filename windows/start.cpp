// What has to be so before main: the program reads and writes bytes, not lines of text, and the console takes UTF-8.
// That its arguments and the names of its files are UTF-8, too, is in wirelines.manifest.
#include <fcntl.h>
#include <io.h>
#include <stdlib.h>
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

struct Start {
  Start() {
    for (const int fd : {0, 1, 2}) _setmode(fd, _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
    // Consoles of Windows 10 and later know the sequences of colours.
    DWORD mode = 0;
    HANDLE console = GetStdHandle(STD_OUTPUT_HANDLE);
    if (GetConsoleMode(console, &mode) != 0) SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    _setmaxstdio(2048);
    take("TERM", "xterm");
    if (const char* folder = std::getenv("APPDATA")) take("XDG_CONFIG_HOME", folder);
  }
  Start(const Start&) = delete;
  Start& operator=(const Start&) = delete;
  ~Start() { SetConsoleOutputCP(page_); }

 private:
  // A variable that other systems set.
  static void take(const char* name, const char* value) {
    if (std::getenv(name) == nullptr) _putenv_s(name, value);
  }

  UINT page_ = GetConsoleOutputCP();
};

const Start start;

}  // namespace
