// The names in force, with where each comes from; changed by the user while frames are looked at.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/names.hpp"
#include "host/names_file.hpp"

namespace wirelines::host {

class NameBoard {
 public:
  NameBoard(const NameOptions& options, const std::vector<std::string>& traces);

  // {"names":[...],"file":...}
  [[nodiscard]] std::string json() const;

  // Names `key`, or takes its name when `name` is empty. Throws Failure when one of them cannot be used. Nobody may be
  // asking for names meanwhile.
  void set(const std::string& kind, const std::string& key, const std::string& name);

  // Writes what was set since to the user's file of names. Throws Failure. Likewise.
  void save();

 private:
  struct Named {
    std::string name;  // UTF-8
    std::string source;
  };

  void load(const NameFile& file);
  void hand_over() const;

  std::map<NameKey, Named> names_;
  std::set<NameKey> changed_;
  std::string file_;
};

}  // namespace wirelines::host
