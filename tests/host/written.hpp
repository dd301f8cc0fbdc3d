// What is put out, as text.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "host/output.hpp"

namespace wirelines::host {

// What `write` puts out, through a pipe that is large enough for it.
template <typename Write>
std::string written(Write write) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  Output out(ends[1]);
  write(out);
  out.flush();
  EXPECT_EQ(out.error(), 0);
  close(ends[1]);
  std::string result;
  char part[4096];
  for (ssize_t n = 0; (n = read(ends[0], part, sizeof part)) > 0;) result.append(part, static_cast<std::size_t>(n));
  close(ends[0]);
  return result;
}

}  // namespace wirelines::host
