// What a tally says, for people and for programs.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "output.hpp"
#include "tally.hpp"

namespace wirelines::host {

// A protocol with what it carries.
struct Protocol {
  std::string name;
  Count count;
  std::vector<Protocol> parts;
};

// The tree of protocols, at each level most bytes first; frames that the table could not take stand at the top.
Protocol protocol_tree(const Tally& tally);

// The entries of a table, most bytes first; at most `top`, or all for 0. Where bytes are the same, keys decide, so that
// a trace always gives the same report.
template <typename Table, typename CountOf>
auto top_entries(const Table& table, std::size_t top, CountOf count_of) {
  auto entries = table.entries();
  const auto size = top == 0 ? entries.size() : std::min(top, entries.size());
  std::partial_sort(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(size), entries.end(),
                    [&count_of](const auto& a, const auto& b) {
                      const auto a_bytes = count_of(a.value).bytes;
                      const auto b_bytes = count_of(b.value).bytes;
                      return a_bytes != b_bytes ? a_bytes > b_bytes : a.key < b.key;
                    });
  entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(size), entries.end());
  return entries;
}

struct TextReport {
  std::size_t top = 10;  // rows a table; 0 for all
  bool color = false;
  bool utf8 = false;  // whether the terminal draws block characters
};

void write_text(Output& out, const Tally& tally, const TextReport& report);

// One JSON object; its keys stand in the manual.
void write_json(Output& out, const Tally& tally, std::size_t top);

}  // namespace wirelines::host
