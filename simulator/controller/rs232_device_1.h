#pragma once

#include <array>

#include "simulator/controller/controller_model.h"

namespace touch::simulator {

/// Four wires: X+, X-, Y+, Y-, each with its channel (high byte) and I/O bit (low byte).
inline constexpr std::array rs232Device1Words{
    FactoryWord{0x00, 0x0301}, FactoryWord{0x01, 0x1A20}, FactoryWord{0x08, 0x0064},
    FactoryWord{0x20, 0x2580}, FactoryWord{0x80, 0x0004}, FactoryWord{0x81, 0x0000},
    FactoryWord{0x82, 0x0101}, FactoryWord{0x83, 0x0202}, FactoryWord{0x84, 0x0303}};

/// The newer model, on a serial line.
inline constexpr ControllerModel rs232Device1{.name = "RS232 DEVICE 1",
                                              .link = Link::rs232,
                                              .identity = "M0130100",
                                              .unitType = "QRMV0301",
                                              .queryReply = "UIQRMV0302",
                                              .thinkingTime = std::chrono::milliseconds(3),
                                              .panel = {.offsetX = 0.065,
                                                        .offsetY = 0.055,
                                                        .gainX = 0.89,
                                                        .gainY = 0.87,
                                                        .skew = 0.022,
                                                        .noise = 0.0008},
                                              .factoryWords = rs232Device1Words,
                                              .faults = {}};

}  // namespace touch::simulator
