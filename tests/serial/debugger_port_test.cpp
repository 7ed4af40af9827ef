#include "serial/debugger_port.h"

#include "tests/serial/debugger_bench.h"

namespace touch::test {
namespace {

using DebuggerPortTest = DebuggerBench;

TEST_F(DebuggerPortTest, TakesThePortFromTheDriverAndGivesItBackOnce) {
  const Lines taken = {"OpenController RS232 DEVICE 1", "CloseCOMPort", "settings 9600,n,8,1"};
  serial.pluggedIn = {};
  EXPECT_EQ(port.take(), "there is no such device");
  EXPECT_EQ(journal, (taken + Lines{"ReopenCOMPort", "CloseController"}));
  journal.clear();
  serial.pluggedIn = {1};
  EXPECT_EQ(port.take(), std::nullopt);
  EXPECT_EQ(journal, taken + Lines{"open 1"});
  EXPECT_FALSE(script.openHandles.empty()) << "the driver takes its port back by the same handle";
  journal.clear();
  port.giveBack();
  port.giveBack();
  EXPECT_EQ(journal, (Lines{"close", "ReopenCOMPort", "CloseController"}));
  {
    DebuggerPort other(access(), prompt, serial);
    EXPECT_EQ(other.take(), std::nullopt) << "it can be taken again";
    serial.close();
    journal.clear();
  }
  EXPECT_EQ(journal, (Lines{"ReopenCOMPort", "CloseController"}))
      << "when its owner goes, and even when closed before";
}

TEST_F(DebuggerPortTest, SelectcomOpensWhateverIsThereUpToCom16) {
  serial.pluggedIn = {1, 3, 16, 17};
  port.selectcom();
  EXPECT_EQ(journal, (Lines{"open 1", "close", "open 3", "close", "open 16"}));
}

TEST_F(DebuggerPortTest, ComporttestFindsAControllerOnCom1OrCom2Only) {
  const Bytes none;
  using Found = std::optional<int>;
  const std::tuple<const char*, int, Bytes, Bytes, Found> cases[] = {
      {"COM1", 1, replyOf("0"), replyOf("0"), 1},
      {"COM1, deaf at first", 1, none, replyOf("0"), 1},
      {"COM1, silent the second time", 1, replyOf("0"), none, std::nullopt},
      {"COM2", 2, none, replyOf("0"), 2},
      {"COM3", 3, none, replyOf("0"), std::nullopt},
      {"two bytes", 1, none, bytesOf("0\r"), std::nullopt},
      {"three bytes", 1, none, bytesOf("ab\r"), 1},
      {"another end", 1, none, bytesOf("\x01:\r\n"), std::nullopt},
  };
  for (const auto& [what, onPort, firstAnswer, answer, found] : cases) {
    SCOPED_TRACE(what);
    serial.pluggedIn = {onPort};
    answers = {firstAnswer, answer};
    journal.clear();
    EXPECT_EQ(port.comporttest(), found);
    EXPECT_EQ(port.foundPort(), found);
    EXPECT_EQ(serial.isOpen(), found.has_value());
    EXPECT_EQ(port.isTaken(), found.has_value());
    EXPECT_EQ(journal.back() == "message Device Can't found!!", !found);
    port.giveBack();
  }
}

TEST_F(DebuggerPortTest, ComporttestAsksEachPortTwice) {
  serial.pluggedIn = {1, 2};
  port.take();
  journal.clear();
  EXPECT_EQ(port.comporttest(), std::nullopt);
  const Lines asked = {"clear output", "clear input", "delay 30", "01 5A 0D", "clear output",
                       "clear input",  "delay 100",   "01 5A 0D", "close"};
  const Lines end = {"ReopenCOMPort", "CloseController", "message Device Can't found!!"};
  EXPECT_EQ(journal, Lines{"settings 9600,n,8,1"} + asked + Lines{"open 2"} + asked + end);
}

TEST_F(DebuggerPortTest, ConvertsAControllerAtTwoStopBitsAndReturnsToOne) {
  port.take();
  answers = {bytesOf("anything")};
  journal.clear();
  EXPECT_TRUE(port.N72toN81());
  EXPECT_EQ(journal, (Lines{"settings 9600,n,7,2", "clear output", "clear input", "delay 100",
                            "01 50 4E 38 31 0D", "settings 9600,n,8,1"}));
  EXPECT_EQ(serial.inBufferCount(), 0u) << "the answer is thrown away";
  serial.impossible = "9600,n,7,2";
  wire.clear();
  EXPECT_FALSE(port.N72toN81());
  EXPECT_EQ(journal.back(), "message 9600,n,7,2 is refused");
  EXPECT_EQ(wire, Lines{}) << "nothing is sent at other settings";
  EXPECT_TRUE(serial.isOpen());
}

}  // namespace
}  // namespace touch::test
