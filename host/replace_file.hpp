// Files written so that at each moment the old one or the new one is there, whole.
#pragma once

#include <string>
#include <string_view>

#include "failure.hpp"

namespace wirelines::host {

Failure cannot_write(const std::string& path, int error);

// Makes `bytes` the contents of the file; of one that is there, owner and mode are kept. Throws Failure.
void replace_file(const std::string& path, std::string_view bytes);

}  // namespace wirelines::host
