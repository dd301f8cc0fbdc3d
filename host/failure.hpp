// What goes wrong, and how the user hears of it.
#pragma once

#include <sysexits.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace wirelines::host {

// Ends the work on a file, or the program: the message for the user, and the exit code (sysexits.h).
class Failure : public std::runtime_error {
 public:
  Failure(int exit_code, const std::string& message) : std::runtime_error(message), exit_code_(exit_code) {}
  [[nodiscard]] int exit_code() const { return exit_code_; }

 private:
  int exit_code_;
};

// `text` with '?' for each control character, for a terminal to see: names of files, bytes of traces.
std::string printable(std::string_view text);

// Writes "wirelines: MESSAGE" as one line to standard error, the message made printable.
void complain(std::string_view message);

// 'TEXT', for messages.
std::string in_quotes(std::string_view text);

// The message of an errno value.
std::string error_text(int error);

}  // namespace wirelines::host
