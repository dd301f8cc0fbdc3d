// The user's names for stations, addresses and ports: which files they come from, and which file wins.
#pragma once

#include <string>

#include "options.hpp"

namespace wirelines::host {

class Names {
 public:
  // Throws Failure when a file of --names cannot be read.
  explicit Names(NameOptions options);

  // Loads the names for a trace, unless they are those that are loaded. The files, from the weakest: the system's
  // (when asked for), the user's configuration folder, TRACE.names, --names. Lines that cannot be used are told to the
  // user, once.
  void use(const std::string& trace);

 private:
  NameOptions options_;
  std::string sidecar_;  // the TRACE.names that is loaded; empty for none
  bool loaded_ = false;
};

}  // namespace wirelines::host
