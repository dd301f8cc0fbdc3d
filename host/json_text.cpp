#include "json_text.hpp"

#include <array>
#include <nlohmann/json.hpp>

namespace wirelines::host {

namespace {

enum class As : std::uint8_t { kItself, kEscape, kHex, kCharacter };

constexpr auto kAs = [] {
  std::array<As, 256> as{};
  for (unsigned byte = 0; byte < as.size(); byte++) {
    if (byte < 0x20 || byte == 0x7F) as[byte] = As::kHex;
    if (byte >= 0x80) as[byte] = As::kCharacter;
  }
  as['"'] = as['\\'] = As::kEscape;
  return as;
}();

}  // namespace

void JsonText::append(Output& out, std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  out.append('"');
  while (!bytes.empty()) {
    std::size_t used = 0;
    while (used < bytes.size() && kAs[static_cast<unsigned char>(bytes[used])] == As::kItself) used++;
    out.append(bytes.substr(0, used));
    bytes.remove_prefix(used);
    if (bytes.empty()) break;

    used = 1;
    const auto byte = static_cast<unsigned char>(bytes[0]);
    switch (kAs[byte]) {
      case As::kEscape:
        out.append('\\');
        out.append(bytes[0]);
        break;
      case As::kHex:
        out.append("\\u00");
        out.append(kDigits[byte >> 4]);
        out.append(kDigits[byte & 0x0F]);
        break;
      default: used = text_.append_character(out, bytes); break;
    }
    bytes.remove_prefix(used);
  }
  out.append('"');
}

std::string json_string(const std::string& utf8) {
  return nlohmann::json(utf8).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace wirelines::host
