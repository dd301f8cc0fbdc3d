// The user's names for stations, addresses and ports: which files they come from, and which file wins.
#pragma once

#include <vek4003.h>

#include <string>
#include <vector>

#include "options.hpp"

namespace wirelines::host {

struct NameFile {
  std::string path;
  NickNameFormat format;
};

// The file of names in the user's configuration folder; empty when there is no such folder.
std::string user_names();

// The files of names for frames of these traces that are there, from the weakest: the system's (when asked for), the
// user's, TRACE.names of each trace, --names; of several the last.
std::vector<NameFile> name_files(const NameOptions& options, const std::vector<std::string>& traces);

// Throws Failure when a file of names cannot be read.
void need_names(const std::string& file);

// Adds the names of a file, as they stand there. Lines that cannot be used are told to the user.
void load_name_file(const NameFile& file);

// Loads the names for frames of these traces. Lines that cannot be used are told to the user. Throws Failure when a
// file of --names cannot be read.
void load_names(const NameOptions& options, const std::vector<std::string>& traces);

}  // namespace wirelines::host
