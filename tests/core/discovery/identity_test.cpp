#include "core/discovery/identity.h"

#include "tests/doubles/desk.h"

namespace touch {
namespace {

using test::Lines;
using test::replyOf;

class IdentityOf : public test::Desk {};

TEST_F(IdentityOf, TheInformationListWakesTheControllerFirstAndShowsOnlyWhatItSaid) {
  script.replies["OI"] = {replyOf("stale"), replyOf("M0130100")};
  script.replies["UT"] = {replyOf("QRMV0301")};
  EXPECT_EQ(controllerInformation(access()),
            (Lines{"RS232", "- Baudrate : 9600, N, 8, 1", "Output Identity : M0130100",
                   "Unit Type : QRMV0301"}));
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "WriteBuffer OI", "delay 100",
                            "FlushReadBuffer", "WriteBuffer OI", "delay 100", "ReadBuffer 10",
                            "WriteBuffer UT", "delay 100", "ReadBuffer 10", "CloseController"}));
  session.controllerName = "USB DEVICE 2";
  script.replies = {{"OI", {replyOf("A\a\xE9\x1B")}}, {"UT", {replyOf("OTHER")}}};
  EXPECT_EQ(controllerInformation(access()),
            (Lines{"USB", "- Version : 1.1", "Output Identity : A\xC3\xA9"}));
}

TEST(ModelNames, ComeFromTheUnitType) {
  const std::pair<const char*, const char*> cases[] = {
      {"QMRV1000", "first model"},
      {"QRMV0301", "model variant 01"},
      {"QRMV0002", ""},
      {"OTHER01", ""},
      {"", ""},
  };
  for (const auto& [unitType, name] : cases)
    EXPECT_EQ(modelName(unitType), name) << unitType;
}

}  // namespace
}  // namespace touch
