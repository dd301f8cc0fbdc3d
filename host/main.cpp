// wirelines: shows what the frames of a trace say.
#include "command_line.hpp"
#ifndef _WIN32
#include "viewer.hpp"
#endif

int main(int argc, char** argv) {
  using namespace wirelines::host;
#ifndef _WIN32
  if (asks_for_viewer(argc, argv)) return run_viewer(argv);
#endif
  return run_command_line(argc, argv, kCommands);
}
