// What the name module keeps: a key made one from its many text forms, and a name that is known to fit.
#ifndef VEK4003_ENTRY_HPP
#define VEK4003_ENTRY_HPP

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "vek4003.h"

namespace wirelines::vek4003 {

constexpr std::size_t kKindCount = 6;
constexpr std::array<std::string_view, kKindCount> kKindNames = {"station", "ip", "ip6", "port", "sap", "type"};

constexpr const char* kNoMemory = "memory is exhausted";

// A key of any kind as a number; what is shorter than 16 bytes stands in the low end. Its order is that of the numbers.
struct Key {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
  auto operator<=>(const Key&) const = default;  // NOLINT(modernize-use-nullptr)
};

struct KeyHash {
  std::size_t operator()(const Key& key) const {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15;  // spreads neighbouring addresses over the buckets
    const std::uint64_t mixed = ((key.high * kOdd) ^ key.low) * kOdd;
    return static_cast<std::size_t>(mixed ^ (mixed >> 32));
  }
};

struct Name {
  std::array<char, 36> text{};  // zero-terminated
  std::uint8_t size = 0;
};

struct Entry {
  NickNameKind kind = NICKNAME_STATION;
  Key key;
  Name name;
};

using Tables = std::array<std::unordered_map<Key, Name, KeyHash>, kKindCount>;

// Each returns null, or why the text cannot be used (static text), and then leaves the result as it was.
const char* parse_key(NickNameKind kind, std::string_view text, Key& key);
const char* parse_name(NickNameKind kind, std::string_view text, Name& name);
const char* parse_entry(NickNameKind kind, std::string_view key, std::string_view name, Entry& entry);

// The key in the one form that is shown and saved.
using KeyText = std::array<char, 46>;
KeyText key_text(NickNameKind kind, const Key& key);

// Reads a file of names into `tables`. Returns false, with the reason told to `problem`, when it could not be read to
// its end. Throws std::bad_alloc.
bool read_file(const char* file, NickNameFormat format, NickNameProblem problem, void* context, Tables& tables);

// Puts `text` in the place of the file. Returns null, or why it failed (the calling thread's until its next call).
const char* replace_file(const char* file, std::string_view text);

}  // namespace wirelines::vek4003

#endif
