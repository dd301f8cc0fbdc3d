#include "viewer.hpp"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>

#include "command_line.hpp"
#include "failure.hpp"

namespace wirelines::host {

bool asks_for_viewer(int argc, char** argv) {
  int word = 1;
  while (word < argc && *argv[word] == '-') word++;
  return word < argc && argv[word] == std::string_view("view");
}

int run_viewer([[maybe_unused]] char** argv) {
#ifdef WIRELINES_VIEWER
  std::error_code error;  // then there is no viewer either
  const auto here = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  const auto viewer = (here / WIRELINES_VIEWER).lexically_normal();
  // Rights that our file lends stay here: who makes a link to it chooses what lies beside the link.
  if (setresgid(getgid(), getgid(), getgid()) == 0 && setresuid(getuid(), getuid(), getuid()) == 0) {
    execv(viewer.c_str(), argv);
  }
  complain(viewer.string() + ", which serves the page, cannot be run: " + error_text(errno));
#else
  complain("this program was built without the viewer, whose page takes npm to build: see docs/viewer.md");
#endif
  return EX_UNAVAILABLE;
}

// For the list of subcommands.
void add_view(CLI::App& program, Run& run) {
  add_command(program, run, "view", kViewerDescription, "", {});
}

}  // namespace wirelines::host
