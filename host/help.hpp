// What --help prints: few lines, so that with its examples it fits a screen. Completions read it, see completion/.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace wirelines::host {

// Each option, argument and subcommand is one line: two blanks, its names ("-r,--read"), its value ("FILE", or the
// choice "auto|always|never"), at least two blanks, and what it is for. An option of no group is left to
// the manual.
class HelpFormatter : public CLI::FormatterBase {
 public:
  std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
};

}  // namespace wirelines::host
