#include "console/maintenance/maintenance.h"

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "console/panels/monitors.h"
#include "console/parameters/backup.h"
#include "console/parameters/parameter_block.h"

namespace touch {

namespace {

ExitStatus doneOrFailed(bool done) {
  return done ? ExitStatus::done : ExitStatus::failed;
}

ExitStatus takeBackDefaults(Shell& shell) {
  const Backup backup(shell.options().workFolder);
  const KeptBlock kept =
      keepBlock(shell.access(), shell.prompt(), backup, readBlock(shell.access()));
  tellOfKeptBlock(kept.file);
  return doneOrFailed(kept.goOn && restoreDefaults(shell.access(), shell.prompt()));
}

ExitStatus reset(Shell& shell) {
  return doneOrFailed(resetController(shell.access(), shell.prompt()));
}

}  // namespace

void addMaintenanceCommands(const CommandLine& line) {
  addControllerCommand(
      line, line.app, "defaults",
      "Make the controller take back the values that it left the factory with",
      [line](CLI::App& command) {
        addWithoutBackup(line, command);
        command.callback([line] { line.command = onController(takeBackDefaults); });
      });
  addControllerCommand(line, line.app, "reset", "Make the controller start anew",
                       [line](CLI::App& command) {
                         command.callback([line] { line.command = onController(reset); });
                       });
  addControllerCommand(
      line, line.app, "monitor", "Say which of several monitors the panel covers",
      [line](CLI::App& command) {
        constexpr int mostMonitors = 255;
        const auto* const number = command.add_option("N", "The monitor, counted from 1")
                                       ->required()
                                       ->check(CLI::Range(1, mostMonitors));
        command.callback([line, number] {
          line.command = onController([monitor = number->as<int>()](Shell& shell) {
            return doneOrFailed(assignMonitor(shell.access(), shell.prompt(), monitor));
          });
        });
      });
}

}  // namespace touch
