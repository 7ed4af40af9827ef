#include "console/maintenance.h"

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "console/backup.h"
#include "console/monitors.h"

namespace touch {

namespace {

ExitStatus doneOrFailed(bool done) {
  return done ? ExitStatus::done : ExitStatus::failed;
}

ExitStatus takeBackDefaults(Shell& shell) {
  const Backup backup(shell.options().workFolder);
  const DefaultsRestored result = defaults(shell.access(), shell.prompt(), backup);
  tellOfKeptBlock(result.kept);
  return doneOrFailed(result.restored);
}

ExitStatus reset(Shell& shell) {
  return doneOrFailed(resetController(shell.access(), shell.prompt()));
}

}  // namespace

void addMaintenanceCommands(const CommandLine& line) {
  addCommand(line, line.app, "defaults",
             "Make the controller take back the values that it left the factory with")
      .callback([&command = line.command] { command = onController(takeBackDefaults); });

  addCommand(line, line.app, "reset", "Make the controller start anew")
      .callback([&command = line.command] { command = onController(reset); });

  CLI::App& monitor =
      addCommand(line, line.app, "monitor", "Say which of several monitors the panel covers");
  constexpr int mostMonitors = 255;
  const auto* const number = monitor.add_option("N", "The monitor, counted from 1")
                                 ->required()
                                 ->check(CLI::Range(1, mostMonitors));
  monitor.callback([&command = line.command, number] {
    command = onController([monitor = number->as<int>()](Shell& shell) {
      return doneOrFailed(assignMonitor(shell.access(), shell.prompt(), monitor));
    });
  });
}

}  // namespace touch
