#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "app/touchctl/commands.h"
#include "core/driver_settings.h"
#include "core/identity.h"
#include "core/text_encoding.h"

namespace touch {

ExitStatus listControllers(Shell& shell) {
  const ControllerList list = getctrname(shell.access(), shell.prompt());
  if (shell.options().json) {
    auto controllers = nlohmann::json::array();
    for (std::size_t i = 0; i < list.names.size(); ++i) {
      controllers.push_back(
          {{"number", i + 1}, {"name", toUtf8(list.names[i])}, {"chosen", list.answered == i}});
    }
    fmt::print("{}\n", controllers.dump(2));
  } else if (!list.names.empty()) {
    fmt::print(" No  Device\n");
    for (std::size_t i = 0; i < list.names.size(); ++i) {
      fmt::print("{:>3}  {}{}\n", i + 1, toUtf8(list.names[i]),
                 list.answered == i ? "  (answers)" : "");
    }
    if (!list.answered) complain("no controller answers; check cable and power");
  }
  return list.answered ? ExitStatus::done : ExitStatus::noController;
}

ExitStatus showInformation(Shell& shell) {
  if (!shell.chooseController()) return ExitStatus::noController;
  const auto lines = controllerInformation(shell.access());
  const DriverSettings settings = readset(shell.access());
  const Identity identity = readfw(shell.access());
  if (shell.options().json) {
    const nlohmann::json object = {{"controller", toUtf8(shell.controller())},
                                   {"unitType", toUtf8(identity.unitType)},
                                   {"model", modelName(identity.unitType)},
                                   {"firmware", toUtf8(identity.firmware)},
                                   {"information", lines},
                                   {"settings",
                                    {{"touchMode", settings.touchMode},
                                     {"rotation", settings.rotation},
                                     {"reporting", settings.reporting},
                                     {"upSound", settings.upSound},
                                     {"downSound", settings.downSound},
                                     {"doubleClick", settings.doubleClick},
                                     {"doubleClickSpeed", settings.doubleClickSpeed},
                                     {"doubleClickArea", settings.doubleClickArea},
                                     {"rightClick", settings.rightClick},
                                     {"rightClickTime", settings.rightClickTime}}}};
    fmt::print("{}\n", object.dump(2));
  } else {
    const std::string model = modelName(identity.unitType);
    fmt::print("{}\n", toUtf8(shell.controller()));
    for (const std::string& line : lines)
      fmt::print("  {}\n", line);
    if (!model.empty()) fmt::print("  Model : {}\n", model);
    const auto onOff = [](bool on) { return on ? "on" : "off"; };
    fmt::print("  Touch mode {}, rotation {} degrees, touches reported: {}\n", settings.touchMode,
               settings.rotation * 90, onOff(settings.reporting));
    fmt::print("  Sounds: up {}, down {}\n", onOff(settings.upSound), onOff(settings.downSound));
    fmt::print("  Double click {}, speed {} ms, area {}\n", onOff(settings.doubleClick),
               settings.doubleClickSpeed * 100, settings.doubleClickArea);
    fmt::print("  Right click {}, after {} ms\n", onOff(settings.rightClick),
               settings.rightClickTime);
  }
  if (!identity.unitType.empty() || !identity.firmware.empty()) return ExitStatus::done;
  complain("the controller does not answer; check cable and power");
  return ExitStatus::failed;
}

}  // namespace touch
