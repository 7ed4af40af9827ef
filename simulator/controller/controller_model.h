#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string_view>

#include "simulator/controller/faults.h"
#include "simulator/controller/parameter_memory.h"
#include "simulator/controller/pointer_settings.h"
#include "simulator/panel/measured_panel.h"
#include "simulator/panel/panel.h"

namespace touch::simulator {

enum class Link : std::uint8_t { rs232, usb };

/// A kind of controller as data. To add one, write a file with its model and enter it in
/// controllers.h. Replies are at most 10 bytes long, because that is what the driver's users read.
struct ControllerModel {
  std::string_view name;  ///< as the driver lists it: less than 20 characters
  Link link = Link::rs232;
  std::string_view identity;  ///< answer to "OI", at most 8 characters
  std::string_view unitType;  ///< answer to "UT", at most 8 characters
  std::string_view
      queryReply;  ///< answer to "Uu" as it stands, without start byte and carriage return
  std::chrono::milliseconds
      thinkingTime{};  ///< from the end of a command to the begin of its answer
  PanelTraits panel;
  std::span<const FactoryWord> factoryWords;
  FaultSet faults;  ///< those that it has when new
  PointerSettings settings{};
  bool reportsTouches = true;
  std::chrono::nanoseconds reportInterval = std::chrono::milliseconds(10);
  /// What its panel does beside `panel`, with the calibration that `factoryWords` are; may be null.
  const MeasuredPanel* measured = nullptr;
};

}  // namespace touch::simulator
