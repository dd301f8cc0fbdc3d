#include "failure.hpp"

#include <unistd.h>

#include <system_error>

namespace wirelines::host {

void complain(std::string_view message) {
  std::string line = "wirelines: ";
  line.append(message);
  for (std::size_t i = 0; i < line.size(); i++) {
    const auto byte = static_cast<unsigned char>(line[i]);
    const auto next = static_cast<unsigned char>(i + 1 < line.size() ? line[i + 1] : 0);
    if (byte < 0x20 || byte == 0x7F) line[i] = '?';
    if (byte == 0xC2 && next >= 0x80 && next < 0xA0) line.replace(i, 2, "?");  // a C1 control in UTF-8
  }
  line.push_back('\n');
  // Nobody is left to be told when standard error itself cannot be written.
  [[maybe_unused]] const auto written = write(STDERR_FILENO, line.data(), line.size());
}

std::string in_quotes(std::string_view text) {
  std::string result(1, '\'');
  result.append(text);
  result.push_back('\'');
  return result;
}

std::string error_text(int error) {
  return std::generic_category().message(error);
}

}  // namespace wirelines::host
