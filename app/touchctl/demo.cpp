#include <fmt/core.h>

#include "app/touchctl/commands.h"

namespace touch {

ExitStatus demonstrate(Shell& shell) {
  if (!shell.simulation()) {
    complain("the demonstration runs on simulated controllers only: say --simulate");
    return ExitStatus::failed;
  }
  fmt::print("Controllers that the driver knows of:\n");
  if (const auto status = listControllers(shell); status != ExitStatus::done) return status;
  fmt::print("\nWhat the one that answers says of itself:\n");
  if (const auto status = showInformation(shell); status != ExitStatus::done) return status;
  fmt::print("\n");
  for (const int points : {2, 9}) {
    if (const auto status = calibrate(shell, points); status != ExitStatus::done) return status;
  }
  fmt::print("\nDone: the panel is calibrated.\n");
  return ExitStatus::done;
}

}  // namespace touch
