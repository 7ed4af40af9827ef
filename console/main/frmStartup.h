#pragma once

#include <QSize>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/driver/nexapi.h"
#include "core/driver/simulation.h"
#include "ports/com_ports.h"

namespace touch {

/// What the program was started with, as far as its windows care.
struct Startup {
  std::filesystem::path workFolder;
  std::filesystem::path driverPath;
  Simulation simulation{};                   ///< of the simulated driver while that is bound
  std::optional<QSize> fullScreenSize;       ///< logical pixels, in place of each full screen
  std::optional<int> monitor{};              ///< that the panel covers, counted from 1
  std::optional<BindError> refusedDriver{};  ///< why the driver that was wanted is not bound
  ComPorts ports{};
  std::vector<std::string> versions{};  ///< of the program and of what it stands on
  std::filesystem::path ownFolder{};    ///< for what the program remembers; empty: it does not
  std::filesystem::path recordings{};   ///< the folder of those that can be replayed, if any
};

}  // namespace touch
