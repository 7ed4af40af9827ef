#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/com_ports.h"

namespace touch {

/// A serial device of this machine, or one that the user has named.
struct ListedPort {
  int number = 0;           ///< its COM port number; 0: none leads to it
  std::string device;       ///< empty: it is a simulated controller's, and not there now
  bool isAssigned = false;  ///< its number is not the platform's own
  friend bool operator==(const ListedPort&, const ListedPort&) = default;
};

/// What there is to know about one without opening it.
struct PortFacts {
  ListedPort port;
  std::string driver;     ///< of the kernel; empty without one
  std::string maker;      ///< what it calls the hardware
  std::string hindrance;  ///< what keeps this user from opening it; empty: nothing that is known
  std::string state;      ///< that, or that it is free, as far as this user may see
  friend bool operator==(const PortFacts&, const PortFacts&) = default;
};

/// Those with an assigned number first, then those with hardware behind them.
std::vector<ListedPort> listedPorts(const ComPorts& ports);
/// The same with what there is to know; without those that are not there now.
std::vector<PortFacts> portFacts(const ComPorts& ports);
/// The devices that are in `now` and were not in `before`.
std::vector<std::string> pluggedIn(const std::vector<PortFacts>& before,
                                   const std::vector<PortFacts>& now);

/// A port whose hardware can be told from other hardware, see portHardware.
struct KnownHardware {
  ListedPort port;
  std::string hardware;
};
std::vector<KnownHardware> knownHardware(const ComPorts& ports);
/// The port at which `hardware` is in `now`: the only one with it that was not there `before`.
std::optional<ListedPort> cameBackAs(const std::string& hardware,
                                     const std::vector<KnownHardware>& before,
                                     const std::vector<KnownHardware>& now);

}  // namespace touch
