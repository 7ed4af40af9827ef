#include "core/discovery/discovery.h"

#include "core/discovery/identity.h"
#include "core/driver/connection.h"
#include "core/driver/driver_settings.h"
#include "tests/doubles/desk.h"

namespace touch::test {
namespace {

class Discovery : public Desk {};

TEST(ServedNames, HaveALineAndADevice) {
  for (const char* name : {"RS232 DEVICE 1", "USBDEVICE", "XXXDEVICE USB"})
    EXPECT_TRUE(isServedName(name)) << name;
  for (const char* name :
       {"XXDEVICE USB", "PS2 DEVICE 1", "USB PANEL 1", "usb device 1", "", "DEVICE USB DEVICE"})
    EXPECT_FALSE(isServedName(name)) << name;
}

TEST_F(Discovery, ChoosesTheFirstControllerThatAnswers) {
  script.names = {"RS232 DEVICE 1", "PS2 DEVICE", "USB DEVICE 2", "USB DEVICE 3"};
  // Five bytes are no answer, six are one; the answer of the second controller comes at its second
  // try.
  script.replies["UT"] = {replyOf("ABC"), {}, replyOf("ABC"), replyOf("ABCD")};
  const ControllerList list = getctrname(access(), prompt);
  EXPECT_EQ(list.names, (Lines{"RS232 DEVICE 1", "USB DEVICE 2", "USB DEVICE 3"}));
  EXPECT_EQ(list.answered, 1u);
  EXPECT_EQ(session.controllerName, "USB DEVICE 2");
  Lines expected = {"GetExistControllers", "GetControllerName 1 20", "GetControllerName 2 20",
                    "GetControllerName 3 20", "GetControllerName 4 20"};
  for (const std::string name : {"RS232 DEVICE 1", "USB DEVICE 2"}) {
    expected.insert(expected.end(), {"OpenController " + name, "WriteBuffer UT", "delay 100",
                                     "ReadBuffer 10", "WriteBuffer UT", "delay 100",
                                     "ReadBuffer 10", "CloseController", "delay 100"});
  }
  expected.pop_back();
  EXPECT_EQ(journal, expected) << "the pause is after silence only";
}

TEST_F(Discovery, AsksThePreferredControllerFirstAndStopsWhenTold) {
  script.names = {"USB DEVICE 1", "USB DEVICE 2", "USB DEVICE 3"};
  const struct {
    const char* preferred;
    std::size_t asked;  ///< before the search is broken off
    Lines order;
    std::optional<std::size_t> last;
  } cases[] = {
      {"USB DEVICE 2", 3, {"USB DEVICE 2", "USB DEVICE 1", "USB DEVICE 3"}, 2},
      {"USB DEVICE 9", 2, {"USB DEVICE 1", "USB DEVICE 2"}, 1},
      {"", 0, {}, std::nullopt},
  };
  for (const auto& [preferred, asked, order, last] : cases) {
    SCOPED_TRACE(preferred);
    Lines names;
    journal.clear();
    const auto search = getctrname(
        access(), prompt,
        [&, most = asked](const std::string& name) {
          if (names.size() == most) return false;
          names.push_back(name);
          return true;
        },
        preferred);
    EXPECT_EQ(names, order);
    EXPECT_EQ(search.lastAsked, last);
    EXPECT_EQ(search.answered, std::nullopt);
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "CloseController"), std::ssize(order));
  }
  EXPECT_EQ(getctrname(access(), prompt).find("USB DEVICE 3"), 2u);
}

TEST_F(Discovery, TakesOnlyTheLowByteOfTheCountAndAtMost21Names) {
  script.names.assign(300, "USB DEVICE 1");
  const std::pair<std::int32_t, std::size_t> cases[] = {{-1, 0},  {256, 0},  {3, 3},
                                                        {21, 21}, {255, 21}, {0x7FFFFF02, 2}};
  for (const auto& [count, listed] : cases) {
    script.results["GetExistControllers"] = count;
    EXPECT_EQ(getctrnameo(access(), prompt).names.size(), listed) << count;
    EXPECT_EQ(journal.back() == "message No device was found", listed == 0) << count;
  }
}

TEST_F(Discovery, SurvivesADriverThatLies) {
  script.lies = true;
  script.names = {"USB DEVICE with a name that is too long"};
  script.replies["UT"] = {Bytes(15, 'x')};
  EXPECT_EQ(getctrname(access(), prompt).names, (Lines{"USB DEVICE with a na"}));
  Connection connection(access());
  connection.write(commandFrame("UT"));
  EXPECT_EQ(connection.read().size(), Connection::replyLimit);
  EXPECT_EQ(connection.read(3).size(), 3u);
}

TEST_F(Discovery, PutsSettingsThatAreOutOfRangeRight) {
  const std::tuple<std::int32_t, std::int32_t, bool> cases[] = {
      {1, 300, false}, {3, 1200, false}, {0x102, 700, false},
      {0, 299, true},  {4, 1201, true},  {255, -5, true}};
  for (const auto& [mode, time, mended] : cases) {
    SCOPED_TRACE(mode);
    journal.clear();
    script.results = {{"GetReportMode", mode}, {"GetRightClickTime", time}};
    DriverSettings settings;
    readset(access(), settings);
    EXPECT_EQ(settings.touchMode, mended ? 2 : mode & 0xFF);
    EXPECT_EQ(settings.rightClickTime.count(), mended ? 1000 : time);
    EXPECT_EQ(matching(journal, "^Set"),
              mended ? (Lines{"SetReportMode 1", "SetRightClickTime 1000"}) : Lines{});

    journal.clear();
    const auto reported = reportedSettings(access());
    EXPECT_EQ(reported->touchMode, mode & 0xFF);
    EXPECT_EQ(reported->rightClickTime.count(), time);
    EXPECT_THAT(journal, Each(Not(ContainsRegex("^(Set|Reopen)"))))
        << "whoever only wants to know changes nothing";
  }
}

TEST_F(Discovery, TheInformationListWakesTheControllerFirstAndShowsOnlyWhatItSaid) {
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
}  // namespace touch::test
