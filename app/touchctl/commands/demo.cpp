#include <fmt/core.h>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "console/settings/touch_settings.h"

namespace touch {

namespace {

/// Changes a setting that is on or off, and puts it back.
ExitStatus changeAndPutBack(Shell& shell, const Setting& setting) {
  const auto reported = readSettings(shell);
  if (!reported) return ExitStatus::failed;
  const int before = setting.get(*reported);
  for (const int value : {1 - before, before}) {
    if (const auto status = changeSetting(shell, setting, value); status != ExitStatus::done) {
      return status;
    }
  }
  return ExitStatus::done;
}

ExitStatus changeASetting(Shell& shell) {
  return changeAndPutBack(shell, *findSetting("right-click"));
}

/// Quickly first, then well.
ExitStatus calibrateTwice(Shell& shell) {
  const auto before = shell.simulation().panelError(shell.controller());
  for (const int points : {2, 5}) {
    if (const auto status = calibrate(shell, points); status != ExitStatus::done) return status;
  }
  const auto now = shell.simulation().panelError(shell.controller());
  if (!before || !now) return ExitStatus::failed;
  print("\nReport on {}\n  touches missed by {}\n  they now miss by {}\n", shell.controller(),
        panelErrorText(*before), panelErrorText(*now));
  return ExitStatus::done;
}

struct Step {
  const char* title;
  ExitStatus (*run)(Shell&);
};

constexpr Step steps[] = {
    {"What the one that answers says of itself:", showInformation},
    {"A setting, changed and put back:", changeASetting},
    {"Calibration:", calibrateTwice},
    {"Lines, each drawn along its guide and measured:", measureSimulatedLines},
};

/// The main job in one go: find, identify, read and change, calibrate, prove.
ExitStatus demonstrate(Shell& shell) {
  if (!shell.simulation().isThere()) {
    complain("the demonstration runs on simulated controllers only: say --simulate");
    return ExitStatus::failed;
  }
  print("Controllers that the driver knows of:\n");
  if (const auto status = listControllers(shell); status != ExitStatus::done) return status;
  if (!shell.chooseController()) return ExitStatus::noController;
  for (const auto& [title, run] : steps) {
    if (interrupted()) return ExitStatus::failed;
    print("\n{}\n", title);
    if (const auto status = run(shell); status != ExitStatus::done) return status;
  }
  print("\nDone: the panel is calibrated, and its lines are straight.\n");
  return ExitStatus::done;
}

}  // namespace

void addDemoCommand(const CommandLine& line) {
  addControllerCommand(
      line, line.app, "demo", "The main job in one go, on the simulated controllers",
      [line](CLI::App& demo) { demo.callback([line] { line.command = demonstrate; }); });
}

}  // namespace touch
