// The page: the files that the front end was built into, and which are part of the program.
#pragma once

#include <span>
#include <string_view>

namespace wirelines::host {

struct Asset {
  std::string_view name;  // "index.html"
  std::string_view bytes;
};

extern const std::span<const Asset> kAssets;

}  // namespace wirelines::host
