#pragma once

#include <array>

#include "simulator/controller/controller_model.h"

namespace touch::simulator {

/// Five wires: UL, UR, LL, LR and the sensor's, each with its channel (high byte) and I/O bit (low
/// byte).
inline constexpr std::array usbDevice2Words{
    FactoryWord{0x00, 0x0100}, FactoryWord{0x01, 0x1018}, FactoryWord{0x08, 0x0050},
    FactoryWord{0x80, 0x0005}, FactoryWord{0x81, 0x0000}, FactoryWord{0x82, 0x0101},
    FactoryWord{0x83, 0x0202}, FactoryWord{0x84, 0x0303}, FactoryWord{0x85, 0x0404}};

/// The first model, on USB. Its panel is mounted a little differently.
inline constexpr ControllerModel usbDevice2{.name = "USB DEVICE 2",
                                            .link = Link::usb,
                                            .identity = "M0110100",
                                            .unitType = "QMRV1000",
                                            .queryReply = "UIQMRV1001",
                                            .thinkingTime = std::chrono::milliseconds(2),
                                            .panel = {.offsetX = 0.015,
                                                      .offsetY = 0.08,
                                                      .gainX = 0.91,
                                                      .gainY = 0.86,
                                                      .skew = 0.03,
                                                      .noise = 0.001},
                                            .factoryWords = usbDevice2Words,
                                            .faults = {}};

}  // namespace touch::simulator
