#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ports/com_ports.h"
#include "serial/debugger/debugger_port.h"

namespace touch {

/// A port that was not asked, or not to the end.
struct PortLeftOut {
  int number = 0;  ///< 0: no COM port number leads to it
  std::string device;
  std::string reason;  ///< with the port's name, as sentences
};

/// How a search of all of the machine's ports ended.
struct ControllerSearch {
  std::optional<DebuggerPort::Place> found;
  std::vector<PortLeftOut> leftOut;
  bool isComplete = true;  ///< false: it was cut short

  /// All of it, as sentences.
  std::string outcome() const;
};

/// How far it is.
struct SearchProgress {
  DebuggerPort::Place place;
  std::size_t number = 0;  ///< from 1
  std::size_t all = 0;
};
/// "Asking on COM1, 9600,n,8,1 … (1 of 168)".
std::string describe(const SearchProgress& progress);

/// Asks on all ports that can be opened, at all settings: first the likely settings on each port,
/// then the others. Where a controller answers the port stays open, else none does. `onAsking` is
/// told before each place is asked; the search ends early when the port's gate is cut short.
ControllerSearch searchEverywhere(DebuggerPort& port, const ComPorts& comPorts,
                                  const std::function<void(const SearchProgress&)>& onAsking);

}  // namespace touch
