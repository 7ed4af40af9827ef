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

ComPorts behind(int number, const std::string& device) {
  ComPorts ports;
  EXPECT_EQ(ports.assign(std::to_string(number) + '=' + device), std::nullopt);
  return ports;
}

class OpenPort : public testing::Test {
 protected:
  OpenPort() {
    port.selectPort(3);
    EXPECT_EQ(port.open(), std::nullopt);
  }

  test::PseudoTerminal terminal;
  AsioSerialPort port{behind(3, terminal.path()), 20ms};
  const Bytes frame{0x01, 'U', 'T', 0x0D};
};

TEST_F(OpenPort, PassesEveryByteUnchangedBothWaysAndClearsItsInputAlsoWhenOpened) {
  Bytes all(256);
  std::iota(all.begin(), all.end(), std::uint8_t{0});
  port.write(all);
  EXPECT_EQ(terminal.receiveUntil(all), all);
  terminal.send(all);
  port.clearOutput();
  EXPECT_EQ(port.inBufferCount(), all.size());
  EXPECT_EQ(port.readAll(), all);
  EXPECT_EQ(port.readAll(), Bytes());
  terminal.send(frame);
  port.clearInput();
  EXPECT_EQ(port.inBufferCount(), 0u);
  port.close();
  terminal.send(frame);
  ASSERT_EQ(port.open(), std::nullopt);
  EXPECT_EQ(port.readAll(), Bytes()) << "what came while closed";
}

TEST_F(OpenPort, TakesNewSettingsAtOnceAndKeepsThemWhenReopened) {
  const auto isSetTo = [this](speed_t baud, bool twoStopBits) {
    const termios line = terminal.settings();
    return cfgetospeed(&line) == baud && ((line.c_cflag & CSTOPB) != 0) == twoStopBits;
  };
  EXPECT_TRUE(isSetTo(B9600, false));
  // A pseudo-terminal has no 7 data bits; that it takes the settings all the same is what matters.
  ASSERT_EQ(port.setSettings("19200,n,7,2"), std::nullopt);
  EXPECT_TRUE(isSetTo(B19200, true));

  EXPECT_EQ(port.setSettings("12345,n,8,1"),
            "COM3 (" + terminal.path() + ") cannot be set to 12345,n,8,1: Invalid argument.");
  EXPECT_NE(port.setSettings("9600"), std::nullopt);
  port.close();
  ASSERT_EQ(port.open(), std::nullopt);
  EXPECT_TRUE(isSetTo(B19200, true));
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
  AsioSerialPort other(behind(1, terminal.path()));
  const std::string refusal = other.open().value_or("opened");
  EXPECT_NE(refusal.find("this program has it open already"), refusal.npos) << refusal;
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
  const std::tuple<const char*, const char*, bool, bool> cases[] = {
      {"opened and closed", "19200,n,8,2", false, true},
      {"cannot be set", "12345,n,8,1", false, false},
      {"in use", "9600,n,8,1", true, false}};
  for (const auto& [word, settings, heldByAnother, opens] : cases) {
    SCOPED_TRACE(word);
    const test::PseudoTerminal terminal;
    const int holder = ::open(terminal.path().c_str(), O_RDWR | O_NOCTTY);
    if (heldByAnother) {
      ASSERT_EQ(flock(holder, LOCK_EX), 0);
    }
    ASSERT_EQ(ioctl(holder, heldByAnother ? TIOCEXCL : TIOCNXCL), 0);
    const auto state = [&] {
      const termios line = terminal.settings();
      int exclusive = -1;
      ioctl(holder, TIOCGEXCL, &exclusive);
      return std::tuple(line.c_iflag, line.c_oflag, line.c_cflag, line.c_lflag, exclusive);
    };
    const auto before = state();
    {
      AsioSerialPort port(behind(1, terminal.path()));
      ASSERT_EQ(port.setSettings(settings), std::nullopt);
      EXPECT_EQ(port.open() == std::nullopt, opens);
    }
    EXPECT_EQ(state(), before);
    ::close(holder);
  }
}

