// The command line: what subcommands make their options of, what --help prints, and what goes wrong. CLI11 does the
// work; its header takes half a minute to compile and so stands in one file only.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "commands.hpp"
#include "failure.hpp"

namespace wirelines::host {

// Runs the subcommand that is chosen among these; returns the exit code.
int run_command_line(int argc, char** argv, std::span<const Command> commands);

// What is wrong on the command line: the message is followed by where help is.
class UsageError : public Failure {
 public:
  explicit UsageError(const std::string& message) : Failure(EX_USAGE, message) {}
};

// Adds a subcommand: what it is for, what its help ends with (empty: as that of `parent` does), and what it does when
// it is chosen.
CLI::App& add_command(CLI::App& parent, Run& run, const char* name, const char* about, const char* help_end,
                      Run action);

// One that has subcommands of its own, one of which must follow.
CLI::App& add_command_group(CLI::App& parent, const char* name, const char* about, const char* help_end);

// Options. `names` are those of the option, "-q,--quiet", `type` stands for its value in the help. One that is told
// nothing `about` is left to the manual.
void add_flag(CLI::App& app, const char* names, bool& value, const char* about);
void add_flag(CLI::App& app, const char* names, std::function<void()> action, const char* about);
void add_text(CLI::App& app, const char* names, std::string& value, const char* type, const char* about);
void add_text(CLI::App& app, const char* names, const std::function<void(const std::string&)>& take, const char* type,
              const char* about);
void add_texts(CLI::App& app, const char* names, std::vector<std::string>& values, const char* type,
               const char* about);  // may be given several times

void add_number(CLI::App& app, const char* names, std::function<void(std::uint64_t)> take, std::uint64_t least,
                std::uint64_t most, const char* type, const char* about);
template <typename Number>
void add_number(CLI::App& app, const char* names, Number& value, std::uint64_t least, std::uint64_t most,
                const char* type, const char* about) {
  const auto take = [&value](std::uint64_t number) { value = static_cast<Number>(number); };
  add_number(app, names, std::function<void(std::uint64_t)>(take), least, most, type, about);
}

// One of some words: `choose` is told which of them.
void add_one_of_words(CLI::App& app, const char* names, std::vector<std::string> words,
                      std::function<void(std::size_t)> choose, const char* about);

// The same, each with the value that it stands for.
template <typename Value>
void add_one_of(CLI::App& app, const char* names, Value& value, std::vector<std::pair<std::string, Value>> choices,
                const char* about) {
  std::vector<std::string> words(choices.size());
  std::transform(choices.begin(), choices.end(), words.begin(), [](const auto& choice) { return choice.first; });
  const auto choose = [&value, choices](std::size_t i) { value = choices[i].second; };
  add_one_of_words(app, names, std::move(words), choose, about);
}

// Arguments that are no options: one that must be there, and files.
void add_argument(CLI::App& app, const char* name, std::string& value, const char* choice, const char* about);
void add_files(CLI::App& app, std::vector<std::string>& files, const char* about, bool required);

// When a subcommand's options are understood: before anything runs, and while the program still has the rights to open
// an interface. One action a subcommand.
void when_understood(CLI::App& app, std::function<void()> action);

// Then: whether this option was there.
bool is_given(const CLI::App& app, const char* name);

}  // namespace wirelines::host
