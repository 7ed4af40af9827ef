#include <windows.h>

#include <array>

#include "ports/com_ports.h"
#include "ports/port_holders.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

/// "COM3" of "\\.\COM3", which is how ports above COM9 are opened.
std::string nameOf(const std::string& device) {
  constexpr std::string_view deviceSpace = "\\\\.\\";
  return device.starts_with(deviceSpace) ? device.substr(deviceSpace.size()) : device;
}

}  // namespace

PortHolders portHolders(const std::string&) {
  // Windows tells nobody who has a device open.
  return {};
}

PortPermission portPermission(const std::string&) {
  // Every user may open a serial port here.
  return {.granted = true};
}

bool portExists(const std::string& device) {
  return !portDriver(device).empty();
}

std::string portDriver(const std::string& device, const std::filesystem::path&) {
  std::array<char, 1024> target{};
  if (QueryDosDeviceA(nameOf(device).c_str(), target.data(),
                      static_cast<DWORD>(target.size() - 1)) == 0) {
    return {};
  }
  return toUtf8(target.data());
}

// The device manager knows; a port itself does not tell.
std::string portMaker(const std::string&, const std::filesystem::path&) {
  return {};
}

std::vector<std::string> serialDevices(const std::filesystem::path&) {
  std::vector<std::string> found;
  for (int number = 1; number <= ComPorts::greatestNumber; ++number) {
    const std::string device = "COM" + std::to_string(number);
    if (portExists(device)) found.push_back(device);
  }
  return found;
}

}  // namespace touch
