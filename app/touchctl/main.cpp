#include <CLI/CLI.hpp>
#include <functional>
#include <map>

#include "app/touchctl/commands.h"

namespace {

using namespace touch;

/// What the command line asked for: run once the driver is bound.
using Command = std::function<ExitStatus(Shell&)>;

void addJson(CLI::App& command, ShellOptions& options) {
  command.add_flag("--json", options.json, "Print JSON");
}

void addController(CLI::App& command, ShellOptions& options) {
  command
      .add_option("--controller", options.controller,
                  "The controller's name as 'list' shows it (default: the first that answers)")
      ->type_name("NAME");
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App arguments("Finds, sets up, calibrates and tests touch screen controllers from a shell.",
                     "touchctl");
  arguments.require_subcommand(1);
  arguments.fallthrough();
  ShellOptions options;
  addCommonOptions(arguments, options);
  arguments.add_flag("--yes", options.assumeYes, "Answer yes to every question");

  Command command;
  auto* const list = arguments.add_subcommand("list", "List the controllers");
  addJson(*list, options);
  list->callback([&command] { command = listControllers; });

  auto* const info = arguments.add_subcommand("info", "Identity and settings of a controller");
  addJson(*info, options);
  addController(*info, options);
  info->callback([&command] { command = showInformation; });

  int points = 5;
  auto* const calibration =
      arguments.add_subcommand("calibrate", "Calibrate a simulated controller");
  calibration->add_option("--points", points, "How many targets: 2, 3, 5 or 9")
      ->check(CLI::IsMember({2, 3, 5, 9}))
      ->type_name("N");
  addController(*calibration, options);
  calibration->callback([&command, &points] {
    command = [points](Shell& shell) { return calibrate(shell, points); };
  });

  auto* const demo =
      arguments.add_subcommand("demo", "The main job in one go, on the simulated controllers");
  demo->callback([&command] { command = demonstrate; });

  try {
    arguments.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return arguments.exit(error) == 0 ? 0 : static_cast<int>(ExitStatus::wrongUse);
  }
  auto status = ExitStatus::done;
  const auto shell = Shell::open(options, status);
  return static_cast<int>(shell ? command(*shell) : status);
}
