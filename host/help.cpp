#include "help.hpp"

#include <algorithm>

namespace wirelines::host {

namespace {

constexpr std::size_t kColumn = 24;  // where descriptions begin, unless what stands before is longer

std::string row(std::string text, const std::string& description) {
  text.resize(std::max(kColumn, text.size() + 2), ' ');
  return text + description + "\n";
}

std::string row(const CLI::Option& option) {
  const auto value = option.get_type_name();
  return row("  " + option.get_name(option.get_positional(), true) + (value.empty() ? "" : " " + value),
             option.get_description());
}

// "[OPTIONS] KIND KEY [FILE...]"
std::string arguments(const CLI::App& app) {
  std::string text = " [OPTIONS]";
  for (const auto* option : app.get_options([](const CLI::Option* o) { return o->get_positional(); })) {
    const auto name = option->get_name(true) + (option->get_expected_max() > 1 ? "..." : "");
    text += option->get_required() ? " " + name : " [" + name + "]";
  }
  return app.get_subcommands({}).empty() ? text : text + " SUBCOMMAND";
}

}  // namespace

std::string HelpFormatter::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode /*mode*/) const {
  std::string text = app->get_description() + "\nUsage: " + name + arguments(*app) + "\n";
  for (const bool positional : {true, false}) {
    for (const auto* option : app->get_options()) {
      const bool listed = option != app->get_help_ptr() && !option->get_group().empty();
      if (listed && option->get_positional() == positional) text += row(*option);
    }
  }
  for (const auto* command : app->get_subcommands({})) {
    text += row("  " + command->get_name(), command->get_description());
  }
  return text + "\n" + app->get_footer() + "\n";
}

}  // namespace wirelines::host
