#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/session.h"

namespace touch {

class SerialPort;

/// What the search of the COM ports came to.
struct PortSearch {
  std::optional<int> port{};  ///< the COM port on which a controller answered
  bool setUp = false;         ///< that controller acknowledged its set-up
  bool cancelled = false;     ///< the user broke the search off; nothing is known then
  std::string noneOpened{};   ///< when no port could be opened at all: why not the last one tried
  std::string shared{};  ///< who else takes what comes in on ports that were tried, in sentences
  friend bool operator==(const PortSearch&, const PortSearch&) = default;
};

/// Told the number of each COM port before it is tried; returns false to break the search off.
using PortProgress = std::function<bool(int port)>;

/// Looks for an RS232 controller that the driver does not report: makes the driver let go of its
/// COM port, then asks COM16 down to COM1 "UT" and sets the first controller that answers up. Ports
/// that cannot be opened are passed over. The serial port is closed afterwards; the driver is not
/// told to take its port again.
PortSearch searchComPorts(const Access& access, SerialPort& serial,
                          const PortProgress& progress = nullptr);

/// What to tell the user; nothing when it was the user who broke the search off.
std::string describe(const PortSearch& search);

}  // namespace touch
