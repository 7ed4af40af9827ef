#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "app/completion.h"
#include "app/touchctl/shell.h"

namespace touch {

/// What the command line asked for: run once the driver is bound.
using Command = std::function<ExitStatus(Shell&)>;

/// A command that needs neither driver nor controller.
using FileCommand = std::function<ExitStatus()>;

/// The command line while it is declared. Each command that is given leaves its options in `options` and itself in
/// `command` or `fileCommand`; what it was given is checked before that. Values that only a callback checks are told to
/// `known`.
struct CommandLine {
  CLI::App& app;
  ShellOptions& options;
  Command& command;
  FileCommand& fileCommand;
  KnownValues& known;
};

/// Declares a command that works on a controller, which --controller names.
CLI::App& addCommand(const CommandLine& line, CLI::App& group, const std::string& name,
                     const std::string& description);

/// Declares a group of commands, one of which must follow its name.
CLI::App& addGroup(const CommandLine& line, const std::string& name,
                   const std::string& description);

/// Lets the command print JSON.
void addJson(const CommandLine& line, CLI::App& command);

/// `work`, once the controller is chosen; without one the command ends.
Command onController(Command work);

/// Wrong use: `text` says what was expected for `argument`.
[[noreturn]] void refuseArgument(const std::string& argument, const std::string& text);

/// "NAME=VALUE" in two; the value is empty without "=".
std::pair<std::string_view, std::string_view> nameAndValue(std::string_view text);

}  // namespace touch
