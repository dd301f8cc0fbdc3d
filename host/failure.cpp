#include "failure.hpp"

#include <unistd.h>

#include <system_error>

namespace wirelines::host {

void complain(std::string_view message) {
  std::string line = "wirelines: ";
  unsigned char before = 0;
  for (const char c : message) {
    const auto byte = static_cast<unsigned char>(c);
    const bool c1 = before == 0xC2 && byte >= 0x80 && byte < 0xA0;  // a C1 control in UTF-8
    line.push_back(byte < 0x20 || byte == 0x7F || c1 ? '?' : c);
    before = byte;
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
