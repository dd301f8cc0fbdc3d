// wirelines view, as wirelines runs it.
#include "host/command_line.hpp"

int main(int argc, char** argv) {
  using namespace wirelines::host;
  constexpr Command kView[] = {{"view", add_view}};
  return run_command_line(argc, argv, kView);
}
