// wirelines names: what has a name, where the name comes from, and changes to the user's own file.
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "command_line.hpp"
#include "failure.hpp"
#include "names.hpp"
#include "names_file.hpp"
#include "text.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

struct NamesOptions {
  NameOptions sources;
  std::vector<std::string> traces;
  std::string own_file;
  std::string kind, key, name, format;
  std::string import_file;
  std::vector<std::string> files;  // to check
};

struct Named {
  NameKey key;
  std::string name, file;
};

// All names that the module has, in its order.
std::vector<Named> loaded_names(const std::string& file) {
  std::vector<Named> names;
  const auto add = [](NickNameKind kind, const char* key, const char* name, void* result) {
    static_cast<std::vector<Named>*>(result)->push_back({{kind, key}, name, ""});
    return 1;
  };
  if (NickNameEach(add, &names) == 0) throw std::bad_alloc();
  for (auto& named : names) named.file = file;
  return names;
}

// Loads a file of names into the module, instead of what it has. `bad_line` is told of lines that cannot be used as
// "FILE:LINE: reason". Throws Failure when the file cannot be read.
void load(const NameFile& file, const std::function<void(const std::string&)>& bad_line) {
  struct Context {
    const std::function<void(const std::string&)>& bad_line;
    std::string failure;
  } context{bad_line, ""};
  need_names(file.path);
  NickNameClear();
  const auto problem = [](const char* path, std::int32_t line, const char* reason, void* to) {
    auto& told = *static_cast<Context*>(to);
    if (line > 0) {
      told.bad_line(std::string(path) + ":" + std::to_string(line) + ": " + reason);
    } else {
      told.failure = std::string(path) + ": " + reason;
    }
  };
  if (NickNameLoad(file.path.c_str(), file.format, problem, &context) < 0) throw Failure(EX_NOINPUT, context.failure);
}

// The names of every file that counts, the strongest file first.
std::vector<std::vector<Named>> names_of_files(const NamesOptions& options) {
  for (const auto& file : options.sources.files) need_names(file);  // before anything else is said
  std::vector<std::vector<Named>> all;
  for (const auto& file : name_files(options.sources, options.traces)) {
    load(file, complain);
    all.insert(all.begin(), loaded_names(file.path));
  }
  return all;
}

// Rows of the format that files of names have, so that the list can be one: "kind key name # file".
class Rows {
 public:
  explicit Rows(Output& out) : out_(out) {}

  void measure(const Named& named) {
    key_width_ = std::max(key_width_, named.key.second.size());
    name_width_ = std::max(name_width_, line_bytes(named.name).size());
  }

  void row(const Named& named, std::string_view remark = "") {
    column(kKindNames[named.key.first], 7);
    column(named.key.second, key_width_);
    const auto name = line_bytes(named.name);  // in which a byte is as wide as a column
    text_.append(out_, name);
    out_.blanks(name_width_ - name.size());
    out_.append("  # ");
    out_.append(printable(named.file));
    out_.append(remark);
    out_.append('\n');
  }

 private:
  void column(std::string_view text, std::size_t width) {
    out_.append(text);
    out_.blanks(width - text.size() + 1);
  }

  Output& out_;
  Text text_;
  std::size_t key_width_ = 0;
  std::size_t name_width_ = 0;
};

int list(const NamesOptions& options, Output& out) {
  std::map<NameKey, Named> in_force;
  for (const auto& names : names_of_files(options)) {
    for (const auto& named : names) in_force.try_emplace(named.key, named);
  }
  // The module knows the order of keys.
  NickNameClear();
  Rows rows(out);
  for (const auto& [key, named] : in_force) {
    NickNameAdd(key.first, key.second.c_str(), named.name.c_str());
    rows.measure(named);
  }
  for (const auto& named : loaded_names("")) rows.row(in_force.at(named.key));
  return finish(out, 0);
}

int which(const NamesOptions& options, Output& out) {
  std::vector<NameKey> keys;  // digits may be a port, a SAP and an EtherType at once
  for (int kind = 0; kind < kKindCount; kind++) {
    if (auto key = make_key(static_cast<NickNameKind>(kind), options.key)) keys.push_back(std::move(*key));
  }
  if (keys.empty()) throw Failure(EX_USAGE, in_quotes(options.key) + " is a key of no kind");
  const auto files = names_of_files(options);
  std::vector<std::vector<Named>> found(keys.size());  // by key, the strongest first
  Rows rows(out);
  for (std::size_t i = 0; i < keys.size(); i++) {
    for (const auto& names : files) {
      for (const auto& named : names) {
        if (named.key != keys[i]) continue;
        found[i].push_back(named);
        rows.measure(named);
      }
    }
  }
  bool any = false;
  for (const auto& same_key : found) {
    for (const auto& named : same_key) rows.row(named, &named == same_key.data() ? "" : " (hidden)");
    any = any || !same_key.empty();
  }
  if (!any) throw Failure(EX_NOINPUT, "no file has a name for " + in_quotes(options.key));
  return finish(out, 0);
}

std::string own_file(const NamesOptions& options) {
  auto file = options.own_file.empty() ? user_names() : options.own_file;
  if (file.empty()) throw Failure(EX_USAGE, "there is no home folder for a file of names; --file names another one");
  return file;
}

NameKey key_of(const NamesOptions& options) {
  const auto kind = kind_named(options.kind);
  if (!kind) throw Failure(EX_USAGE, in_quotes(options.kind) + " is none of station, ip, ip6, port, sap, type");
  const char* reason = nullptr;
  auto key = make_key(*kind, options.key, &reason);
  if (!key) throw Failure(EX_USAGE, in_quotes(options.key) + ": " + reason);
  return *key;
}

