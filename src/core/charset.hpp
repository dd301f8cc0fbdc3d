// The six character sets in which data blocks show bytes as text.
#pragma once

#include <string_view>

#include "core/bytes.hpp"

namespace wirelines {

// The name of a character set in a heading, blanks around it; "" for any other mode.
std::string_view charset_label(uint32_t mode);

// Replaces n bytes (at most 16) by the text that shows them in code page 932; modes without a character set leave them.
void render_charset(uint8_t* bytes, uint32_t n, uint32_t mode);

}  // namespace wirelines
