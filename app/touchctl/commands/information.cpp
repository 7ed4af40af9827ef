#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/output.h"
#include "console/settings/touch_settings.h"
#include "core/discovery/identity.h"
#include "core/driver/driver_settings.h"
#include "support/text/text_encoding.h"

namespace touch {

ExitStatus listControllers(Shell& shell) {
  const ControllerList list = getctrname(shell.access(), shell.prompt());
  if (shell.options().json) {
    auto controllers = nlohmann::json::array();
    for (std::size_t i = 0; i < list.names.size(); ++i) {
      controllers.push_back(
          {{"number", i + 1}, {"name", toUtf8(list.names[i])}, {"chosen", list.answered == i}});
    }
    printJson(controllers);
  } else if (!list.names.empty()) {
    print(" No  Device\n");
    for (std::size_t i = 0; i < list.names.size(); ++i) {
      print("{:>3}  {}{}\n", i + 1, printable(list.names[i]),
            list.answered == i ? "  (answers)" : "");
    }
    if (!list.answered) {
      complain("no controller answers; check cable and power, and see 'touchctl doctor'");
    }
  } else {
    complain(noControllerAdvice);
  }
  return list.answered ? ExitStatus::done : ExitStatus::noController;
}

namespace {

void printAsText(const std::string& controller, const std::vector<std::string>& lines,
                 const Identity& identity, const DriverSettings& reported) {
  print("{}\n", printable(controller));
  for (const std::string& line : lines)
    print("  {}\n", printable(line));
  const std::string model = modelName(identity.unitType);
  if (!model.empty()) print("  Model : {}\n", printable(model));
  for (const Setting& setting : settingTable()) {
    if (setting.get == nullptr) continue;
    print("  {} : {}\n", setting.label, settingText(setting, setting.get(reported)));
  }
}

void printAsJson(const std::string& controller, const std::vector<std::string>& lines,
                 const Identity& identity, const DriverSettings& reported) {
  const nlohmann::json object = {{"controller", toUtf8(controller)},
                                 {"unitType", toUtf8(identity.unitType)},
                                 {"model", modelName(identity.unitType)},
                                 {"firmware", toUtf8(identity.firmware)},
                                 {"information", lines},
                                 {"settings", settingsAsJson(settingTable(), reported)}};
  printJson(object);
}

}  // namespace

ExitStatus showInformation(Shell& shell) {
  const auto lines = controllerInformation(shell.access());
  const Identity identity = readfw(shell.access());
  if (identity.unitType.empty() && identity.firmware.empty()) {
    // What the driver reports of a controller that is silent would be defaults, not facts.
    complain(printable(shell.controller()) + " does not answer; check its cable and power");
    return ExitStatus::failed;
  }
  const auto reported = readSettings(shell);
  if (!reported) return ExitStatus::failed;
  const auto print = shell.options().json ? printAsJson : printAsText;
  print(shell.controller(), lines, identity, *reported);
  return ExitStatus::done;
}

void addInformationCommands(const CommandLine& line) {
  addCommand(line, line.app, "list", "List the controllers", [line](CLI::App& list) {
    addJson(line, list);
    list.callback([line] { line.command = listControllers; });
  });
  addControllerCommand(line, line.app, "info", "Identity and settings of a controller",
                       [line](CLI::App& info) {
                         addJson(line, info);
                         info.callback([line] { line.command = onController(showInformation); });
                       });
}

}  // namespace touch
