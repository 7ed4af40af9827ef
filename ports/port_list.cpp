#include "ports/port_list.h"

#include <algorithm>
#include <utility>

#include "ports/port_holders.h"
#include "ports/spare_numbers.h"
#include "support/text/language.h"

namespace touch {

std::vector<ListedPort> listedPorts(const ComPorts& ports) {
  std::vector<ListedPort> listed;
  for (const int number : ports.assignedNumbers()) {
    const bool isSpare = number >= firstSpareNumber && !ports.isGiven(number);
    std::string device = ports.device(number);
    if (!isSpare || !device.empty()) listed.push_back({number, std::move(device), !isSpare});
  }
  for (const std::string& device : serialDevices()) {
    if (std::ranges::find(listed, device, &ListedPort::device) != listed.end()) continue;
    ListedPort port{0, device, false};
    for (int number = ComPorts::greatestNumber; number >= 1; --number)
      if (ports.device(number) == device) port.number = number;
    listed.push_back(port);
  }
  return listed;
}

namespace {

PortFacts factsOf(const ListedPort& port) {
  PortFacts facts{port, portDriver(port.device), portMaker(port.device), {}, {}};
  PortHolders holders;
  if (!portExists(port.device)) {
    facts.hindrance = say("ports", "there is no such device");
  } else if (!portPermission(port.device).granted) {
    facts.hindrance = say("ports", "you may not open it");
  } else {
    holders = portHolders(port.device);
    // Who serves it is what is talked to.
    std::erase_if(holders.known, [](const PortHolder& holder) { return holder.isOtherEnd; });
    if (!holders.known.empty())
      facts.hindrance = filled(say("ports", "in use by %1"), {holders.names()});
  }
  facts.state = !facts.hindrance.empty() ? facts.hindrance
                : holders.complete
                    ? say("ports", "free")
                    : say("ports", "free, unless a program has it that you may not see");
  return facts;
}

}  // namespace

std::vector<PortFacts> portFacts(const ComPorts& ports) {
  std::vector<PortFacts> facts;
  for (const ListedPort& port : listedPorts(ports)) {
    if (port.device.empty()) continue;
    facts.push_back(factsOf(port));
  }
  return facts;
}

std::vector<std::string> pluggedIn(const std::vector<PortFacts>& before,
                                   const std::vector<PortFacts>& now) {
  std::vector<std::string> devices;
  for (const PortFacts& one : now) {
    const bool wasThere = std::ranges::any_of(
        before, [&one](const PortFacts& other) { return other.port.device == one.port.device; });
    if (!wasThere) devices.push_back(one.port.device);
  }
  return devices;
}

std::vector<KnownHardware> knownHardware(const ComPorts& ports) {
  std::vector<KnownHardware> known;
  for (const ListedPort& port : listedPorts(ports)) {
    if (std::string hardware = portHardware(port.device); !hardware.empty())
      known.push_back({port, std::move(hardware)});
  }
  return known;
}

std::optional<ListedPort> cameBackAs(const std::string& hardware,
                                     const std::vector<KnownHardware>& before,
                                     const std::vector<KnownHardware>& now) {
  std::optional<ListedPort> found;
  for (const auto& [port, its] : now) {
    const bool wasThere = std::ranges::any_of(
        before, [&device = port.device](const auto& other) { return other.port.device == device; });
    if (wasThere || its != hardware) continue;
    if (found) return std::nullopt;
    found = port;
  }
  return found;
}

}  // namespace touch
