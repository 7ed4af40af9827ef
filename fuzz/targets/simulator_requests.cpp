// Requests to the simulator, one a line, among them whole descriptions of a controller.

#include <array>
#include <cstdlib>
#include <sstream>
#include <string>

#include "fuzz/target.h"
#include "simulator/driver/simulated_driver.h"

namespace touch::fuzz {

void execute(std::span<const std::uint8_t> bytes) {
  simulator::SimulatedDriver driver;
  driver.answer("clock manual");
  std::istringstream lines{std::string(textOf(bytes))};
  for (std::string line; std::getline(lines, line);) {
    // In real time nothing happens twice in the same way.
    if (line.find("clock") != line.npos) continue;
    const auto answer = driver.answer(line);
    require(answer.done || !answer.text.empty(), "a request that is refused has a reason");
  }
  for (std::int32_t number = 1; number <= driver.GetExistControllers(); ++number) {
    std::array<char, 20> name{};
    if (driver.GetControllerName(number, name.data(), 20) == 0) continue;
    const auto report = driver.answer(std::string("report 0.3 0.7 ") + name.data());
    require(report.done, "every controller that is listed is found");
    if (report.text.empty()) continue;
    const double x = std::strtod(report.text.c_str(), nullptr);
    require(x >= 0 && x <= 1, "a report is on the screen");
  }
}

}  // namespace touch::fuzz
