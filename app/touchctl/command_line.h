#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
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

/// Declares what a command takes and does.
using Declaration = std::function<void(CLI::App& command)>;

/// Commands of which only names and descriptions are declared as yet. Declaring all that they take
/// costs a program more than its start, and a line names one.
class Undeclared {
 public:
  Undeclared() = default;
  Undeclared(const Undeclared&) = delete;
  Undeclared& operator=(const Undeclared&) = delete;

  void add(CLI::App& command, Declaration declare);
  /// What this command takes, and the names of its own commands; nothing when that has been done.
  void declare(CLI::App& command);
  void declareAll();

 private:
  std::map<CLI::App*, Declaration> waiting_;
};

/// The command line while it is declared. Each command that is given leaves its options in
/// `options` and itself in `command` or `fileCommand`; what it was given is checked before that.
/// Values that only a callback checks are told to `known`. What it refers to outlives the parsing.
struct CommandLine {
  CLI::App& app;
  ShellOptions& options;
  Command& command;
  FileCommand& fileCommand;
  KnownValues& known;
  Undeclared& undeclared;
};

/// Adds a command; `declare` is called when a line names it.
void addCommand(const CommandLine& line, CLI::App& group, const std::string& name,
                const std::string& description, Declaration declare);

/// The same for one that works on a controller, which --controller names.
void addControllerCommand(const CommandLine& line, CLI::App& group, const std::string& name,
                          const std::string& description, Declaration declare);

/// Adds a group of commands, one of which must follow its name; `declare` adds them.
void addGroup(const CommandLine& line, const std::string& name, const std::string& description,
              Declaration declare);

/// Lets the command print JSON.
void addJson(const CommandLine& line, CLI::App& command);

/// Lets the command write to a controller although what it holds could not be kept before.
void addWithoutBackup(const CommandLine& line, CLI::App& command);

/// `work`, once the controller is chosen; without one the command ends.
Command onController(Command work);

/// Wrong use: `text` says what was expected for `argument`.
[[noreturn]] void refuseArgument(const std::string& argument, const std::string& text);

/// "NAME=VALUE" in two; the value is empty without "=".
std::pair<std::string_view, std::string_view> nameAndValue(std::string_view text);

}  // namespace touch
