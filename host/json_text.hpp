// Strings as JSON has them.
#pragma once

#include <string>
#include <string_view>

#include "output.hpp"
#include "text.hpp"

namespace wirelines::host {

// Writes code page 932 bytes as a JSON string in UTF-8, quotes included. Control characters keep their meaning, as
// \u0007; a byte that is no character becomes U+FFFD.
class JsonText {
 public:
  void append(Output& out, std::string_view bytes);

 private:
  Text text_;
};

// UTF-8, a file's name for one, as a JSON string; what is no UTF-8 becomes U+FFFD.
std::string json_string(const std::string& utf8);

}  // namespace wirelines::host
