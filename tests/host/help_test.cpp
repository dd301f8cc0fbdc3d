// What --help prints fits a screen, and the completions of the shells offer what it lists.
#include <algorithm>
#include <functional>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "program.hpp"

namespace wirelines::host {
namespace {

using Words = std::set<std::string>;

Words words_of(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), {}};
}

class Help : public Program {
 protected:
  // Calls `visit` with each subcommand and its help: "", " show", " names add".
  void each(const std::function<void(const std::string&, const std::string&)>& visit, const std::string& command = "") {
#ifndef VIEWER
    if (command == " view") return;
#endif
    const auto result = run("$W" + command + " --help");
    EXPECT_EQ(result.exit_code, 0) << command;
    visit(command, result.out);
    for (const auto& subcommand : listed(result.out, "[a-z]+")) each(visit, command + " " + subcommand);
  }

  // The first words of the lines before the blank one, where they look like that; what is set apart by commas are
  // several.
  static Words listed(const std::string& help, const std::string& form) {
    Words words;
    std::istringstream lines(help);
    const std::regex row("  (" + form + ") .*");
    std::smatch found;
    for (std::string line; std::getline(lines, line) && !line.empty();) {
      if (!std::regex_match(line, found, row)) continue;
      auto names = found[1].str();
      std::replace(names.begin(), names.end(), ',', ' ');
      words.merge(words_of(names));
    }
    return words;
  }
};

TEST_F(Help, fits_a_screen_and_ends_with_examples) {
  int commands = 0;
  each([&](const std::string& command, const std::string& help) {
    commands++;
    EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 24) << command;
    const auto examples = help.find("\nExamples:\n  ");
    ASSERT_NE(examples, std::string::npos) << command;
    EXPECT_EQ(help.find("\n\n", examples), std::string::npos) << command;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
  });
  EXPECT_GT(commands, 10);
}

// What `completion` calls, with the words so far as its arguments, the last of them to be completed.
constexpr const char* kBash = R"(
  . ')" SOURCE_DIR R"(/host/completion/wirelines.bash'
  offered() { COMP_WORDS=(wirelines "$@") COMP_CWORD=$#; _wirelines "$W"; printf '%s\n' "${COMPREPLY[@]}"; }
  )";

TEST_F(Help, bash_completes) {
  each([&](const std::string& command, const std::string& help) {
    auto options = listed(help, "-[^ ]+");
    options.merge(words_of("-h --help"));
    EXPECT_EQ(words_of(run(kBash + ("offered" + command) + " -").out), options) << command;
    if (const auto commands = listed(help, "[a-z]+"); !commands.empty()) {
      EXPECT_EQ(words_of(run(kBash + ("offered" + command) + " ''").out), commands) << command;
    }
  });
  const struct {
    const char *words, *offered;
  } kCases[] = {
      {"show --co", "--color --count"},
      {"show --color ''", "auto always never"},
      {"show --color = al", "always"},
      {"show -N 5 tra", "trace.pcap"},
      {"show -r ./tr", "./trace.pcap"},
      {"show list t", "trace.pcap"},  // a trace of that name
      {"show -N ''", ""},
      {"names which ''", ""},
      {"names add ''", "station ip ip6 port sap type"},
      {"names add --file = own ip", "ip ip6"},
      {"names add ip ''", ""},
      {"names import hosts tra", "trace.pcap"},
      {"nonsense ''", "show list dump stats names json classify"},
  };
  for (const auto& c : kCases) {
    auto wanted = words_of(c.offered);
    auto found = words_of(run(kBash + ("offered " + std::string(c.words))).out);
    if (std::string(c.words).starts_with("nonsense")) {
      for (const auto& command : wanted) EXPECT_EQ(found.count(command), 1U) << command;
      continue;
    }
    EXPECT_EQ(found, wanted) << c.words;
  }
}

// What zsh's own functions are called with.
TEST_F(Help, zsh_completes) {
  if (run("command -v zsh").exit_code != 0) GTEST_SKIP() << "no zsh";
  const auto called = [this](const std::string& words) {
    folder_.file("complete.zsh",
                 "_arguments() { shift; print -rl -- $@ }; _describe() { print -rl -- ${(P)2} }\n"
                 "words=($W " +
                     words + "); CURRENT=$#words; . '" SOURCE_DIR "/host/completion/_wirelines'\n");
    const auto result = run("zsh -f complete.zsh");
    EXPECT_EQ(result.err, "") << words;
    return result.out;
  };
  each([&](const std::string& command, const std::string& help) {
    const std::regex name(R"((^|\n)(?:\*|\(- \*\))?(-[-a-zA-Z]+))");
    const auto text = called(command + " -");
    Words found;
    for (std::sregex_iterator i(text.begin(), text.end(), name); i != std::sregex_iterator(); ++i)
      found.insert((*i)[2]);
    auto options = listed(help, "-[^ ]+");
    options.merge(words_of("-h --help"));
    EXPECT_EQ(found, options) << command;
  });
  EXPECT_NE(called("''").find("\nstats:Sum up traces"), std::string::npos);
  EXPECT_NE(called("show ''").find("\n*--color=[Auto: on a terminal only]:auto|always|never:(auto always never)\n"),
            std::string::npos);
  EXPECT_NE(called("show ''").find("\n*:FILE:_files\n"), std::string::npos);
  EXPECT_NE(called("names add ''").find("\n:KIND:(station ip ip6 port sap type)\n:KEY: \n"), std::string::npos);
}

}  // namespace
}  // namespace wirelines::host
