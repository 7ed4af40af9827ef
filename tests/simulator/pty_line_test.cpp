#include "simulator/pty_line.h"

#include <mutex>
#include <string>
#include <thread>

#include "simulator/controllers.h"
#include "tests/simulator/driver_bench.h"
#include "tests/simulator/serial_device.h"

namespace touch::simulator {
namespace {

class SerialPorts : public DriverBench {
 protected:
  std::string port() { return request(std::string("port ") + serialName); }
  std::int32_t handle = driver.OpenController(serialName);
};

TEST_F(SerialPorts, existWhileTheDriverHasLetGo) {
  EXPECT_EQ(port(), "");
  ASSERT_EQ(driver.CloseCOMPort(handle), 1);
  const std::string path = port();
  EXPECT_TRUE(SerialDevice(path).isOpen());
  EXPECT_EQ(driver.CloseCOMPort(handle), 1);
  EXPECT_EQ(port(), path) << "letting go twice changes nothing";
  EXPECT_EQ(ask(handle, framed("UT")), "") << "the driver has no line to the controller";
  EXPECT_NE(driver.IsPenUp(handle), 0);
  driver.CloseController(handle);
  const SerialDevice device(path);
  EXPECT_TRUE(device.isOpen()) << "the port outlives the handle";

  handle = driver.OpenController(serialName);
  EXPECT_EQ(driver.ReopenCOMPort(handle), 1);
  EXPECT_EQ(port(), "");
  EXPECT_TRUE(device.hasHungUp());
  EXPECT_EQ(ask(handle, framed("UT")), framed("QRMV0301"));
  EXPECT_EQ(driver.CloseCOMPort(driver.OpenController(usbName)), 0);
}

TEST_F(SerialPorts, carryCommandsAndAnswers) {
  request("clock real");
  driver.CloseCOMPort(handle);
  const SerialDevice device(port());
  ASSERT_TRUE(device.isOpen());
  ASSERT_TRUE(device.send("noise" + framed("UT") + "\x01P"));
  EXPECT_EQ(device.receive(10), framed("QRMV0301"));
  ASSERT_TRUE(device.send("N81\x0D"));
  EXPECT_EQ(device.receive(3), framed("0"));
  ASSERT_TRUE(device.send(std::string("Uo2345678S")));
  EXPECT_EQ(device.receive(10), "UIoINHOUSE");
}

TEST_F(SerialPorts, streamReportsAtThePaceOfTheLine) {
  driver.CloseCOMPort(handle);
  const SerialDevice device(port());
  request("touch 0 0");
  wait(50);
  request("lift");
  wait(50);
  // At 0, 10, ... 50 ms, and one at the end.
  const std::string stream = device.receive(35);
  ASSERT_EQ(stream.size(), 35U);
  EXPECT_EQ(stream[25], '\xD8');
  EXPECT_EQ(stream[30], '\x98');
}

TEST_F(SerialPorts, hangUpWhenTheControllerIsPulledOut) {
  driver.CloseCOMPort(handle);
  const std::string path = port();
  const SerialDevice device(path);
  request(std::string("fault unplugged on ") + serialName);
  EXPECT_EQ(device.receive(1), "");
  EXPECT_FALSE(SerialDevice(path).isOpen());
  request(std::string("fault unplugged off ") + serialName);
  EXPECT_TRUE(SerialDevice(port()).isOpen());
  request("reset");
  EXPECT_EQ(port(), "");
}

TEST_F(SerialPorts, surviveAReaderThatDoesNotRead) {
  driver.CloseCOMPort(handle);
  const SerialDevice device(port());
  request("touch 0.5 0.5");
  for (int i = 0; i < 20; ++i)
    wait(10'000);
  request("lift");
  EXPECT_EQ(driver.ReopenCOMPort(handle), 1);
}

TEST(PtyLines, tellTheControllerHowTheProgramWritesItsBytes) {
  std::mutex guard;
  SimulatedClock clock;
  SimulatedController controller{rs232Device1};
  controller.connect(LineUser::port, clock.now());
  controller.speak(LineFormat::sevenN2);
  const auto line = PtyLine::open(controller, clock, guard);
  ASSERT_TRUE(line);
  const SerialDevice device(line->path());
  device.setTwoStopBits(true);
  ASSERT_TRUE(device.send(framed("UT")));
  EXPECT_EQ(device.receive(10), framed("QRMV0301"));
  ASSERT_TRUE(device.send(framed("PN81")));
  const auto converted = [&] {
    const std::lock_guard lock(guard);
    return controller.format() == LineFormat::eightN1;
  };
  while (!converted())
    std::this_thread::yield();
  device.setTwoStopBits(false);
  ASSERT_TRUE(device.send(framed("UT")));
  // Whether the answer to PN81 comes through depends on when the stop bits changed.
  std::string received;
  for (std::string next = " "; !next.empty() && !received.ends_with(framed("QRMV0301"));) {
    next = device.receive(1);
    received += next;
  }
  EXPECT_TRUE(received.ends_with(framed("QRMV0301"))) << received;
}

}  // namespace
}  // namespace touch::simulator
