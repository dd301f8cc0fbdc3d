#include "command_line.hpp"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <csignal>
#include <exception>
#include <limits>
#include <memory>

#include "rights.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

// What --help prints: few lines, so that with its examples it fits a screen. Each option, argument and subcommand is
// one of them: two blanks, its names ("-r,--read"), its value ("FILE", or the choice "auto|always|never"), at least two
// blanks, and what it is for; completions read that, see completion/.
class HelpFormatter : public CLI::FormatterBase {
 public:
  std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode /*mode*/) const override {
    std::string text = app->get_description() + "\nUsage: " + name + arguments(*app) + "\n";
    for (const bool positional : {true, false}) {
      for (const auto* option : app->get_options()) {
        const bool in_help = option != app->get_help_ptr() && !option->get_group().empty();
        if (in_help && option->get_positional() == positional) text += row(*option);
      }
    }
    for (const auto* command : app->get_subcommands({})) {
      text += row("  " + command->get_name(), command->get_description());
    }
    return text + "\n" + app->get_footer() + "\n";
  }

 private:
  static std::string row(std::string text, const std::string& description) {
    constexpr std::size_t kColumn = 24;  // where descriptions begin, unless what stands before is longer
    text.resize(std::max(kColumn, text.size() + 2), ' ');
    return text + description + "\n";
  }

  static std::string row(const CLI::Option& option) {
    const auto value = option.get_type_name();
    return row("  " + option.get_name(option.get_positional(), true) + (value.empty() ? "" : " " + value),
               option.get_description());
  }

  // "[OPTIONS] KIND KEY [FILE...]"
  static std::string arguments(const CLI::App& app) {
    std::string text = " [OPTIONS]";
    for (const auto* option : app.get_options([](const CLI::Option* o) { return o->get_positional(); })) {
      const auto name = option->get_name(true) + (option->get_expected_max() > 1 ? "..." : "");
      text += option->get_required() ? " " + name : " [" + name + "]";
    }
    return app.get_subcommands({}).empty() ? text : text + " SUBCOMMAND";
  }
};

// Empty when `name` is a subcommand, otherwise what is wrong.
std::string not_a_command(CLI::App& program, const std::string& name) {
  std::string known;
  for (const auto* command : program.get_subcommands([](CLI::App*) { return true; })) {
    if (command->get_name() == name) return "";
    known += (known.empty() ? "" : ", ") + command->get_name();
  }
  return in_quotes(name) + " is not a subcommand; there are: " + known +
         (access(name.c_str(), F_OK) == 0 ? ". To see that trace: wirelines show " + name : "");
}

// The command line as CLI11 understands it. Returns an exit code when there is nothing to run.
int parse(CLI::App& program, int argc, char** argv, Output& out) {
  const std::string first = argc > 1 ? argv[1] : "";
  if (first.empty()) {
    out.append(program.help());
    finish(out, 0);
    return EX_USAGE;
  }
  if (const auto wrong = first[0] == '-' ? "" : not_a_command(program, first); !wrong.empty()) {
    complain(wrong);
    return EX_USAGE;
  }
  program.parse(argc, argv);
  return 0;
}

// An option that is told nothing about does not stand in the help.
CLI::Option* listed(CLI::Option* option) {
  if (option->get_description().empty()) option->group("");
  return option;
}

// "--quiet" of "-q,--quiet".
std::string long_name(std::string_view names) {
  return std::string(names.substr(names.find(',') + 1));
}

int usage_error(const CLI::App& program, const std::exception& error) {
  std::string command = "wirelines";
  for (auto chosen = program.get_subcommands(); !chosen.empty(); chosen = chosen[0]->get_subcommands()) {
    command += " " + chosen[0]->get_name();
  }
  complain(std::string(error.what()) + " (see " + command + " --help)");
  return EX_USAGE;
}

int run_program(int argc, char** argv, std::span<const Command> commands) {
  Output out(STDOUT_FILENO);
  CLI::App program("Shows what the frames of a trace say, line by line.", "wirelines");
  program.set_version_flag("--version", "wirelines " WIRELINES_VERSION, "Print the version and end");
  program.formatter(std::make_shared<HelpFormatter>());  // which subcommands inherit
  program.footer(
      "wirelines SUBCOMMAND --help tells more. Exit codes: 0, 64 usage, 65 damaged\n"
      "trace, 66 no such trace, 74 output cannot be written, 77 no permission.\n"
      "Examples:\n"
      "  wirelines list trace.pcap                  a line for every frame\n"
      "  wirelines show -N 12 trace.pcap            all of frame 12");
  program.allow_windows_style_options(false);  // "/trace.pcap" is a trace on every system
  program.require_subcommand(0, 1);            // a word after the first is never taken for another subcommand
  Run run;
  const auto wanted = std::find_if(commands.begin(), commands.end(),
                                   [&](const Command& command) { return argc > 1 && command.name == argv[1]; });
  // To add the options of them all takes longer than to decode many a trace.
  for (const auto& command : wanted == commands.end() ? commands : std::span(wanted, 1)) command.add(program, run);
  try {
    if (const int exit_code = parse(program, argc, argv, out); exit_code != 0) return exit_code;
    if (!run) return EX_USAGE;
    if (geteuid() != 0) give_up_capabilities();  // an interface is open by now, and nothing else takes any
    return run(out);
  } catch (const CLI::CallForHelp&) {
    out.append(program.help());  // that of the subcommand when one was chosen
    return finish(out, 0);
  } catch (const CLI::CallForVersion& version) {
    out.append(version.what());
    out.append('\n');
    return finish(out, 0);
  } catch (const CLI::ParseError& error) {
    return usage_error(program, error);
  } catch (const UsageError& error) {
    return usage_error(program, error);
  } catch (const Failure& failure) {
    complain_of(failure);
    return failure.exit_code();
  }
}

}  // namespace

