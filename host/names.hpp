// The user's names for stations, addresses and ports: which files they come from, and which file wins.
#pragma once

#include <string>
#include <vector>

#include "options.hpp"

namespace wirelines::host {

// Loads the names for frames of these traces. The files, from the weakest: the system's (when asked for), the user's
// configuration folder, TRACE.names of each trace, --names; of several the last. Lines that cannot be used are told to
// the user. Throws Failure when a file of --names cannot be read.
void load_names(const NameOptions& options, const std::vector<std::string>& traces);

}  // namespace wirelines::host
