#include "app/touchctl/command_line.h"

namespace touch {

CLI::App& addCommand(const CommandLine& line, CLI::App& group, const std::string& name,
                     const std::string& description) {
  CLI::App& command = *group.add_subcommand(name, description);
  command
      .add_option("--controller", line.options.controller,
                  "The controller's name as 'list' shows it (default: the first that answers)")
      ->type_name("NAME");
  return command;
}

CLI::App& addGroup(const CommandLine& line, const std::string& name,
                   const std::string& description) {
  CLI::App& group = *line.app.add_subcommand(name, description);
  group.require_subcommand(0, 1);
  return group;
}

void addJson(const CommandLine& line, CLI::App& command) {
  command.add_flag("--json", line.options.json, "Print JSON");
}

Command onController(Command work) {
  return [work = std::move(work)](Shell& shell) {
    return shell.chooseController() ? work(shell) : ExitStatus::noController;
  };
}

void refuseArgument(const std::string& argument, const std::string& text) {
  throw CLI::ValidationError(argument, text);
}

std::pair<std::string_view, std::string_view> nameAndValue(std::string_view text) {
  const auto equals = text.find('=');
  if (equals == text.npos) return {text, {}};
  return {text.substr(0, equals), text.substr(equals + 1)};
}

}  // namespace touch
