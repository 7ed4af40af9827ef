#include "app/touchctl/commands/serial/serial_search.h"

#include <nlohmann/json.hpp>

#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "serial/debugger/port_search.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

using nlohmann::ordered_json;

ordered_json jsonOf(const ControllerSearch& search) {
  auto leftOut = ordered_json::array();
  for (const auto& [number, device, reason] : search.leftOut) {
    leftOut.push_back({{"port", number > 0 ? ordered_json(number) : ordered_json(nullptr)},
                       {"device", toUtf8(device)},
                       {"reason", toUtf8(reason)}});
  }
  const auto& found = search.found;
  return {{"port", found ? ordered_json(found->port) : ordered_json(nullptr)},
          {"line", found ? ordered_json(describe(found->line)) : ordered_json(nullptr)},
          {"complete", search.isComplete},
          {"notAsked", leftOut}};
}

}  // namespace

ExitStatus findEverywhere(const SerialWork& work) {
  const ControllerSearch search =
      searchEverywhere(work.port, work.shell.comPorts, [&work](const SearchProgress& progress) {
        if (interrupted()) return work.port.gate().cutShort();
        complain(describe(progress));
      });
  if (const std::string sharing = work.port.serial().sharedWith(); !sharing.empty())
    complain(sharing);
  if (work.shell.json) {
    printJson(jsonOf(search));
  } else if (search.found) {
    print("COM{}  {}\n", search.found->port, describe(search.found->line));
  }
  if (!search.found) {
    complain(search.outcome());
    return ExitStatus::failed;
  }
  for (const PortLeftOut& port : search.leftOut)
    complain(port.reason);
  return ExitStatus::done;
}

}  // namespace touch
