#include "serial/asio_serial_port.h"

#include <gtest/gtest.h>
#include <sys/file.h>

#include <functional>
#include <numeric>
#include <tuple>

#include "tests/serial/pseudo_terminal.h"

namespace touch {
namespace {

using Bytes = std::vector<std::uint8_t>;
using namespace std::chrono_literals;

ComPorts behindCom3(const std::string& device) {
  ComPorts ports;
  EXPECT_EQ(ports.assign("3=" + device), std::nullopt);
  return ports;
}

class OpenPort : public testing::Test {
 protected:
  OpenPort() {
    port.selectPort(3);
    EXPECT_EQ(port.open(), std::nullopt);
  }

  test::PseudoTerminal terminal;
  AsioSerialPort port{behindCom3(terminal.path()), 20ms};
  const Bytes frame{0x01, 'U', 'T', 0x0D};
};

TEST_F(OpenPort, PassesEveryByteUnchangedBothWays) {
  Bytes all(256);
  std::iota(all.begin(), all.end(), std::uint8_t{0});
  port.write(all);
  EXPECT_EQ(terminal.receiveUntil(all), all);
  terminal.send(all);
  EXPECT_EQ(port.inBufferCount(), all.size());
  EXPECT_EQ(port.readAll(), all);
  EXPECT_EQ(port.inBufferCount(), 0u);
  EXPECT_EQ(port.readAll(), Bytes());
  port.write({});
  EXPECT_TRUE(port.isOpen());
}

TEST_F(OpenPort, ClearsItsInputAndNotWithItsOutput) {
  terminal.send(frame);
  port.clearOutput();
  EXPECT_EQ(port.inBufferCount(), frame.size());
  port.clearInput();
  EXPECT_EQ(port.inBufferCount(), 0u);
}

TEST_F(OpenPort, StartsEmptyAndNotWithWhatCameWhileClosed) {
  port.close();
  terminal.send(frame);
  EXPECT_EQ(port.readAll(), Bytes());
  ASSERT_EQ(port.open(), std::nullopt);
  EXPECT_EQ(port.readAll(), Bytes());
}

TEST_F(OpenPort, TakesNewSettingsAtOnceAndKeepsThemWhenReopened) {
  const auto baud = [this] {
    const termios line = terminal.settings();
    return cfgetospeed(&line);
  };
  const auto twoStopBits = [this] { return (terminal.settings().c_cflag & CSTOPB) != 0; };
  EXPECT_EQ(baud(), speed_t{B9600});
  EXPECT_FALSE(twoStopBits());
  // A pseudo-terminal has no 7 data bits; that it takes the settings all the same is what matters.
  ASSERT_EQ(port.setSettings("19200,n,7,2"), std::nullopt);
  EXPECT_EQ(baud(), speed_t{B19200});
  EXPECT_TRUE(twoStopBits());

  EXPECT_EQ(port.setSettings("12345,n,8,1"),
            "COM3 (" + terminal.path() + ") cannot be set to 12345,n,8,1: Invalid argument.");
  EXPECT_NE(port.setSettings("9600"), std::nullopt);
  port.close();
  ASSERT_EQ(port.open(), std::nullopt);
  EXPECT_EQ(baud(), speed_t{B19200});
  EXPECT_TRUE(twoStopBits());
}

TEST_F(OpenPort, ThrowsAwayWhatTheLineDoesNotTakeInTime) {
  port.write(Bytes(4'000'000));
  EXPECT_TRUE(port.isOpen());
  // Whatever got through, there is room for the next command, and it comes out whole.
  port.write(frame);
  const Bytes received = terminal.receiveUntil(frame);
  ASSERT_GE(received.size(), frame.size());
  EXPECT_LT(received.size(), 4'000'000u);
  EXPECT_TRUE(std::equal(frame.rbegin(), frame.rend(), received.rbegin()));
}

TEST_F(OpenPort, IsNobodyElsesUntilClosed) {
  AsioSerialPort other(behindCom3(terminal.path()));
  other.selectPort(3);
  EXPECT_EQ(other.open(), "COM3 (" + terminal.path() +
                              ") cannot be opened: this program has it open already, as the touch "
                              "driver does until it lets go. Close what uses it and try again.");
  EXPECT_FALSE(other.isOpen());
  if (geteuid() != 0) {
    EXPECT_EQ(::open(terminal.path().c_str(), O_RDWR | O_NOCTTY), -1)
        << "without asking for a lock";
  }
  EXPECT_EQ(port.open(), std::nullopt) << "it is open already";
  port.close();
  EXPECT_EQ(other.open(), std::nullopt);
}

TEST(ClosedPort, IsLeftAsItWasFoundAlsoWhenRefused) {
  const struct {
    const char* word;
    const char* settings;
    bool heldByAnother;
    bool opens;
  } cases[] = {{"opened and closed", "19200,n,8,2", false, true},
               {"cannot be set", "12345,n,8,1", false, false},
               {"in use", "9600,n,8,1", true, false}};
  for (const auto& [word, settings, heldByAnother, opens] : cases) {
    const test::PseudoTerminal terminal;
    const termios before = terminal.settings();
    const int holder = ::open(terminal.path().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_GE(holder, 0) << word;
    if (heldByAnother) {
      ASSERT_EQ(flock(holder, LOCK_EX), 0) << word;
    }
    ASSERT_EQ(ioctl(holder, heldByAnother ? TIOCEXCL : TIOCNXCL), 0) << word;
    {
      AsioSerialPort port(behindCom3(terminal.path()));
      port.selectPort(3);
      ASSERT_EQ(port.setSettings(settings), std::nullopt) << word;
      EXPECT_EQ(port.open() == std::nullopt, opens) << word;
    }
    const termios after = terminal.settings();
    EXPECT_EQ(std::tie(before.c_iflag, before.c_oflag, before.c_cflag, before.c_lflag),
              std::tie(after.c_iflag, after.c_oflag, after.c_cflag, after.c_lflag))
        << word;
    int exclusive = -1;
    ASSERT_EQ(ioctl(holder, TIOCGEXCL, &exclusive), 0) << word;
    EXPECT_EQ(exclusive != 0, heldByAnother) << word;
    ::close(holder);
  }
}

TEST(LostPort, ClosesAtTheNextOperationAndSaysWhyOnce) {
  const Bytes frame{0x01, 'Z', 0x0D};
  using Operation = std::function<void(AsioSerialPort&)>;
  const std::pair<const char*, Operation> operations[] = {
      {"count", [](AsioSerialPort& port) { EXPECT_EQ(port.inBufferCount(), 0u); }},
      {"clear input", [](AsioSerialPort& port) { port.clearInput(); }},
      {"clear output", [](AsioSerialPort& port) { port.clearOutput(); }},
      {"write", [&](AsioSerialPort& port) { port.write(frame); }},
      {"read", [](AsioSerialPort& port) { EXPECT_EQ(port.readAll(), Bytes()); }},
      {"set",
       [](AsioSerialPort& port) {
         const auto complaint = port.setSettings("9600,n,7,2");
         EXPECT_EQ(complaint, port.lost());
       }},
  };
  for (const auto& [what, operation] : operations) {
    test::PseudoTerminal terminal;
    AsioSerialPort port(behindCom3(terminal.path()));
    port.selectPort(3);
    ASSERT_EQ(port.open(), std::nullopt);
    terminal.unplug();
    EXPECT_EQ(port.lost(), std::nullopt) << what;
    operation(port);
    EXPECT_FALSE(port.isOpen()) << what;
    const auto reason = port.lost();
    ASSERT_TRUE(reason) << what;
    EXPECT_EQ(reason->find("COM3 (" + terminal.path() + ") is gone: "), 0u) << *reason;

    for (const auto& [later, again] : operations) {
      if (later != std::string("set")) again(port);
    }
    EXPECT_EQ(port.setSettings("9600,n,8,1"), std::nullopt) << "it is for the next opening";
    port.close();
    EXPECT_EQ(port.lost(), reason) << what;
    EXPECT_NE(port.open(), std::nullopt) << what;
    EXPECT_EQ(port.lost(), std::nullopt) << what;
  }
}

TEST(RefusedPort, SaysWhyAndWhatToDo) {
  const struct {
    std::string device;
    std::string reason;
  } cases[] = {
      {"/dev/there-is-none",
       "cannot be opened: there is no such device. Connect it, or say which device it is with "
       "--com 3=DEVICE. 'touchctl doctor' lists those that are there."},
      {"/dev/null",
       "cannot be opened: it is not a serial port. Please say which device it is with --com "
       "3=DEVICE."},
      {"/tmp", "cannot be opened: it is not a serial port."},
      {"/proc/self/comm", "cannot be opened: it is not a serial port."},
  };
  for (const auto& [device, reason] : cases) {
    AsioSerialPort port(behindCom3(device));
    port.selectPort(3);
    const auto refusal = port.open();
    ASSERT_TRUE(refusal) << device;
    EXPECT_EQ(refusal->find("COM3 (" + device + ") "), 0u) << *refusal;
    EXPECT_NE(refusal->find(reason), std::string::npos) << *refusal;
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(port.lost(), std::nullopt);
  }
}

TEST(RefusedPort, SaysWhenASimulatedControllerHasNone) {
  std::string device;
  test::PseudoTerminal terminal;
  ComPorts ports;
  ports.assignUnlessGiven(1, [&device] { return device; });
  AsioSerialPort port(ports);
  const std::string refusal = port.open().value_or("opened");
  EXPECT_EQ(refusal.find("COM1 cannot be opened: the simulated controller has no serial port"), 0u)
      << refusal;
  device = terminal.path();
  EXPECT_EQ(port.open(), std::nullopt) << "it has got one meanwhile";
}

}  // namespace
}  // namespace touch
