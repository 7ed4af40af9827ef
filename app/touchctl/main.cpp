#include "app/parsing.h"
#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"

namespace {

// In the order in which the help lists them.
constexpr auto commandGroups = {
    touch::addInformationCommands, touch::addSettingCommands, touch::addMaintenanceCommands,
    touch::addParameterCommands,   touch::addPinCommands,     touch::addCalibrationCommands,
    touch::addLinearityCommand,    touch::addSerialCommands,  touch::addDoctorCommand,
    touch::addDemoCommand,
};

}  // namespace

int main(int argc, char** argv) {
  using namespace touch;

  CLI::App arguments("Finds, sets up, calibrates and tests touch screen controllers from a shell.",
                     "touchctl");
  arguments.require_subcommand(0, 1);
  arguments.fallthrough();
  arguments.footer(exitStatusLine(touchctlManual));  // the commands take it over
  ShellOptions options;
  addCommonOptions(arguments, options);
  arguments.add_flag("--yes", options.assumeYes, "Answer yes to every question");

  Command command;
  FileCommand fileCommand;
  KnownValues known;
  for (const auto addCommands : commandGroups)
    addCommands({arguments, options, command, fileCommand, known});
  if (const auto status = parseCommandLine(arguments, touchctlManual, known, argc, argv))
    return *status;
  if (fileCommand) return static_cast<int>(fileCommand());
  if (!command) {
    complain("no command was given; 'touchctl --help' lists them");
    return static_cast<int>(ExitStatus::wrongUse);
  }
  // A block that is half written, or a controller left open, is worse than a second of patience.
  catchInterrupt();
  auto status = ExitStatus::done;
  const auto shell = Shell::open(options, status);
  return static_cast<int>(shell ? command(*shell) : status);
}
