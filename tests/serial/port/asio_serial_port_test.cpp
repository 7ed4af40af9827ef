#include "serial/port/asio_serial_port.h"

#include <poll.h>
#include <sys/file.h>

#include <numeric>
#include <thread>

#include "serial/receiving/damage_marks.h"
#include "tests/ports/pseudo_terminal.h"

namespace touch::test {
namespace {

class OpenPort : public testing::Test {
 protected:
  OpenPort() {
    port.selectPort(3);
    EXPECT_EQ(whyNot(port.open()), "");
  }

  PseudoTerminal terminal;
  AsioSerialPort port{terminal.asPort(3), 20ms};
  const Bytes frame{0x01, 'U', 'T', 0x0D};
};

TEST_F(OpenPort, PassesEveryByteUnchangedBothWaysAndClearsItsInputAlsoWhenOpened) {
  Bytes all(256);
  std::iota(all.begin(), all.end(), std::uint8_t{0});
  EXPECT_TRUE(port.write(all));
  EXPECT_EQ(terminal.receive(all.size()), all);
  terminal.send(all);
  port.clearOutput();
  EXPECT_EQ(port.inBufferCount(), all.size());
  EXPECT_EQ(port.readAll(), all);
  EXPECT_EQ(port.readAll(), Bytes());
  EXPECT_EQ(port.takeDamaged(), 0u);
  terminal.send(frame);
  port.clearInput();
  EXPECT_EQ(port.inBufferCount(), 0u);
  port.close();
  terminal.send(frame);
  ASSERT_EQ(whyNot(port.open()), "");
  EXPECT_EQ(port.readAll(), Bytes()) << "what came while closed";
}

TEST_F(OpenPort, TakesNewSettingsAtOnceAndKeepsThemWhenReopened) {
  const auto isSetTo = [this](speed_t baud, bool twoStopBits) {
    const termios line = terminal.settings();
    // Damaged bytes are marked and not dropped.
    const tcflag_t marks = line.c_iflag & (INPCK | PARMRK | IGNPAR | IGNBRK | BRKINT);
    return cfgetospeed(&line) == baud && ((line.c_cflag & CSTOPB) != 0) == twoStopBits &&
           marks == (INPCK | PARMRK);
  };
  // A pseudo-terminal has no 7 data bits; that it takes the settings all the same is what matters.
  ASSERT_EQ(whyNot(port.setSettings("19200,n,7,2")), "");
  EXPECT_TRUE(isSetTo(B19200, true));

  EXPECT_THAT(whyNot(port.setSettings("12345,n,8,1")),
              StartsWith("COM3 (" + terminal.path() + ") cannot be set to 12345,n,8,1: "));
  EXPECT_EQ(whyNot(port.setSettings("9600,n,9,1")),
            "The line settings \"9600,n,9,1\" are wrong: expected 5 to 8 data bits, found \"9\"");
  port.close();
  ASSERT_EQ(whyNot(port.open()), "");
  EXPECT_TRUE(isSetTo(B19200, true));
}

TEST(TimedPort, TellsWhenBytesCameAndNotWhenTheyWereRead) {
  const PseudoTerminal terminal;
  const auto port = AsioSerialPort::withTrueTimes(terminal.asPort(1));
  ASSERT_EQ(whyNot(port->open()), "");
  const auto waitForNews = [&port] {
    pollfd news{*port->descriptor(), POLLIN, 0};
    return poll(&news, 1, 10'000) == 1;
  };
  const Bytes first{0x01, 0x02};
  terminal.flood(first);
  ASSERT_TRUE(waitForNews()) << "a window sleeps until something comes";
  const auto seen = std::chrono::steady_clock::now();
  const Bytes rest(200'000, 0x55);
  std::thread sender([&] { terminal.flood(rest); });
  Bytes read = port->readAll();
  ASSERT_FALSE(port->readParts().empty());
  EXPECT_LE(port->readParts().front().time, seen);
  std::size_t timed = 0;
  auto last = port->readParts().front().time;
  const Bytes all = first + rest;
  do {
    for (const ReadPart& part : port->readParts()) {
      timed += part.bytes;
      EXPECT_LE(last, part.time);
      last = part.time;
    }
  } while (read.size() < all.size() && waitForNews() &&
           (read = read + port->readAll(), port->isOpen()));
  sender.join();
  EXPECT_TRUE(read == all) << "more than is kept of it, and all of it came: " << read.size();
  EXPECT_EQ(timed, read.size());
}

TEST_F(OpenPort, ThrowsAwayWhatTheLineDoesNotTakeInTime) {
  EXPECT_FALSE(port.write(Bytes(4'000'000)));
  EXPECT_TRUE(port.isOpen());
  // Whatever got through, there is room for the next command, and it comes out whole.
  EXPECT_TRUE(port.write(frame));
  Bytes received;
  do {
    const Bytes next = terminal.receive(1);
    ASSERT_FALSE(next.empty()) << "the line is stuck: the frame's end never came";
    received.push_back(next[0]);
  } while (received.back() != frame.back());
  EXPECT_LT(received.size(), 4'000'000u);
  EXPECT_EQ(Bytes(received.end() - std::ssize(frame), received.end()), frame);
}

TEST_F(OpenPort, IsNobodyElsesUntilClosed) {
  AsioSerialPort other(terminal.asPort(1));
  EXPECT_THAT(whyNot(other.open()), HasSubstr("this program has it open already"));
  EXPECT_FALSE(other.isOpen());
  if (geteuid() != 0) {
    EXPECT_EQ(::open(terminal.path().c_str(), O_RDWR | O_NOCTTY), -1)
        << "without asking for a lock";
  }
  EXPECT_EQ(whyNot(port.open()), "") << "it is open already";
  port.close();
  EXPECT_EQ(whyNot(other.open()), "");
}

TEST(DamageMarks, AreTakenOutAndCountedHoweverTheStreamIsCut) {
  const std::tuple<const char*, Bytes, Bytes, std::size_t> cases[] = {
      {"no marks", {0x01, 0x00, 0x0D}, {0x01, 0x00, 0x0D}, 0},
      {"a whole FF", {0x41, 0xFF, 0xFF, 0x00}, {0x41, 0xFF, 0x00}, 0},
      {"a damaged byte", {0x41, 0xFF, 0x00, 0x42, 0x43}, {0x41, 0x42, 0x43}, 1},
      {"a damaged FF", {0xFF, 0x00, 0xFF, 0xFF, 0xFF}, {0xFF, 0xFF}, 1},
      {"two breaks", {0xFF, 0x00, 0x00, 0xFF, 0x00, 0x00}, {0x00, 0x00}, 2},
      {"no mark that there is", {0xFF, 0x41}, {0xFF, 0x41}, 0},
  };
  for (const auto& [what, marked, meant, damaged] : cases) {
    for (std::size_t cut = 0; cut <= marked.size(); ++cut) {
      SCOPED_TRACE(what + std::string(", cut at ") + std::to_string(cut));
      DamageMarks marks;
      Bytes bytes;
      const auto both = std::span(marked);
      const std::size_t first = marks.take(both.first(cut), bytes);
      EXPECT_EQ(first + marks.take(both.subspan(cut), bytes), damaged);
      EXPECT_EQ(bytes, meant);
    }
  }
}

TEST(ClosedPort, IsLeftAsItWasFoundAlsoWhenRefused) {
  const std::tuple<const char*, const char*, bool, bool> cases[] = {
      {"opened and closed", "19200,n,8,2", false, true},
      {"cannot be set", "12345,n,8,1", false, false},
      {"in use", "9600,n,8,1", true, false}};
  for (const auto& [word, settings, heldByAnother, opens] : cases) {
    SCOPED_TRACE(word);
    const PseudoTerminal terminal;
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
      AsioSerialPort port(terminal.asPort(1));
      ASSERT_EQ(whyNot(port.setSettings(settings)), "");
      EXPECT_EQ(whyNot(port.open()) == "", opens);
    }
    EXPECT_EQ(state(), before);
    ::close(holder);
  }
}

TEST(LostPort, ClosesAtTheNextOperationAndSaysWhyOnce) {
  const std::function<void(AsioSerialPort&)> operations[] = {
      [](auto& used) { EXPECT_EQ(used.inBufferCount(), 0u); },
      [](auto& used) { used.clearInput(); },
      [](auto& used) { used.clearOutput(); },
      [](auto& used) { EXPECT_FALSE(used.write(Bytes(3, 'Z'))); },
      [](auto& used) { EXPECT_EQ(used.readAll(), Bytes()); },
      [](auto& used) { used.setSettings("9600,n,7,2"); },
  };
  for (const auto& operation : operations) {
    SCOPED_TRACE(&operation - operations);
    PseudoTerminal terminal;
    AsioSerialPort port(terminal.asPort(1));
    ASSERT_EQ(whyNot(port.open()), "");
    terminal.unplug();
    operation(port);
    EXPECT_FALSE(port.isOpen());
    const auto reason = port.lost();
    EXPECT_THAT(whyNot(reason), StartsWith("COM1 (" + terminal.path() + ") is gone: "));

    for (const auto& again : operations)
      again(port);
    EXPECT_EQ(port.lost(), reason);
    EXPECT_NE(whyNot(port.open()), "");
    EXPECT_EQ(port.lost(), std::nullopt);
  }
}

TEST(RefusedPort, SaysWhyAndWhatToDo) {
  const std::pair<std::string, std::string> cases[] = {
      {"/dev/there-is-none",
       "there is no such device. Connect it, or say which device it is with --com 1=DEVICE. "
       "'touchctl doctor' lists those that are there."},
      {"/dev/null", "it is not a serial port. Please say which device it is with --com 1=DEVICE."},
      {"/tmp", "it is not a serial port."},
      {"/proc/self/comm", "it is not a serial port."},
      {"", "the simulated controller has no serial port"},
  };
  const PseudoTerminal terminal;
  for (const auto& [device, reason] : cases) {
    std::string now = device;
    ComPorts ports;
    ports.assignUnlessGiven(1, [&now] { return now; });
    AsioSerialPort port(ports);
    EXPECT_THAT(whyNot(port.open()),
                StartsWith(ports.describe(1) + " cannot be opened: " + reason));
    EXPECT_EQ(port.lost(), std::nullopt);
    now = terminal.path();
    EXPECT_EQ(whyNot(port.open()), "") << "it has got one meanwhile";
  }
}

TEST(ComPorts, GiveTheAssignedDeviceOrThePlatformsOwnAndRefuseWhatNamesNone) {
  ComPorts ports;
  for (const char* text : {"2=/dev/old", "2=/dev/ttyUSB0", "255=/dev/a=b", "3=COM3"})
    EXPECT_EQ(whyNot(ports.assign(text)), "") << text;
  for (const std::string text : {"", "4", "4=", "=/dev/x", "0=/dev/x", "256=/dev/x", "-1=/dev/x",
                                 " 4=/dev/x", "COM4=/dev/x", "4:/dev/x"}) {
    EXPECT_EQ(whyNot(ports.assign(text)),
              '"' + text +
                  "\" names no COM port: expected N=DEVICE with N from 1 to "
                  "255, e.g. 3=/dev/ttyS2");
  }
  EXPECT_EQ(ports.describe(1) + ports.describe(2), "COM1 (/dev/ttyS0)COM2 (/dev/ttyUSB0)");
  EXPECT_EQ(ports.describe(3) + ports.device(4) + ports.device(255), "COM3/dev/ttyS3/dev/a=b");
}

}  // namespace
}  // namespace touch::test
