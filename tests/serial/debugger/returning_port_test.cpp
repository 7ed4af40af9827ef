#include "serial/debugger/returning_port.h"

#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

using ReturningPortTest = DebuggerBench;

TEST_F(ReturningPortTest, IsTakenUpAsItWasUnderWhateverNameItComesBack) {
  const LineSettings line{19200, Parity::even, 7, 2};
  std::vector<KnownHardware> there;
  ReturningPort returning(port, clock, [&there] { return there; });
  const auto plugIn = [&](int number) {
    serial.present = {number};
    there = {{{.number = number, .device = "/dev/adapter" + std::to_string(number)}, "A1"}};
  };
  plugIn(17);
  serial.state.emplace();
  ASSERT_EQ(whyNot(port.take(17, line)), "");
  port.switchLine(LineSwitch::rts, false);
  int before = 17;
  for (const auto& [what, number] :
       {std::pair("under its own name", 17), {"under another", 18}, {"under another again", 19}}) {
    SCOPED_TRACE(what);
    returning.remember();
    serial.present = {};
    there = {};
    serial.unplug();
    EXPECT_TRUE(port.tellLoss());
    clock.delay(std::chrono::seconds(1));
    EXPECT_FALSE(returning.takeUpAgain()) << "nothing is there";
    plugIn(number);
    log.clear();
    journal.clear();
    clock.delay(std::chrono::seconds(1));
    EXPECT_TRUE(returning.takeUpAgain());
    EXPECT_EQ(port.selected(), number);
    EXPECT_EQ(port.line(), line);
    EXPECT_EQ(journal.back(), "RTS off");
    const std::string name = number == 17 ? "COM17 is there again. "
                                          : "COM" + std::to_string(before) +
                                                " is there again as COM" + std::to_string(number) +
                                                " (/dev/adapter" + std::to_string(number) + "). ";
    EXPECT_THAT(console(), Contains(StartsWith(name)));
    before = number;
  }
}

}  // namespace
}  // namespace touch::test
