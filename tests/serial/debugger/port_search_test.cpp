#include "serial/debugger/port_search.h"

#include <sys/file.h>

#include "serial/debugger/debugger.h"
#include "serial/port/asio_serial_port.h"
#include "tests/doubles/desk.h"
#include "tests/ports/pseudo_terminal.h"

namespace touch::test {
namespace {

/// The debugger on COM1, a pseudo-terminal, with a port that somebody has locked behind COM2 and
/// nothing behind COM3.
class PortSearchTest : public Desk {
 protected:
  void SetUp() override {
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    ASSERT_EQ(whyNot(debugger.takePort()), "");
  }
  void TearDown() override {
    debugger.leave();
    ::close(lock);
    Desk::TearDown();
  }

  PseudoTerminal terminal;
  PseudoTerminal locked;
  int lock = ::open(locked.path().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  ComPorts comPorts = [this] {
    ComPorts ports;
    for (const std::string& named :
         {"1=" + terminal.path(), "2=" + locked.path(), std::string("3=/dev/none")})
      ports.assign(named);
    return ports;
  }();
  AsioSerialPort port{comPorts};
  Debugger debugger{access(), prompt, port, {}, comPorts};
};

TEST_F(PortSearchTest, FindsAControllerInTheMiddleOfTheSettings) {
  // A pseudo-terminal keeps only these of a line.
  const std::tuple<speed_t, tcflag_t, std::string> cases[] = {{B38400, CSTOPB, "38400,n,7,2"},
                                                              {B9600, 0, "9600,n,8,1"},
                                                              {B921600, 0, "921600,n,8,1"},
                                                              {B4000000, CSTOPB, "4000000,n,7,2"},
                                                              {B1200, CSTOPB, "1200,n,7,2"}};
  for (const auto& [speed, stopBits, found] : cases) {
    SCOPED_TRACE(found);
    clock.onAdvance = [this, speed = speed, stopBits = stopBits](auto) {
      const termios line = terminal.settings();
      if (cfgetospeed(&line) == speed && (line.c_cflag & CSTOPB) == stopBits && port.isOpen())
        terminal.send(replyOf("0"));
    };
    debugger.searchEverywhere();
    EXPECT_EQ(debugger.takeStatus(), "A controller answers on COM1, " + found + '.');
    EXPECT_TRUE(debugger.portIsOpen());
    EXPECT_EQ(describe(debugger.line()), found);
  }
}

TEST_F(PortSearchTest, NamesThePortsThatWereNotAskedAndCanBeStopped) {
  for (const bool stopped : {false, true}) {
    SCOPED_TRACE(stopped);
    if (stopped) clock.after(std::chrono::seconds(1), [this] { debugger.stopSearch(); });
    const auto begun = clock.now();
    debugger.searchEverywhere();
    EXPECT_EQ(clock.now() - begun < std::chrono::seconds(2), stopped);
    const std::string outcome = debugger.takeStatus().value_or("");
    EXPECT_THAT(outcome, StartsWith(stopped ? "The search was ended"
                                            : "No controller answers on any port that can be"));
    EXPECT_THAT(outcome, HasSubstr("COM3 (/dev/none) was not asked: there is no such device."));
    EXPECT_EQ(outcome.find("COM2 (" + locked.path() + ") cannot be opened: ") != outcome.npos,
              !stopped)
        << "its turn comes behind the likeliest settings of the first";
    EXPECT_TRUE(debugger.portIsOpen()) << "as before";
    EXPECT_EQ(describe(debugger.line()), "9600,n,8,1");
    EXPECT_FALSE(debugger.isBusy());
  }
}

}  // namespace
}  // namespace touch::test
