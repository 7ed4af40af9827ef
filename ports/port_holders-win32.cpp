#include <windows.h>

#include <setupapi.h>

#include <array>
#include <optional>
#include <string_view>

#include "ports/com_ports.h"
#include "ports/pipe-win32.h"
#include "ports/port_holders.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

/// "COM3" of "\\.\COM3", which is how ports above COM9 are opened.
std::string nameOf(const std::string& device) {
  constexpr std::string_view deviceSpace = "\\\\.\\";
  return device.starts_with(deviceSpace) ? device.substr(deviceSpace.size()) : device;
}

/// What the kernel calls the device; empty when there is none.
std::string kernelNameOf(const std::string& device) {
  std::array<char, 1024> target{};
  if (QueryDosDeviceA(nameOf(device).c_str(), target.data(),
                      static_cast<DWORD>(target.size() - 1)) == 0) {
    return {};
  }
  return toUtf8(target.data());
}

/// The devices that the device manager lists as ports.
class ListedDevices {
 public:
  ListedDevices() : list_(SetupDiGetClassDevsW(&ports, nullptr, nullptr, DIGCF_PRESENT)) {}
  ListedDevices(const ListedDevices&) = delete;
  ListedDevices& operator=(const ListedDevices&) = delete;
  ~ListedDevices() {
    if (list_ != INVALID_HANDLE_VALUE) SetupDiDestroyDeviceInfoList(list_);
  }

  std::optional<SP_DEVINFO_DATA> find(std::string_view portName) const {
    if (list_ == INVALID_HANDLE_VALUE) return std::nullopt;
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD index = 0; SetupDiEnumDeviceInfo(list_, index, &device) != 0; ++index)
      if (nameIn(device) == portName) return device;
    return std::nullopt;
  }

  std::string property(SP_DEVINFO_DATA& device, DWORD which) const {
    std::array<wchar_t, 256> text{};
    if (SetupDiGetDeviceRegistryPropertyW(list_, &device, which, nullptr,
                                          reinterpret_cast<BYTE*>(text.data()),
                                          sizeof text - sizeof(wchar_t), nullptr) == 0) {
      return {};
    }
    const auto whole = std::filesystem::path(text.data()).u8string();
    return {whole.begin(), whole.end()};
  }

 private:
  static constexpr GUID ports{
      0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

  std::string nameIn(SP_DEVINFO_DATA& device) const {
    const HKEY key =
        SetupDiOpenDevRegKey(list_, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) return {};
    std::array<char, 32> name{};
    DWORD size = name.size() - 1;
    const bool isRead = RegQueryValueExA(key, "PortName", nullptr, nullptr,
                                         reinterpret_cast<BYTE*>(name.data()), &size) == 0;
    RegCloseKey(key);
    return isRead ? name.data() : "";
  }

  HDEVINFO list_;
};

std::string propertyOf(const std::string& portName, DWORD which) {
  const ListedDevices devices;
  auto device = devices.find(portName);
  return device ? devices.property(*device, which) : std::string();
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
  if (isPipeName(device)) return pipeExists(device);
  return !kernelNameOf(device).empty();
}

std::string portDriver(const std::string& device, const std::filesystem::path&) {
  std::string service = propertyOf(nameOf(device), SPDRP_SERVICE);
  return service.empty() ? kernelNameOf(device) : service;
}

std::string portMaker(const std::string& device, const std::filesystem::path&) {
  std::string name = propertyOf(nameOf(device), SPDRP_FRIENDLYNAME);
  // "USB Serial Port (COM3)"
  const std::string number = " (" + nameOf(device) + ')';
  if (name.ends_with(number)) name.resize(name.size() - number.size());
  return name;
}

// An adapter keeps its name here when it is plugged in again.
std::string portHardware(const std::string&, const std::filesystem::path&) {
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