int run_command_line(int argc, char** argv, std::span<const Command> commands) {
#ifdef SIGPIPE
  (void)std::signal(SIGPIPE, SIG_IGN);  // a reader that has gone is met where we write
#endif
  try {
    return run_program(argc, argv, commands);
  } catch (const std::exception& error) {  // memory is exhausted, most likely
    complain(error.what());
    return EX_OSERR;
  }
}

CLI::App& add_command(CLI::App& parent, Run& run, const char* name, const char* about, const char* help_end,
                      Run action) {
  auto* const command = parent.add_subcommand(name, about);
  if (*help_end != '\0') command->footer(help_end);
  command->callback([&run, action = std::move(action)] { run = action; });
  return *command;
}

CLI::App& add_command_group(CLI::App& parent, const char* name, const char* about, const char* help_end) {
  auto* const group = parent.add_subcommand(name, about);
  group->footer(help_end);
  group->require_subcommand(1);
  return *group;
}

void add_flag(CLI::App& app, const char* names, bool& value, const char* about) {
  listed(app.add_flag(names, value, about));
}

void add_flag(CLI::App& app, const char* names, std::function<void()> action, const char* about) {
  listed(app.add_flag_callback(names, std::move(action), about));
}

void add_text(CLI::App& app, const char* names, std::string& value, const char* type, const char* about) {
  listed(app.add_option(names, value, about))->type_name(type);
}

void add_text(CLI::App& app, const char* names, const std::function<void(const std::string&)>& take, const char* type,
              const char* about) {
  listed(app.add_option_function<std::string>(names, take, about))->type_name(type);
}

void add_texts(CLI::App& app, const char* names, std::vector<std::string>& values, const char* type,
               const char* about) {
  listed(app.add_option(names, values, about))->type_name(type)->allow_extra_args(false);
}

void add_number(CLI::App& app, const char* names, std::function<void(std::uint64_t)> take, std::uint64_t least,
                std::uint64_t most, const char* type, const char* about) {
  const auto read = [=, take = std::move(take)](const std::string& text) {
    const auto* const end = text.data() + text.size();
    std::uint64_t number = 0;
    const auto [last, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || last != end || number < least || number > most) {
      const auto range = most != std::numeric_limits<std::uint64_t>::max()
                             ? "from " + std::to_string(least) + " to " + std::to_string(most)
                             : "of " + std::to_string(least) + " or more";
      throw UsageError(long_name(names) + ": " + in_quotes(text) + " is not a number " + range);
    }
    take(number);
  };
  add_text(app, names, read, type, about);
}

void add_one_of_words(CLI::App& app, const char* names, std::vector<std::string> words,
                      std::function<void(std::size_t)> choose, const char* about) {
  const auto type = CLI::detail::join(words, "|");
  const auto read = [names, words = std::move(words), choose = std::move(choose)](const std::string& word) {
    const auto found = std::find(words.begin(), words.end(), word);
    if (found == words.end()) {
      throw UsageError(long_name(names) + ": " + in_quotes(word) + " is none of " + CLI::detail::join(words, ", "));
    }
    choose(static_cast<std::size_t>(found - words.begin()));
  };
  add_text(app, names, read, type.c_str(), about);
}

void add_argument(CLI::App& app, const char* name, std::string& value, const char* choice, const char* about) {
  app.add_option(name, value, about)->required()->type_name(choice);
}

void add_files(CLI::App& app, std::vector<std::string>& files, const char* about, bool required) {
  app.add_option("FILE", files, about)->type_name("")->required(required);
}

void when_understood(CLI::App& app, std::function<void()> action) {
  app.parse_complete_callback([&app, action = std::move(action)] {
    if (app.remaining_size() == 0) action();  // what is left is an error, told soon
  });
}

bool is_given(const CLI::App& app, const char* name) {
  return app.count(name) > 0;
}

}  // namespace wirelines::host
