#include "app/touchctl/arguments.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "app/manual.h"
#include "app/touchctl/commands.h"

namespace touch {

namespace {

// In the order in which the help lists them.
constexpr auto commandGroups = {
    addInformationCommands, addSettingCommands,     addMaintenanceCommands, addParameterCommands,
    addPinCommands,         addCalibrationCommands, addMeasureCommands,     addSerialCommands,
    addCommissionCommand,   addSheetCommands,       addDoctorCommand,       addDemoCommand,
};

}  // namespace

Arguments::Arguments()
    : app_("Finds, sets up, calibrates and tests touch screen controllers from a shell.",
           "touchctl") {
  app_.require_subcommand(0, 1);
  app_.fallthrough();
  app_.footer(exitStatusLine(touchctlManual));  // the commands take it over
  addCommonOptions(app_, options_);
  refuseMissingFolder(app_);
  app_.add_option_function<double>(
          "--driver-timeout",
          [this](double seconds) {
            options_.driverTimeout = std::chrono::milliseconds(std::llround(seconds * 1000));
          },
          "How long an operation of the driver may take before it counts as hanging (default: 10)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.1, 3600.0));
  app_.add_flag("--yes", options_.assumeYes, "Answer yes to every question");
  for (const auto addCommands : commandGroups)
    addCommands({app_, options_, command_, fileCommand_, known_, undeclared_});
}

void Arguments::parse(std::vector<std::string> words) {
  // The parser takes them from the back.
  std::reverse(words.begin(), words.end());
  app_.parse(std::move(words));
}

}  // namespace touch
