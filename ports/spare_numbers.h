#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "ports/com_ports.h"

namespace touch {

inline constexpr int firstSpareNumber = 17;  // behind those that are looked through one by one
inline constexpr std::size_t spareNumbers = 16;

/// Gives each serial device that no number leads to one of its own, from the first spare one on, in
/// the order in which they are seen. It keeps that as long as any copy of `ports` lives, also when
/// it is unplugged and plugged in again. `devices` lists those that are there. Does nothing where
/// the platform itself numbers all devices.
void addSpareNumbers(ComPorts& ports, std::function<std::vector<std::string>()> devices = nullptr);

}  // namespace touch
