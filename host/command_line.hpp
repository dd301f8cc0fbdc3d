// The command line, and what goes wrong on it.
#pragma once

#include <span>

#include "commands.hpp"

namespace wirelines::host {

// Runs the subcommand that is chosen among these; returns the exit code.
int run_command_line(int argc, char** argv, std::span<const Command> commands);

}  // namespace wirelines::host
