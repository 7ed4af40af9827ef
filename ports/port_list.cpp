#include "ports/port_list.h"

#include <algorithm>

#include "ports/port_holders.h"

namespace touch {

std::vector<ListedPort> listedPorts(const ComPorts& ports) {
  constexpr int lastSearched = 16;
  std::vector<ListedPort> listed;
  for (const int number : ports.assignedNumbers())
    listed.push_back({number, ports.device(number), true});
  for (const std::string& device : serialDevices()) {
    if (std::ranges::find(listed, device, &ListedPort::device) != listed.end()) continue;
    ListedPort port{0, device, false};
    for (int number = lastSearched; number >= 1; --number)
      if (ports.device(number) == device) port.number = number;
    listed.push_back(port);
  }
  return listed;
}

}  // namespace touch
