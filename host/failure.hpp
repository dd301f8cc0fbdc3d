// What goes wrong, and how the user hears of it.
#pragma once

#include <sysexits.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace wirelines::host {

// Ends the work on a file, or the program: the message for the user, and the exit code (sysexits.h). `below`, printable
// lines, is shown below the message.
class Failure : public std::runtime_error {
 public:
  Failure(int exit_code, const std::string& message, std::string below = "")
      : std::runtime_error(message), exit_code_(exit_code), below_(std::move(below)) {}
  [[nodiscard]] int exit_code() const { return exit_code_; }
  [[nodiscard]] const std::string& below() const { return below_; }

 private:
  int exit_code_;
  std::string below_;
};

// `text` with '?' for each control character, for a terminal to see: names of files, bytes of traces.
std::string printable(std::string_view text);

// `text` as a line, and below it a line with a caret under the byte at `position`.
std::string pointed_at(std::string_view text, std::size_t position);

// Writes "wirelines: MESSAGE" as one line to standard error, the message made printable.
void complain(std::string_view message);

// The same of a failure's message, with what stands below it.
void complain_of(const Failure& failure);

// 'TEXT', for messages.
std::string in_quotes(std::string_view text);

// The message of an errno value.
std::string error_text(int error);

}  // namespace wirelines::host
