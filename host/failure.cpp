#include "failure.hpp"

#include <unistd.h>

#include <system_error>

#include "text.hpp"

namespace wirelines::host {

std::string printable(std::string_view text) {
  std::string result;
  unsigned char before = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool c1 = before == 0xC2 && byte >= 0x80 && byte < 0xA0;  // a C1 control in UTF-8
    result.push_back(byte < 0x20 || byte == 0x7F || c1 ? '?' : c);
    before = byte;
  }
  return result;
}

// In code page 932 a text has as many bytes as columns.
std::string pointed_at(std::string_view text, std::size_t position) {
  return "  " + printable(text) + "\n  " + std::string(line_bytes(text.substr(0, position)).size(), ' ') + "^\n";
}

void complain(std::string_view message) {
  complain_of(Failure(0, std::string(message)));
}

void complain_of(const Failure& failure) {
  const auto text = "wirelines: " + printable(failure.what()) + "\n" + failure.below();
  // Nobody is left to be told when standard error itself cannot be written.
  [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), text.size());
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
