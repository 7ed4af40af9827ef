#pragma once

#include <array>

#include "simulator/controller/rs232_device_1.h"
#include "simulator/controller/usb_device_2.h"
#include "simulator/controller/usb_device_3_silent.h"

namespace touch::simulator {

/// The simulated controllers in the order in which the driver lists them.
inline constexpr std::array controllerModels{rs232Device1, usbDevice2, usbDevice3Silent};

}  // namespace touch::simulator
