#include "core/driver/driver_settings.h"

#include "core/driver/connection.h"

namespace touch {

namespace {

constexpr std::chrono::milliseconds defaultRightClick{1000};

int lowByte(std::int32_t value) {
  return value & 0xFF;
}

void readOthers(Driver& driver, std::int32_t handle, DriverSettings& settings) {
  settings.rightClick = driver.GetRightClickEnabled(handle) != 0;
  settings.doubleClickSpeed = Deciseconds(lowByte(driver.GetDoubleClickSpeed(handle)));
  settings.doubleClickArea = lowByte(driver.GetDoubleClickArea(handle));
  settings.timingRead = Connection::isHandle(handle);
  settings.reporting = driver.GetReportStatus(handle) != 0;
  settings.doubleClick = driver.GetDoubleClickEnabled(handle) != 0;
  settings.upSound = driver.GetUpSoundStatus(handle) != 0;
  settings.downSound = driver.GetDownSoundStatus(handle) != 0;
  settings.rotation = lowByte(driver.GetRotation(handle));
}

int readTouchMode(Driver& driver, std::int32_t handle) {
  const int mode = lowByte(driver.GetReportMode(handle));
  if (mode >= 1 && mode <= 3) return mode;
  // Mode 1 is what every driver can do, and "Drawing" is what such a controller then does: shown
  // and written differ.
  driver.SetReportMode(handle, 1);
  return 2;
}

std::chrono::milliseconds readRightClickTime(Driver& driver, std::int32_t handle) {
  const std::chrono::milliseconds time(driver.GetRightClickTime(handle));
  if (time >= shortestRightClick && time <= longestRightClick) return time;
  driver.SetRightClickTime(handle, std::int32_t{defaultRightClick.count()});
  return defaultRightClick;
}

}  // namespace

void readset(const Access& access, DriverSettings& settings) {
  Connection connection(access);
  Driver& driver = access.driver;
  const std::int32_t handle = connection.handle();
  driver.ReopenCOMPort(handle);

  settings.touchMode = readTouchMode(driver, handle);
  settings.rightClickTime = readRightClickTime(driver, handle);
  readOthers(driver, handle, settings);
}

std::optional<DriverSettings> reportedSettings(const Access& access) {
  Connection connection(access);
  if (!connection.isOpen()) return std::nullopt;
  Driver& driver = access.driver;
  const std::int32_t handle = connection.handle();

  DriverSettings settings;
  settings.touchMode = lowByte(driver.GetReportMode(handle));
  settings.rightClickTime = std::chrono::milliseconds(driver.GetRightClickTime(handle));
  readOthers(driver, handle, settings);
  return settings;
}

}  // namespace touch
