#include "core/identity.h"

#include "tests/support/desk.h"

namespace touch {
namespace {

using test::Lines;
using test::replyOf;

class IdentityOf : public test::Desk {};

TEST_F(IdentityOf, TheInformationListWakesTheControllerFirst) {
  script.replies["OI"] = {replyOf("stale"), replyOf("M0130100")};
  script.replies["UT"] = {replyOf("QRMV0301")};
  EXPECT_EQ(controllerInformation(access()),
            (Lines{"RS232", "- Baudrate : 9600, N, 8, 1", "Output Identity : M0130100",
                   "Unit Type : QRMV0301"}));
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "WriteBuffer OI", "delay 100",
                            "FlushReadBuffer", "WriteBuffer OI", "delay 100", "ReadBuffer 10",
                            "WriteBuffer UT", "delay 100", "ReadBuffer 10", "CloseController"}));
}

TEST_F(IdentityOf, TheInformationListShowsOnlyWhatTheControllerSaid) {
  session.controllerName = "USB DEVICE 2";
  script.replies["OI"] = {replyOf("A\xE9")};
  script.replies["UT"] = {replyOf("OTHER")};
  EXPECT_EQ(controllerInformation(access()),
            (Lines{"USB", "- Version : 1.1", "Output Identity : A\xC3\xA9"}));
  script.replies.clear();
  EXPECT_EQ(controllerInformation(access()).back(), "Output Identity : ");
}

TEST(ModelNames, ComeFromTheUnitType) {
  const std::pair<const char*, const char*> cases[] = {
      {"QMRV1000", "first model"},
      {"QRMV0301", "model variant 01"},
      {"QMRV0003", "model variant 03"},
      {"QRMV0002", ""},
      {"QMRV1000 ", ""},
      {"OTHER01", ""},
      {"", ""},
      {"1", ""},
  };
  for (const auto& [unitType, name] : cases)
    EXPECT_EQ(modelName(unitType), name) << unitType;
}

}  // namespace
}  // namespace touch
