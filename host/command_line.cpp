#include "command_line.hpp"

#include <sysexits.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "failure.hpp"
#include "help.hpp"
#include "rights.hpp"
#include "walk.hpp"

namespace wirelines::host {

namespace {

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
    std::string command = "wirelines";
    for (auto chosen = program.get_subcommands(); !chosen.empty(); chosen = chosen[0]->get_subcommands()) {
      command += " " + chosen[0]->get_name();
    }
    complain(std::string(error.what()) + " (see " + command + " --help)");
    return EX_USAGE;
  } catch (const Failure& failure) {
    complain_of(failure);
    return failure.exit_code();
  }
}

}  // namespace

CLI::App& add_command(CLI::App& program, Run& run, const char* name, const char* about, const char* help_end,
                      Run action) {
  auto* const command = program.add_subcommand(name, about);
  command->footer(help_end);
  command->callback([&run, action = std::move(action)] { run = action; });
  return *command;
}

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

}  // namespace wirelines::host
