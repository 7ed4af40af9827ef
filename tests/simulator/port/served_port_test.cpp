#include "simulator/port/served_port.h"

#include <dlfcn.h>

#include <mutex>
#include <thread>

#include "core/driver/nexapi.h"
#include "serial/port/asio_serial_port.h"
#include "simulator/controller/controllers.h"
#include "simulator/controller/requests.h"
#include "tests/simulator/driver/driver_bench.h"

namespace touch::simulator {
namespace {

/// A program's serial port with a simulated controller at its end.
struct Device {
  explicit Device(const std::string& path) {
    ComPorts ports;
    EXPECT_EQ(test::whyNot(ports.assign("1=" + path)), "");
    port = std::make_unique<AsioSerialPort>(ports);
    EXPECT_EQ(test::whyNot(port->open()), "") << path;
  }

  /// `count` bytes or more; fewer when the line hangs up, or when they do not come although given
  /// ample time.
  std::string receive(std::size_t count) const {
    using Clock = std::chrono::steady_clock;
    std::string received;
    const auto end = Clock::now() + std::chrono::seconds(10);
    while (received.size() < count && port->isOpen() && Clock::now() < end) {
      const auto bytes = port->readAll();
      received.append(bytes.begin(), bytes.end());
      std::this_thread::yield();
    }
    return received;
  }
  bool hasHungUp() const {
    receive(std::string::npos);
    return port->lost().has_value();
  }

  std::unique_ptr<AsioSerialPort> port;
};

class SerialPorts : public DriverBench {
 protected:
  std::string port() { return request("port " + serialName); }
  std::int32_t handle = open(serialName);
};

TEST_F(SerialPorts, existWhileTheDriverHasLetGo) {
  ASSERT_EQ(driver.CloseCOMPort(handle), 1);
  const std::string path = port();
  EXPECT_EQ(driver.CloseCOMPort(handle), 1);
  EXPECT_EQ(port(), path) << "letting go twice changes nothing";
  EXPECT_EQ(ask(handle, framed("UT")), "") << "the driver has no line to the controller";
  driver.CloseController(handle);
  const Device device(path);
  request("touch 0.5 0.5");
  for (int i = 0; i < 20; ++i)
    wait(10'000);  // without a reader
  request("lift");

  handle = open(serialName);
  EXPECT_EQ(driver.ReopenCOMPort(handle), 1);
  EXPECT_EQ(port(), "");
  EXPECT_TRUE(device.hasHungUp());
  EXPECT_EQ(ask(handle, framed("UT")), framed("QRMV0301"));
  EXPECT_EQ(driver.CloseCOMPort(open(usbName)), 0);
}

TEST_F(SerialPorts, hangUpWhenTheControllerIsPulledOut) {
  driver.CloseCOMPort(handle);
  const std::string path = port();
  const Device device(path);
  request("fault unplugged on " + serialName);
  EXPECT_TRUE(device.hasHungUp());
  EXPECT_EQ(port(), "");
  request("fault unplugged off " + serialName);
  EXPECT_TRUE(std::filesystem::exists(port()));
  request("reset");
  EXPECT_EQ(port(), "");
}

TEST(ServedPorts, tellTheControllerHowTheProgramWritesItsBytes) {
  std::mutex guard;
  SimulatedClock clock;
  SimulatedController controller{rs232Device1};
  controller.connect(LineUser::port, clock.now());
  const auto line = ServedPort::open({controller, clock, guard});
  ASSERT_TRUE(line);
  const Device device(line->path());
  const std::tuple<const char*, LineFormat, int> cases[] = {
      {"9600,n,7,2", LineFormat::sevenN2, 9600},
      {"9600,n,8,1", LineFormat::eightN1, 9600},
      {"115200,n,8,1", LineFormat::eightN1, 115200},
      {"230400,e,7,1", {7, LineFormat::Parity::even, 1}, 230400},
      {"2400,o,8,2", {8, LineFormat::Parity::odd, 2}, 2400}};
  for (const auto& [settings, format, speed] : cases) {
    EXPECT_EQ(test::whyNot(device.port->setSettings(settings)), "");
    {
      const std::lock_guard lock(guard);
      controller.speak(format);
      controller.setSpeed(speed);
    }
    device.port->write(std::vector<std::uint8_t>{0x01, 'U', 'T', 0x0D});
    EXPECT_EQ(device.receive(10), framed("QRMV0301")) << settings;
  }
}

TEST(ServedPorts, goWithTheLibraryWhenItIsUnloaded) {
  std::optional<Device> device;
  {
    const auto library = std::move(*NexapiDriver::bind(SIMULATOR_LIBRARY));
    library->CloseCOMPort(library->OpenController(serialName.c_str()));
    const auto simulate = std::bit_cast<SimulateFunction>(library->extraExport("NexapiSimulate"));
    std::array<char, 64> port{};
    ASSERT_EQ(simulate("port RS232 DEVICE 1", port.data(), 64), 1);
    device.emplace(port.data());
    simulate("touch 0.5 0.5", nullptr, 0);
  }
  EXPECT_EQ(dlopen(SIMULATOR_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
  EXPECT_TRUE(device->hasHungUp());
}

}  // namespace
}  // namespace touch::simulator
