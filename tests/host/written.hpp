// What is put out, as text.
#pragma once

#include <string>

#include "host/output.hpp"

namespace wirelines::host {

template <typename Write>
std::string written(Write write) {
  Output out;
  write(out);
  return std::string(out.text());
}

}  // namespace wirelines::host
