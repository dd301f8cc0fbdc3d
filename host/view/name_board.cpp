#include "name_board.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "host/failure.hpp"
#include "host/text.hpp"

namespace wirelines::host {

NameBoard::NameBoard(const NameOptions& options, const std::vector<std::string>& traces) : file_(user_names()) {
  for (const auto& file : options.files) need_names(file);
  if (options.none) return;
  for (const auto& file : name_files(options, traces)) load(file);
  hand_over();
}

void NameBoard::load(const NameFile& file) {
  NickNameClear();
  load_name_file(file);
  struct Context {
    NameBoard* board;
    const std::string& source;
  } context{this, file.path};
  NickNameEach(
      [](NickNameKind kind, const char* key, const char* name, void* to) {
        const auto& [board, source] = *static_cast<Context*>(to);
        board->names_[{kind, key}] = {name, source};
        return 1;
      },
      &context);
}

// To the module, which decoders ask.
void NameBoard::hand_over() const {
  NickNameClear();
  for (const auto& [key, named] : names_) {
    NickNameAdd(key.first, key.second.c_str(), line_bytes(named.name).c_str());
  }
}

std::string NameBoard::json() const {
  using Json = nlohmann::ordered_json;
  Json names = Json::array();
  for (const auto& [key, named] : names_) {
    names.push_back(
        {{"kind", kKindNames[key.first]}, {"key", key.second}, {"name", named.name}, {"source", named.source}});
  }
  const Json json = {{"names", names}, {"file", file_}, {"unsaved", changed_.size()}};
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void NameBoard::set(const std::string& kind_name, const std::string& key_text, const std::string& name) {
  const auto kind = kind_named(kind_name);
  if (!kind) throw Failure(EX_USAGE, in_quotes(kind_name) + " is no kind of names");
  const char* wrong = nullptr;
  const auto key = make_key(*kind, key_text, &wrong);
  if (key && !name.empty()) wrong = NickNameAdd(key->first, key->second.c_str(), line_bytes(name).c_str());
  if (wrong == nullptr) {
    changed_.insert(*key);
    if (name.empty()) {
      names_.erase(*key);
    } else {
      names_[*key] = {name, ""};
    }
  }
  hand_over();
  if (wrong != nullptr) throw Failure(EX_USAGE, wrong);
}

void NameBoard::save() {
  if (file_.empty()) throw Failure(EX_USAGE, "there is no folder for the names: HOME is not set");
  try {
    NamesFile file(file_);
    for (const auto& key : changed_) {
      if (const auto named = names_.find(key); named != names_.end()) {
        file.set(key, named->second.name);
      } else {
        file.remove(key);
      }
    }
    file.save();
  } catch (...) {
    hand_over();
    throw;
  }
  for (const auto& key : std::exchange(changed_, {})) {
    if (const auto named = names_.find(key); named != names_.end()) named->second.source = file_;
  }
  hand_over();
}

}  // namespace wirelines::host
