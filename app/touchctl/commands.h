#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>

#include "app/touchctl/output.h"
#include "app/touchctl/shell.h"
#include "core/driver/driver_settings.h"
#include "core/driver/simulation.h"
#include "measure/judging/verdict.h"

namespace touch {

class WayBack;
struct CheckResult;
struct CommandLine;
struct DiagonalPercent;
struct Setting;

// Each declares the commands of one group.
void addInformationCommands(const CommandLine& line);  ///< list, info
void addSettingCommands(const CommandLine& line);      ///< get, set
void addMaintenanceCommands(const CommandLine& line);  ///< defaults, reset, monitor
void addParameterCommands(const CommandLine& line);    ///< params read, write, save, load, diff
void addPinCommands(const CommandLine& line);          ///< pins show, set
void addCalibrationCommands(const CommandLine& line);  ///< calibrate
void addMeasureCommands(const CommandLine& line);    ///< measure lines, taps, rest, coverage, judge
void addSerialCommands(const CommandLine& line);     ///< serial send, monitor, rate, ...
void addCommissionCommand(const CommandLine& line);  ///< commission
void addSheetCommands(const CommandLine& line);      ///< sheet pack, verify, summary
void addDoctorCommand(const CommandLine& line);      ///< doctor
void addDemoCommand(const CommandLine& line);        ///< demo

/// Words for people, where no program reads the output.
template <typename... Values>
void tell(const Shell& shell, fmt::format_string<Values...> format, Values&&... values) {
  if (!shell.options().json) printText(fmt::format(format, std::forward<Values>(values)...));
}

/// The controllers that the driver knows of, and which one answered.
ExitStatus listControllers(Shell& shell);

// What follows acts on the controller that was chosen before.

/// Identity and settings.
ExitStatus showInformation(Shell& shell);

/// What the driver reports, as it stands; nothing after saying that it cannot open the controller.
std::optional<DriverSettings> readSettings(Shell& shell);

/// The settings' values by their names, as they are typed; null where no driver can tell.
nlohmann::ordered_json settingsAsJson(std::span<const Setting> settings,
                                      const DriverSettings& reported);

/// Sets it and prints what came of it. What the driver made of it, `readSettings` tells.
ExitStatus changeSetting(Shell& shell, const Setting& setting, int value);

/// Says how to put the parameters back that are kept in `file`; nothing when it is empty.
void tellOfKeptBlock(const std::filesystem::path& file);

/// Calibrates with `points` targets (2, 3, 5 or 9) and a simulated finger; needs a simulated
/// driver. Words for people are printed on the way.
ExitStatus calibrate(Shell& shell, int points);

/// Touches five crosses with a simulated finger. How that ended, or nothing when it did not; words
/// for people are printed on the way.
std::optional<CheckResult> checkCalibration(Shell& shell, DiagonalPercent limit, WayBack& wayBack);

/// How a command ends that has judged a panel.
ExitStatus statusOf(measure::Outcome outcome);

/// Draws eighteen lines with a simulated finger and judges them as drawn; needs a simulated driver.
ExitStatus measureSimulatedLines(Shell& shell);

/// "mean 1.23 %, at most 4.56 % of the panel's width"
std::string panelErrorText(const Simulation::PanelError& error);

}  // namespace touch
