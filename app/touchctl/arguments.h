#pragma once

#include "app/touchctl/command_line.h"

namespace touch {

/// touchctl's command line: all options and commands, and what the line that was parsed asks for.
class Arguments {
 public:
  Arguments();
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;

  /// `words` without the program's name, in their order. Throws CLI::ParseError for a line that is
  /// wrong, and for one that asks for help or the version only.
  void parse(std::vector<std::string> words);

  CLI::App& app() { return app_; }
  /// Declares what each command takes, for those who list it; a line that is parsed declares what
  /// it names.
  void declareAll() { undeclared_.declareAll(); }
  /// What the words of some options can be, for completion.
  const KnownValues& known() const { return known_; }
  const ShellOptions& options() const { return options_; }
  ShellOptions& options() { return options_; }
  const Command& command() const { return command_; }
  const FileCommand& fileCommand() const { return fileCommand_; }

 private:
  Undeclared undeclared_;  // before the commands, which refer to it
  CLI::App app_;
  ShellOptions options_;
  Command command_;
  FileCommand fileCommand_;
  KnownValues known_;
};

}  // namespace touch