int add(const NamesOptions& options) {
  const auto key = key_of(options);
  if (const char* reason = NickNameAdd(key.first, key.second.c_str(), options.name.c_str()); reason != nullptr) {
    throw Failure(EX_USAGE, in_quotes(options.name) + ": " + reason);
  }
  NamesFile file(own_file(options));
  file.set(key, options.name);
  file.save();
  return 0;
}

int remove(const NamesOptions& options) {
  const auto key = key_of(options);
  const auto path = own_file(options);
  need_names(path);
  NamesFile file(path);
  if (!file.remove(key)) {
    throw Failure(EX_NOINPUT, path + ": has no name for " + options.kind + " " + in_quotes(options.key));
  }
  file.save();
  return 0;
}

int import(const NamesOptions& options, Output& out) {
  static constexpr std::array<std::pair<std::string_view, NickNameFormat>, 3> kFormats = {{
      {"hosts", NICKNAME_HOSTS},
      {"ethers", NICKNAME_ETHERS},
      {"services", NICKNAME_SERVICES},
  }};
  const auto* const format =
      std::find_if(kFormats.begin(), kFormats.end(), [&](const auto& known) { return known.first == options.format; });
  if (format == kFormats.end()) {
    throw Failure(EX_USAGE, in_quotes(options.format) + " is none of hosts, ethers, services");
  }
  int exit_code = 0;
  const auto from = options.import_file == "-" ? "/dev/stdin" : options.import_file;
  load({from, format->second}, [&exit_code](const std::string& message) {
    complain(message);
    exit_code = EX_DATAERR;
  });
  const auto names = loaded_names(from);

  const auto path = own_file(options);
  NamesFile file(path);
  std::uint64_t added = 0;
  std::uint64_t replaced = 0;
  for (const auto& named : names) {
    const auto change = file.set(named.key, named.name);
    added += change == NamesFile::Change::kAdded ? 1 : 0;
    replaced += change == NamesFile::Change::kReplaced ? 1 : 0;
  }
  if (added + replaced > 0) file.save();
  out.append(printable(path));
  out.append(": ");
  out.number(added);
  out.append(" name(s) added, ");
  out.number(replaced);
  out.append(" replaced\n");
  return finish(out, exit_code);
}

int check(const NamesOptions& options, Output& out) {
  int exit_code = 0;
  const auto files = options.files.empty() ? std::vector<std::string>{own_file(options)} : options.files;
  for (const auto& file : files) {
    load({file == "-" ? "/dev/stdin" : file, NICKNAME_OWN}, [&](const std::string& message) {
      out.append(printable(message));
      out.append('\n');
      exit_code = EX_DATAERR;
    });
  }
  return finish(out, exit_code);
}

}  // namespace

void add_names(CLI::App& program, Run& run) {
  auto& names = add_command_group(program, "names", "List and change the names of stations, addresses, ports",
                                  "The user's own file is ~/.config/wirelines/names, or in XDG_CONFIG_HOME. Exit\n"
                                  "codes: 0, 64 usage, 65 bad lines, 66 no such file or name, 74 not written, 77\n"
                                  "no permission.\n"
                                  "Examples:\n"
                                  "  wirelines names add station 00:00:5E:00:53:01 router\n"
                                  "  wirelines names import hosts /etc/hosts\n"
                                  "  wirelines names which 192.0.2.1 --system-names");
  auto options = std::make_shared<NamesOptions>();

  const auto command = [&](const char* name, const char* what,
                           int (*action)(const NamesOptions&, Output&)) -> CLI::App& {
    return add_command(names, run, name, what, "", [options, action](Output& out) { return action(*options, out); });
  };
  const auto sources = [&](CLI::App& app) {
    add_texts(app, "--trace", options->traces, "FILE", "Also the names beside a trace: FILE.names");
    add_name_file_options(app, options->sources);
  };
  const auto kind_and_key = [&](CLI::App& app) {
    add_argument(app, "KIND", options->kind, "station|ip|ip6|port|sap|type", "What it is the name of");
    add_argument(app, "KEY", options->key, "", "An address or number of that kind");
  };
  const auto own = [&](CLI::App& app) {
    add_text(app, "--file", options->own_file, "FILE", "The file to change, instead of the user's own");
  };

  sources(command("list", "All names in force, each with its file", list));

  auto& key = command("which", "The files that name a key: first the one that counts", which);
  add_argument(key, "KEY", options->key, "", "An address or number of any kind");
  sources(key);

  auto& added = command("add", "Name a key, or name it anew",
                        [](const NamesOptions& given, Output& /*out*/) { return add(given); });
  kind_and_key(added);
  add_argument(added, "NAME", options->name, "", "Its name; in quotes when it holds blanks");
  own(added);

  auto& removed = command("remove", "Forget the name of a key",
                          [](const NamesOptions& given, Output& /*out*/) { return remove(given); });
  kind_and_key(removed);
  own(removed);

  auto& imported = command("import", "Take over names from a file of the system's kinds", import);
  add_argument(imported, "FORMAT", options->format, "hosts|ethers|services", "What the file is");
  add_argument(imported, "FILE", options->import_file, "", "The file; - is standard input");
  own(imported);

  add_files(command("check", "Report every line that cannot be used", check), options->files,
            "Files of names, - for standard input; or the user's own", false);
}

}  // namespace wirelines::host
