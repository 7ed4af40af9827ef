#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/exchange/frame.h"
#include "core/messages/messages.h"

namespace touch {

class Driver;
class Clock;

/// What the model probe found; the numbers are those that the connected flag has always had.
enum class ModelProbe : std::int16_t { newerModel = 0, other = -1 };

/// The debugger's three command sets, which also tell how touch reports are decoded.
enum class CommandSet : std::int16_t { m01 = 0, e02 = 1, quorvane = 2 };

/// A 16-bit word of the controller's parameter memory.
struct ParameterWord {
  std::uint8_t high = 0;
  std::uint8_t low = 0;
  friend bool operator==(const ParameterWord&, const ParameterWord&) = default;
};

/// The state that all screens share: made once in main() and passed by reference.
struct Session {
  std::string controllerName;                ///< the key by which a controller is opened
  std::int32_t handle = 0;                   ///< the last handle; 1 or less: the open failed
  ModelProbe connected = ModelProbe::other;  ///< result of the last model probe
  Frame outputFrame;                         ///< the frame written last
  MessageTable messages;
  CommandSet commandSet = CommandSet::quorvane;
  int calibrationPoints = 0;  ///< 2, 3, 5 or 9; 0: raw calibration could not be entered
};

/// What every action on a controller needs: the shared state, the driver, and a way to wait.
struct Access {
  Session& session;
  Driver& driver;
  Clock& clock;
};

}  // namespace touch
