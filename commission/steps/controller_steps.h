#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calibration/check.h"
#include "commission/run/run.h"
#include "console/doctor/doctor.h"
#include "console/settings/touch_settings.h"
#include "core/session.h"

namespace touch {
class Backup;
}

namespace touch::commission {

// The steps that need no screen. Each acts on the session's controller, puts what it learns into
// the run, and returns what it found.

/// How the sheet calls the driver.
std::string driverName(const Patient& patient);

/// Problems are bad; notes are told. `reported` is nothing where the settings are not known.
Found prerequisitesOf(const Diagnosis& diagnosis, const std::optional<DriverSettings>& reported);

/// What the controller says of itself. Its parameters are read and kept in a backup file, if it has
/// any. `driver` is how the driver is called on the sheet.
Found identify(const Access& access, const Backup& backup, std::string_view driver, Run& run);

/// A setting that a use wants to have one value.
struct WantedSetting {
  std::string_view use;   ///< name of a profile of limits
  std::string_view name;  ///< of the setting
  int value = 0;
  const char* reason;  ///< said in the context "commission"
};
/// Those that differ from what the driver reports.
std::vector<WantedSetting> deviations(std::string_view use, const DriverSettings& reported);

/// Reads the settings and names those that the use wants otherwise. Changes nothing.
Found compareSettings(const Access& access, Run& run);

/// What a calibration came to; the parameters after it are read.
Found calibrated(const Access& access, int targets, Run& run);

/// How the check of a calibration ended; the parameters that are in force now are read.
Found checked(const Access& access, const CheckResult& result, Run& run);

/// How often reports came, by the times of raw counts; nothing where there are none.
std::optional<ReportRate> rateOf(const measure::Measurement& measurement);

}  // namespace touch::commission
