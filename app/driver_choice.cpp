#include "app/driver_choice.h"

#include "core/driver/simulation.h"

namespace touch {

namespace {

constexpr const char* serialSimulation = "RS232 DEVICE 1";

/// Beside the program, or in the folder for libraries beside its folder.
std::filesystem::path simulatorLibrary() {
  const auto folder = programFolder();
  const std::string name = libraryFileName("nexapi-sim");
  for (const auto& candidate : {folder / name, folder.parent_path() / "lib" / name,
                                folder.parent_path() / "lib" / "touchutility" / name}) {
    std::error_code ignored;
    if (std::filesystem::exists(candidate, ignored)) return candidate;
  }
  return folder / name;
}

}  // namespace

Result<std::unique_ptr<NexapiDriver>, BindError> bindChosenDriver(const Options& options) {
  // A folder that is guessed would be relative, and lead to the current one.
  if (options.simulate && programFolder().empty())
    return tl::unexpected(
        BindError{"nexapi-sim", say("driver", "the system does not say where this program lies")});
  return NexapiDriver::bind(options.simulate ? simulatorLibrary() : options.driver);
}

void addSimulatedPort(Driver& driver, ComPorts& ports) {
  if (!driver.isSimulated()) return;
  ports.assignUnlessGiven(1, [&driver] { return Simulation(driver).port(serialSimulation); });
}

}  // namespace touch
