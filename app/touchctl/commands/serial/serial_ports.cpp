#include "app/touchctl/commands/serial/serial_ports.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "app/declarations.h"
#include "app/touchctl/output.h"
#include "ports/port_list.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

ExitStatus printPorts(const ShellOptions& options) {
  auto objects = nlohmann::ordered_json::array();
  std::string lines;
  for (const auto& [port, driver, maker, hindrance, state] : portFacts(options.comPorts)) {
    objects.push_back({{"number", port.number > 0 ? nlohmann::ordered_json(port.number)
                                                  : nlohmann::ordered_json(nullptr)},
                       {"device", port.device},
                       {"driver", driver},
                       {"maker", maker},
                       {"hindrance", hindrance},
                       {"state", state}});
    lines += fmt::format("{:<6}  {:<20}  {:<12}  {:<24}  {}\n",
                         port.number > 0 ? "COM" + std::to_string(port.number) : "-",
                         printable(port.device), driver.empty() ? "-" : printable(driver),
                         maker.empty() ? "-" : printable(maker), printable(state));
  }
  if (options.json) {
    printJson(objects);
  } else if (objects.empty()) {
    complain("this machine has no serial port; connect an adapter");
  } else {
    print("Number  Device                Driver        Maker                     State\n{}", lines);
  }
  return objects.empty() ? ExitStatus::failed : ExitStatus::done;
}

}  // namespace

void addPortList(const CommandLine& line, CLI::App& group) {
  addCommand(line, group, "ports", "List the machine's serial ports", [line](CLI::App& command) {
    addJson(line, command);
    command.footer(
        "A device without a number becomes COM1 with --com 1=DEVICE. No port is opened.");
    command.callback(
        [line] { line.fileCommand = [&options = line.options] { return printPorts(options); }; });
  });
}

}  // namespace touch
