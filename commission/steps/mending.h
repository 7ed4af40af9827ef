#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "console/doctor/doctor.h"
#include "core/driver/driver_settings.h"
#include "core/session.h"

namespace touch::commission {

/// What somebody who commissions a panel can put right without leaving the run.
enum class Mend : std::uint8_t {
  takePortBack,  ///< the controller is silent, as when another program has made the driver let go
  enablePanel,   ///< touches are switched off
  chooseFolder,  ///< nothing can be kept in the working folder
};

/// Those that what was found calls for. `reported` is nothing where the settings are not known.
std::vector<Mend> mendsFor(const Diagnosis& diagnosis, const std::string& controller,
                           const std::optional<DriverSettings>& reported);

/// Makes the driver take the session's controller's port again; it does no harm when it has it.
void takePortBack(const Access& access);

}  // namespace touch::commission