TEST(LostPort, ClosesAtTheNextOperationAndSaysWhyOnce) {
  const std::pair<const char*, std::function<void(AsioSerialPort&)>> operations[] = {
      {"count", [](auto& lost) { EXPECT_EQ(lost.inBufferCount(), 0u); }},
      {"clear input", [](auto& lost) { lost.clearInput(); }},
      {"clear output", [](auto& lost) { lost.clearOutput(); }},
      {"write", [](auto& lost) { lost.write(Bytes(3, 'Z')); }},
      {"read", [](auto& lost) { EXPECT_EQ(lost.readAll(), Bytes()); }},
      {"set", [](auto& lost) { EXPECT_NE(lost.setSettings("9600,n,7,2"), std::nullopt); }},
  };
  for (const auto& [what, operation] : operations) {
    SCOPED_TRACE(what);
    test::PseudoTerminal terminal;
    AsioSerialPort port(behind(1, terminal.path()));
    ASSERT_EQ(port.open(), std::nullopt);
    terminal.unplug();
    EXPECT_EQ(port.lost(), std::nullopt);
    operation(port);
    EXPECT_FALSE(port.isOpen());
    const auto reason = port.lost();
    ASSERT_TRUE(reason);
    EXPECT_EQ(reason->find("COM1 (" + terminal.path() + ") is gone: "), 0u) << *reason;

    for (const auto& [later, again] : std::span(operations).first(5))
      again(port);
    EXPECT_EQ(port.setSettings("9600,n,8,1"), std::nullopt) << "it is for the next opening";
    port.close();
    EXPECT_EQ(port.lost(), reason);
    EXPECT_NE(port.open(), std::nullopt);
    EXPECT_EQ(port.lost(), std::nullopt);
  }
}

TEST(RefusedPort, SaysWhyAndWhatToDo) {
  const std::pair<std::string, std::string> cases[] = {
      {"/dev/there-is-none",
       " (/dev/there-is-none) cannot be opened: there is no such device. Connect it, or say which "
       "device it is with --com 1=DEVICE. 'touchctl doctor' lists those that are there."},
      {"/dev/null",
       " (/dev/null) cannot be opened: it is not a serial port. Please say which device it is with "
       "--com 1=DEVICE."},
      {"/tmp", " (/tmp) cannot be opened: it is not a serial port."},
      {"/proc/self/comm", " (/proc/self/comm) cannot be opened: it is not a serial port."},
      {"", " cannot be opened: the simulated controller has no serial port"},
  };
  for (const auto& [device, reason] : cases) {
    ComPorts ports;
    ports.assignUnlessGiven(1, [name = device] { return name; });
    AsioSerialPort port(ports);
    const std::string refusal = port.open().value_or("opened");
    EXPECT_EQ(refusal.find("COM1" + reason), 0u) << refusal;
    EXPECT_FALSE(port.isOpen());
    EXPECT_EQ(port.lost(), std::nullopt);
  }
}

TEST(ComPorts, GiveTheAssignedDeviceOrThePlatformsOwnAndRefuseWhatNamesNone) {
  ComPorts ports;
  for (const char* text : {"2=/dev/old", "2=/dev/ttyUSB0", "255=/dev/a=b", "3=COM3"})
    EXPECT_EQ(ports.assign(text), std::nullopt) << text;
  for (const char* text : {"", "4", "4=", "=/dev/x", "0=/dev/x", "256=/dev/x", "-1=/dev/x",
                           " 4=/dev/x", "COM4=/dev/x", "4:/dev/x"}) {
    EXPECT_EQ(ports.assign(text), "\"" + std::string(text) +
                                      "\" names no COM port: expected N=DEVICE with N from 1 to "
                                      "255, e.g. 3=/dev/ttyS2");
  }
  EXPECT_EQ(ports.describe(1), "COM1 (/dev/ttyS0)");
  EXPECT_EQ(ports.describe(2), "COM2 (/dev/ttyUSB0)");
  EXPECT_EQ(ports.describe(3), "COM3");
  EXPECT_EQ(ports.device(4), "/dev/ttyS3");
  EXPECT_EQ(ports.device(255), "/dev/a=b");
}

TEST(LineSettings, AreReadAndWrittenInOneFormOrSayWhatIsWrong) {
  EXPECT_EQ(*parseLineSettings("115200,E,5,1"), (LineSettings{115200, Parity::even, 5, 1}));
  for (const char* text : {"9600,n,7,2", "115200,e,5,1", "1,o,8,2"})
    EXPECT_EQ(describe(*parseLineSettings(text)), text);

  const std::tuple<std::string, const char*, const char*> wrong[] = {
      {"9600,n,8", "baud rate, parity, data bits and stop bits, e.g. 9600,n,8,1", "9600,n,8"},
      {"0,n,8,1", "a baud rate of 1 to 4000000", "0"},
      {"9600x,n,8,1", "a baud rate of 1 to 4000000", "9600x"},
      {"99999999999,n,8,1", "a baud rate of 1 to 4000000", "99999999999"},
      {"9600,none,8,1", "n, e or o as the parity", "none"},
      {"9600,n,9,1", "5 to 8 data bits", "9"},
      {"9600,n,8,1.5", "1 or 2 stop bits", "1.5"},
  };
  for (const auto& [text, expected, found] : wrong) {
    const auto settings = parseLineSettings(text);
    ASSERT_FALSE(settings) << text;
    EXPECT_EQ(settings.error(), "The line settings \"" + text + "\" are wrong: expected " +
                                    expected + ", found \"" + found + '"');
  }
}

}  // namespace
}  // namespace touch
