// The name module: the names in memory, and the interface to them. No exception leaves it.
#include "vek4003.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <string>
#include <tuple>
#include <vector>

#include "entry.hpp"

namespace {

using namespace wirelines::vek4003;

struct Store {
  std::shared_mutex mutex;
  Tables tables;
};

// Never destroyed, since other threads may still decode while the process ends; in memory of its own, so that a look-up
// cannot be the one that runs out of it.
Store& store() {
  alignas(Store) static std::array<std::byte, sizeof(Store)> memory;
  static Store& names = *new (memory.data()) Store;
  return names;
}

// How many names each kind has. Without any, a look-up costs this one load; with some, the lock orders the rest.
constinit std::array<std::atomic<std::size_t>, kKindCount> g_counts{};

bool none(NickNameKind kind) {
  return g_counts[kind].load(std::memory_order_relaxed) == 0;
}

void note_counts(const Tables& tables) {
  for (std::size_t kind = 0; kind < kKindCount; ++kind) {
    g_counts[kind].store(tables[kind].size(), std::memory_order_relaxed);
  }
}

std::int32_t look_up(NickNameKind kind, std::string_view text, char* name_out) {
  Key key;
  if (parse_key(kind, text, key) != nullptr) return 0;
  Store& names = store();
  const std::shared_lock lock(names.mutex);
  const auto found = names.tables[kind].find(key);
  if (found == names.tables[kind].end()) return 0;
  std::memcpy(name_out, found->second.text.data(), found->second.size + std::size_t{1});
  return 1;
}

std::int32_t look_up(NickNameKind kind, const char* text, char* name_out) {
  if (none(kind) || text == nullptr || name_out == nullptr) return 0;
  return look_up(kind, std::string_view(text), name_out);
}

// Takes over all of `fresh`, or throws and takes nothing.
void merge(Tables& fresh) {
  Store& names = store();
  const std::unique_lock lock(names.mutex);
  for (std::size_t kind = 0; kind < kKindCount; ++kind) {
    names.tables[kind].reserve(names.tables[kind].size() + fresh[kind].size());
  }
  for (std::size_t kind = 0; kind < kKindCount; ++kind) {
    while (!fresh[kind].empty()) {
      const auto placed = names.tables[kind].insert(fresh[kind].extract(fresh[kind].begin()));
      if (!placed.inserted) placed.position->second = placed.node.mapped();
    }
  }
  note_counts(names.tables);
}

std::vector<Entry> sorted_entries() {
  std::vector<Entry> entries;
  {
    Store& names = store();
    const std::shared_lock lock(names.mutex);
    for (std::size_t kind = 0; kind < kKindCount; ++kind) {
      for (const auto& [key, name] : names.tables[kind])
        entries.push_back({static_cast<NickNameKind>(kind), key, name});
    }
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& a, const Entry& b) { return std::tie(a.kind, a.key) < std::tie(b.kind, b.key); });
  return entries;
}

}  // namespace

int32_t StationToNickName(const char* address, char* nameOut) {
  return look_up(NICKNAME_STATION, address, nameOut);
}

int32_t IpStrToNickName(const char* address, char* nameOut) {
  return look_up(NICKNAME_IP, address, nameOut);
}

int32_t Ip6StrToNickName(const char* address, char* nameOut) {
  return look_up(NICKNAME_IP6, address, nameOut);
}

int32_t PortStrToNickName(const char* port, char* nameOut) {
  return look_up(NICKNAME_PORT, port, nameOut);
}

int32_t SapToName(const char* dsap, const char* ssap, char* nameOut) {
  if (none(NICKNAME_SAP) || dsap == nullptr || ssap == nullptr || nameOut == nullptr) return 0;
  if (std::strlen(dsap) != 2 || std::strlen(ssap) != 2) return 0;
  const std::array<char, 4> pair = {dsap[0], dsap[1], ssap[0], ssap[1]};
  return look_up(NICKNAME_SAP, std::string_view(pair.data(), pair.size()), nameOut);
}

int32_t ProtocolTypeToName(const char* type, char* nameOut) {
  return look_up(NICKNAME_TYPE, type, nameOut);
}

int32_t NickNameLoad(const char* file, NickNameFormat format, NickNameProblem problem, void* context) {
  if (file == nullptr) {
    if (problem != nullptr) problem("", 0, "there is no file name", context);
    return -1;
  }
  try {
    Tables fresh;
    if (!read_file(file, format, problem, context, fresh)) return -1;
    std::size_t count = 0;
    for (const auto& table : fresh) count += table.size();
    merge(fresh);
    return static_cast<std::int32_t>(count);
  } catch (const std::bad_alloc&) {
    if (problem != nullptr) problem(file, 0, kNoMemory, context);
    return -1;
  }
}

const char* NickNameAdd(NickNameKind kind, const char* key, const char* name) {
  if (key == nullptr) return "there is no key";
  if (name == nullptr) return "there is no name";
  Entry entry;
  if (const char* reason = parse_entry(kind, key, name, entry)) return reason;
  try {
    Store& names = store();
    const std::unique_lock lock(names.mutex);
    names.tables[kind].insert_or_assign(entry.key, entry.name);
    note_counts(names.tables);
    return nullptr;
  } catch (const std::bad_alloc&) {
    return kNoMemory;
  }
}

int32_t NickNameRemove(NickNameKind kind, const char* key) {
  Key parsed;
  if (key == nullptr || parse_key(kind, key, parsed) != nullptr || none(kind)) return 0;
  Store& names = store();
  const std::unique_lock lock(names.mutex);
  const auto erased = names.tables[kind].erase(parsed);
  note_counts(names.tables);
  return erased != 0 ? 1 : 0;
}

void NickNameClear(void) {
  Tables old;  // freed when the lock is open again
  Store& names = store();
  const std::unique_lock lock(names.mutex);
  names.tables.swap(old);
  note_counts(names.tables);
}

int32_t NickNameEach(NickNameVisit visit, void* context) {
  if (visit == nullptr) return 1;
  std::vector<Entry> entries;
  try {
    entries = sorted_entries();
  } catch (const std::bad_alloc&) {
    return 0;
  }
  for (const auto& entry : entries) {
    if (visit(entry.kind, key_text(entry.kind, entry.key).data(), entry.name.text.data(), context) == 0) break;
  }
  return 1;
}

const char* NickNameSave(const char* file) {
  if (file == nullptr || *file == '\0') return "there is no file name";
  try {
    std::string text = "# Names for wirelines, one a line: kind key name\n";
    for (const auto& entry : sorted_entries()) {
      text.append(kKindNames[entry.kind]).append(" ").append(key_text(entry.kind, entry.key).data());
      text.append(" ").append(entry.name.text.data()).append("\n");
    }
    return replace_file(file, text);
  } catch (const std::bad_alloc&) {
    return kNoMemory;
  }
}
