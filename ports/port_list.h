#pragma once

#include <string>
#include <vector>

#include "ports/com_ports.h"

namespace touch {

/// A serial device of this machine, or one that the user has named.
struct ListedPort {
  int number = 0;           ///< its COM port number; 0: none leads to it
  std::string device;       ///< empty: it is a simulated controller's, and not there now
  bool isAssigned = false;  ///< its number is not the platform's own
};

/// Those with an assigned number first, then those with hardware behind them.
std::vector<ListedPort> listedPorts(const ComPorts& ports);

}  // namespace touch
