#include "app/touchctl/command_line.h"

namespace touch {

void Undeclared::add(CLI::App& command, Declaration declare) {
  waiting_.emplace(&command, std::move(declare));
  command.preparse_callback([this, &command](std::size_t) { this->declare(command); });
}

void Undeclared::declare(CLI::App& command) {
  const auto declaration = waiting_.extract(&command);
  if (!declaration.empty()) declaration.mapped()(command);
}

void Undeclared::declareAll() {
  while (!waiting_.empty())
    declare(*waiting_.begin()->first);
}

void addCommand(const CommandLine& line, CLI::App& group, const std::string& name,
                const std::string& description, Declaration declare) {
  line.undeclared.add(*group.add_subcommand(name, description), std::move(declare));
}

void addControllerCommand(const CommandLine& line, CLI::App& group, const std::string& name,
                          const std::string& description, Declaration declare) {
  addCommand(line, group, name, description,
             [line, declare = std::move(declare)](CLI::App& command) {
               command
                   .add_option(
                       "--controller", line.options.controller,
                       "The controller's name as 'list' shows it (default: the first that answers)")
                   ->type_name("NAME");
               declare(command);
             });
}

void addGroup(const CommandLine& line, const std::string& name, const std::string& description,
              Declaration declare) {
  addCommand(line, line.app, name, description, [declare = std::move(declare)](CLI::App& group) {
    group.require_subcommand(0, 1);
    declare(group);
  });
}

void addJson(const CommandLine& line, CLI::App& command) {
  command.add_flag("--json", line.options.json, "Print JSON");
}

void addWithoutBackup(const CommandLine& line, CLI::App& command) {
  command.add_flag(
      "--without-backup", line.options.withoutBackup,
      "Write also when what was there before cannot be kept; then there is no way back");
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
