// Tables of codes and their names.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/bytes.hpp"

namespace wirelines {

struct NameRow {
  uint32_t code;
  std::string_view name;  // a literal, so that data() is zero-terminated
};

// Rows are searched in order and the first match wins; any other code gives `unknown`.
template <std::size_t N>
struct NameTable {
  NameRow rows[N];
  std::string_view unknown;

  constexpr std::string_view operator()(uint32_t code) const {
    for (const NameRow& row : rows) {
      if (row.code == code) return row.name;
    }
    return unknown;
  }

  [[nodiscard]] constexpr bool distinct() const {
    for (std::size_t i = 0; i < N; ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        if (rows[i].code == rows[j].code) return false;
      }
    }
    return true;
  }
};

template <std::size_t N>
constexpr NameTable<N> names(const NameRow (&rows)[N], std::string_view unknown = "") {
  NameTable<N> table{};
  for (std::size_t i = 0; i < N; ++i) table.rows[i] = rows[i];
  table.unknown = unknown;
  return table;
}

}  // namespace wirelines
