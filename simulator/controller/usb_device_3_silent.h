#pragma once

#include "simulator/controller/controller_model.h"

namespace touch::simulator {

/// Opens like any other, but never answers and never feels a touch.
inline constexpr ControllerModel usbDevice3Silent{.name = "USB DEVICE 3",
                                                  .link = Link::usb,
                                                  .identity = {},
                                                  .unitType = {},
                                                  .queryReply = {},
                                                  .thinkingTime = {},
                                                  .panel = {},
                                                  .factoryWords = {},
                                                  .faults = {Fault::noAnswer}};

}  // namespace touch::simulator
