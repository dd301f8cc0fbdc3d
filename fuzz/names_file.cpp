// Any bytes as a file of names in each format: what was taken must be found by the look-ups, and saving and loading it
// again must give the same names. The files stand in /dev/shm, in memory.
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "vek4003.h"

namespace {

void must(bool holds, const char* what) {
  if (holds) return;
  (void)std::fprintf(stderr, "names_file: %s\n", what);
  std::abort();
}

struct Files {
  Files() {
    std::array<char, 32> folder = {"/dev/shm/names_file-XXXXXX"};
    must(mkdtemp(folder.data()) != nullptr, "no folder in /dev/shm");
    path = folder.data();
    given = path + "/given";
    saved = path + "/saved";
  }
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  ~Files() {
    unlink(given.c_str());
    unlink(saved.c_str());
    rmdir(path.c_str());
  }
  std::string path, given, saved;
};

std::int32_t look_up(NickNameKind kind, const std::string& key, char* name) {
  switch (kind) {
    case NICKNAME_STATION: return StationToNickName(key.c_str(), name);
    case NICKNAME_IP: return IpStrToNickName(key.c_str(), name);
    case NICKNAME_IP6: return Ip6StrToNickName(key.c_str(), name);
    case NICKNAME_PORT: return PortStrToNickName(key.c_str(), name);
    case NICKNAME_SAP: return SapToName(key.substr(0, 2).c_str(), key.substr(2).c_str(), name);
    case NICKNAME_TYPE: return ProtocolTypeToName(key.c_str(), name);
  }
  return 0;
}

std::int32_t check(NickNameKind kind, const char* key, const char* name, void* context) {
  std::array<char, 36> found{};
  must(look_up(kind, key, found.data()) == 1, "a name that is there was not found");
  must(std::string(found.data()) == name, "another name was found");
  must(std::string(name).size() <= (kind == NICKNAME_STATION ? 31 : 35), "a name is too long");
  static_cast<std::string*>(context)
      ->append(std::to_string(kind))
      .append(" ")
      .append(key)
      .append(" ")
      .append(name)
      .append("\n");
  return 1;
}

std::string all_names() {
  std::string text;
  must(NickNameEach(check, &text) == 1, "memory is exhausted");
  return text;
}

// A problem has a line, since the file itself can be read.
void check_problem(const char*, std::int32_t line, const char* reason, void*) {
  must(line > 0 && *reason != '\0', "a problem without its line or reason");
}

void no_problem(const char*, std::int32_t, const char* reason, void*) {
  must(false, reason);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Files files;
  std::FILE* file = std::fopen(files.given.c_str(), "wb");
  must(file != nullptr && std::fwrite(data, 1, size, file) == size && std::fclose(file) == 0,
       "the file is not written");

  for (const auto format : {NICKNAME_OWN, NICKNAME_HOSTS, NICKNAME_ETHERS, NICKNAME_SERVICES}) {
    NickNameClear();
    const auto count = NickNameLoad(files.given.c_str(), format, check_problem, nullptr);
    must(count >= 0, "a file that is there was not read");
    const auto names = all_names();
    must(NickNameSave(files.saved.c_str()) == nullptr, "the names were not saved");
    NickNameClear();
    must(NickNameLoad(files.saved.c_str(), NICKNAME_OWN, no_problem, nullptr) == count, "another number came back");
    must(all_names() == names, "other names came back");
  }

  // The whole input as a key: whatever it is, a look-up answers, and an accepted key is found and removed as given.
  const std::string key(reinterpret_cast<const char*>(data), size);
  for (const auto kind : {NICKNAME_STATION, NICKNAME_IP, NICKNAME_IP6, NICKNAME_PORT, NICKNAME_SAP, NICKNAME_TYPE}) {
    const auto* const text = key.c_str();
    NickNameClear();
    if (NickNameAdd(kind, text, "name") != nullptr) continue;
    must(!all_names().empty() && NickNameRemove(kind, text) == 1 && all_names().empty(), "a key was not made one");
  }
  return 0;
}
