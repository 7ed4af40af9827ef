#pragma once

#include "simulator/driver/simulated_driver.h"
#include "tests/doubles/test.h"

namespace touch::simulator {

inline const std::string serialName = "RS232 DEVICE 1";
inline const std::string usbName = "USB DEVICE 2";
inline const std::string silentName = "USB DEVICE 3";

inline std::string framed(std::string_view text) {
  return '\x01' + std::string(text) + '\r';
}

/// A simulated driver whose time stands until a test moves it on.
class DriverBench : public ::testing::Test {
 protected:
  DriverBench() { request("clock manual"); }

  /// The answer to a request that must be done.
  std::string request(const std::string& text) {
    const auto answer = driver.answer(text);
    EXPECT_TRUE(answer.done) << text << ": " << answer.text;
    return answer.text;
  }
  void wait(int milliseconds) { request("advance " + std::to_string(milliseconds)); }
  void click(Point place) {
    request("touch " + std::to_string(place.x) + ' ' + std::to_string(place.y));
    request("lift");
  }
  double meanError(const std::string& name) { return std::stod(request("error " + name)); }

  std::int32_t open(const std::string& name) { return driver.OpenController(name.c_str()); }
  void write(std::int32_t handle, std::string_view bytes) {
    driver.WriteBuffer(handle, reinterpret_cast<const std::uint8_t*>(bytes.data()),
                       static_cast<std::int32_t>(bytes.size()));
  }
  std::string read(std::int32_t handle) {
    std::array<std::uint8_t, 10> buffer{};
    const auto count = driver.ReadBuffer(handle, buffer.data(), 10);
    return count < 0 ? "error" : std::string(buffer.begin(), buffer.begin() + count);
  }
  std::string ask(std::int32_t handle, std::string_view bytes) {
    write(handle, bytes);
    wait(100);
    return read(handle);
  }

  SimulatedDriver driver;
};

}  // namespace touch::simulator
