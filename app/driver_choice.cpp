#include "app/driver_choice.h"

#include <sstream>

#include "app/simulated_source.h"
#include "core/discovery/identity.h"
#include "core/driver/host/hosted_driver.h"
#include "core/driver/library_header.h"
#include "core/driver/nexapi.h"
#include "core/driver/simulation.h"

namespace touch {

namespace {

using Library = std::optional<std::filesystem::path>;

constexpr int ownBits = 8 * sizeof(void*);
constexpr int otherBits = 96 - ownBits;

/// A part of the program: beside it, or in the folders for such things beside its folder. Where it
/// is nowhere, it is missed beside the program.
std::filesystem::path installed(const std::string& name) {
  const auto folder = programFolder();
  for (const auto& candidate : {folder / name, folder.parent_path() / "lib" / name,
                                folder.parent_path() / "lib" / "touchutility" / name}) {
    std::error_code ignored;
    if (std::filesystem::exists(candidate, ignored)) return candidate;
  }
  return folder / name;
}

HostStart hostFor(int bits) {
  return [bits]() -> Result<std::unique_ptr<HostLink>, std::string> {
    const auto program = installed(hostProgramName(bits));
    std::error_code ignored;
    if (std::filesystem::exists(program, ignored)) return startHostProcess(program);
    // On Windows and where this program has its bits it is part of the installation.
    return tl::unexpected(filled(
        bits == ownBits
            ? say("driver", "%1, in which it would run, is missing: install TouchUtility again")
            : say("driver",
                  "it has %2 bits, and %1, in which it would run, is missing: install the "
                  "package touchutility-driver32"),
        {program.filename().string(), std::to_string(bits)}));
  };
}

BoundDriverOrError bindHosted(const Library& wanted, Clock& clock, DriverPatience& patience) {
  std::error_code failed;
  Library library = wanted ? Library(std::filesystem::absolute(*wanted, failed))
                           : ownLibrary(BoundDriver::makersLibrary);
  if (failed) return tl::unexpected(BindError{wanted->string(), failed.message()});
  if (library) {
    // What has no such header no host can load; the system then says what it is.
    const int bits = libraryBits(*library).value_or(ownBits);
    return HostedDriver::bind(hostFor(bits), library, clock, patience);
  }
  // Each host searches the folders that the system has for libraries of its bits.
  auto own = HostedDriver::bind(hostFor(ownBits), std::nullopt, clock, patience);
  std::error_code ignored;
  if (own || !std::filesystem::exists(installed(hostProgramName(otherBits)), ignored)) return own;
  auto other = HostedDriver::bind(hostFor(otherBits), std::nullopt, clock, patience);
  return other ? std::move(other) : std::move(own);
}

BoundDriverOrError bindInProcess(const Library& library) {
  auto bound = NexapiDriver::bind(library);
  if (!bound) return tl::unexpected(bound.error());
  return std::unique_ptr<BoundDriver>(std::move(*bound));
}

/// The first simulated controller on a serial line; empty without one.
std::string serialController(const Simulation& simulation) {
  std::istringstream names(simulation.request("controllers").value_or(std::string()));
  for (std::string name; std::getline(names, name);)
    if (isSerialController(name)) return name;
  return {};
}

}  // namespace

BoundDriverOrError bindChosenDriver(const Options& options, Clock& clock,
                                    DriverPatience& patience) {
  // A folder that is guessed would be relative, and lead to the current one.
  if (options.simulate && programFolder().empty())
    return tl::unexpected(
        BindError{"nexapi-sim", say("driver", "the system does not say where this program lies")});
  const Library library =
      options.simulate ? Library(installed(libraryFileName("nexapi-sim"))) : options.driver;
  const bool hosted = options.driverHosted.value_or(!options.simulate);
  auto bound = hosted ? bindHosted(library, clock, patience) : bindInProcess(library);
  if (!bound || !options.replay) return bound;
  if (const auto became = become(**bound, *options.replay); !became)
    return tl::unexpected(BindError{
        library->string(), filled(say("driver", "its controller did not become that of %1: %2"),
                                  {options.simulateFrom->string(), became.error()})});
  return bound;
}

void addSimulatedPort(Driver& driver, ComPorts& ports) {
  if (!driver.isSimulated()) return;
  ports.assignUnlessGiven(1, [&driver] {
    const Simulation simulation(driver);
    return simulation.port(serialController(simulation));
  });
}

}  // namespace touch
