#include "core/discovery/port_search.h"

#include "tests/doubles/desk.h"
#include "tests/doubles/fake_port.h"

namespace touch::test {
namespace {

class ComPortSearch : public Desk {
 protected:
  FakePort ports{journal, {}};
};

TEST_F(ComPortSearch, AsksEachPortFromTheLastDownAndSetsUpTheOneThatAnswers) {
  ports.present = {16, 14, 13};
  ports.replies = {{"14 UT", replyOf("QMRV")}, {"14 MS", replyOf("0")}, {"13 UT", replyOf("X")}};
  EXPECT_EQ(searchComPorts(access(), ports), (PortSearch{14, true, false}));
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "CloseCOMPort", "CloseController",
                            "settings 9600,n,8,1", "open 16", "01 55 54 0D", "delay 200", "close",
                            "settings 9600,n,8,1", "settings 9600,n,8,1", "open 14", "01 55 54 0D",
                            "delay 200", "01 4D 53 0D", "delay 100", "close"}));
  EXPECT_EQ(session.outputFrame, commandFrame("MS"));
}

TEST_F(ComPortSearch, JudgesTheAnswerByItsEndsAndTheSetUpByItsSecondByte) {
  const char* const none = "controller not found ??";
  const char* const done = "Setup Ok in Com:1";
  const char* const notSetUp = "Controller in com:1  But Setup Error";
  const std::tuple<const char*, Bytes, Bytes, const char*> cases[] = {
      {"one byte, an end", {0x0D}, {}, none},
      {"shortest", {0x01, 0x0D}, {}, notSetUp},
      {"bytes before", bytesOf("x\x01:\r"), {}, none},
      {"bytes behind", bytesOf("\x01:\r\n"), {}, none},
      {"reports within", bytesOf("\x01:\r\xFF\x01\r"), {}, notSetUp},
      {"set up in two bytes", replyOf("A"), bytesOf("x0"), done},
      {"set-up refused", replyOf("A"), replyOf("1"), notSetUp},
      {"zero in the first place", replyOf("A"), bytesOf("0\r"), notSetUp},
  };
  ports.present = {1};
  for (const auto& [what, answer, setUp, told] : cases) {
    ports.replies = {{"1 UT", answer}, {"1 MS", setUp}};
    EXPECT_EQ(describe(searchComPorts(access(), ports)), told) << what;
    EXPECT_FALSE(ports.isOpen()) << what;
  }
}

TEST_F(ComPortSearch, ClosesAPortThatWasOpenAndEndsWhenTheUserWantsIt) {
  session.controllerName.clear();  // without one the driver has no port to let go
  ports.present = {7, 15};
  ports.selectPort(7);
  ports.open();
  const auto search = searchComPorts(access(), ports, [](int port) { return port != 14; });
  EXPECT_TRUE(search.cancelled);
  EXPECT_EQ(describe(search), "");
  EXPECT_EQ(journal, (Lines{"open 7", "close", "settings 9600,n,8,1", "settings 9600,n,8,1",
                            "open 15", "01 55 54 0D", "delay 200", "close"}));
}

}  // namespace
}  // namespace touch::test
