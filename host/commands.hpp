// The subcommands. Each stands in a file of its own and adds itself to the command line; a new one needs its file and
// its name in the two places below.
#pragma once

#include <functional>
#include <string_view>

#include "output.hpp"

namespace CLI {
class App;
}

namespace wirelines::host {

// What the chosen subcommand does when the command line is understood; returns the exit code.
using Run = std::function<int(Output&)>;

using AddCommand = void(CLI::App& program, Run& run);

AddCommand add_show, add_list, add_dump, add_stats, add_names, add_json, add_classify, add_capture, add_index, add_view;

struct Command {
  std::string_view name;
  AddCommand* add;
};

inline constexpr Command kCommands[] = {
    {"show", add_show},         {"list", add_list},       {"dump", add_dump},
    {"stats", add_stats},       {"names", add_names},     {"json", add_json},
    {"classify", add_classify}, {"capture", add_capture}, {"index", add_index},
#ifndef _WIN32
    {"view", add_view},
#endif
};

}  // namespace wirelines::host
