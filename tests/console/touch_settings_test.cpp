#include "console/touch_settings.h"

#include "tests/support/desk.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

using test::Lines;
using Bar = TimingBars::Bar;

class TouchSettings : public test::Desk {
 protected:
  const Setting& setting(const char* name) { return *findSetting(name); }

  /// What lies between opening and closing.
  Lines callsOf(const std::function<void()>& action) {
    journal.clear();
    action();
    EXPECT_GE(journal.size(), 2u);
    EXPECT_EQ(journal.front(), "OpenController " + session.controllerName);
    const auto close = std::find(journal.begin(), journal.end(), "CloseController");
    return {journal.begin() + 1, close};
  }
};

TEST_F(TouchSettings, EachMakesItsOwnCallsAndNoOther) {
  const DriverSettings current{.rightClickTime = 700, .doubleClickSpeed = 4, .doubleClickArea = 9};
  const struct {
    const char* name;
    const char* text;
    Lines calls;
  } cases[] = {
      {"up-sound", "on", {"EnableUpSound 1"}},
      {"down-sound", "on", {"EnableDownSound 1"}},
      {"double-click", "off", {"EnableDoubleClick 0"}},
      {"right-click", "on", {"EnableRightClick 1"}},
      {"rotation", "90", {"SetRotation 1"}},
      {"rotation", "180", {"SetRotation 2"}},
      {"rotation", "270", {"SetRotation 3"}},
      {"touch-mode", "desktop", {"SetReportMode 1"}},
      {"touch-mode", "button", {"SetReportMode 3"}},
      {"double-click-speed",
       "255",
       {"SetRightClickTime 700", "SetDoubleClickSpeed 255", "SetDoubleClickArea 9"}},
      {"double-click-area",
       "0",
       {"SetRightClickTime 700", "SetDoubleClickSpeed 4", "SetDoubleClickArea 0"}},
      {"right-click-time",
       "1200",
       {"SetRightClickTime 1200", "SetDoubleClickSpeed 4", "SetDoubleClickArea 9"}},
      {"sensitivity", "low", {"WriteBuffer SE0", "delay 300", "FlushReadBuffer"}},
      {"sensitivity", "most", {"WriteBuffer SE4", "delay 300", "FlushReadBuffer"}},
      {"touch-panel",
       "off",
       {"WriteBuffer MS", "delay 30", "WriteBuffer MI", "delay 300", "ReadBuffer 10"}},
      {"touch-panel",
       "on",
       {"WriteBuffer MS", "delay 30", "WriteBuffer MS", "delay 300", "ReadBuffer 10"}},
  };
  for (const auto& c : cases) {
    ASSERT_NE(findSetting(c.name), nullptr) << c.name;
    const auto value = parseSetting(setting(c.name), c.text);
    ASSERT_TRUE(value) << c.name << ' ' << c.text;
    EXPECT_EQ(callsOf([&] { setting(c.name).set(access(), prompt, current, *value); }), c.calls)
        << c.name << ' ' << c.text;
  }
}

TEST_F(TouchSettings, ThePanelOfAPs2ControllerGetsItsOwnCommandFirst) {
  session.controllerName = "PS2 DEVICE 1";
  EXPECT_EQ(callsOf([this] { disableTouchPanel(access(), true); }),
            (Lines{"WriteBuffer MP", "delay 30", "WriteBuffer MI", "delay 300", "ReadBuffer 10"}));
  EXPECT_EQ(callsOf([this] { disableTouchPanel(access(), false); })[2], "WriteBuffer MS");
}

TEST_F(TouchSettings, ConfirmIsJudgedByTheSpeedAloneAfterTheControllerIsClosed) {
  const struct {
    const char* what;
    std::int32_t time, speed, area;
    const char* told;
  } cases[] = {{"all done", 1, 1, 1, "message Update OK"},
               {"only the speed done", 0, 1, 0, "message Update OK"},
               {"all but the speed done", 1, 0, 1, "message Update Error"},
               {"an answer beyond 16 bits", 1, 0x10000, 1, "message Update OK"}};
  for (const auto& c : cases) {
    journal.clear();
    script.results = {{"SetRightClickTime", c.time},
                      {"SetDoubleClickSpeed", c.speed},
                      {"SetDoubleClickArea", c.area}};
    confirmTiming(access(), prompt, {350, 5, 12});
    EXPECT_EQ(journal,
              (Lines{"OpenController RS232 DEVICE 1", "SetRightClickTime 350",
                     "SetDoubleClickSpeed 5", "SetDoubleClickArea 12", "CloseController", c.told}))
        << c.what;
  }
}

TEST_F(TouchSettings, SensitivitySendsNothingWhileItIsNotEnabledOrNothingIsChosen) {
  const std::pair<bool, int> cases[] = {{false, 4}, {true, -1}, {true, 5}};
  for (const auto& [enabled, index] : cases)
    EXPECT_FALSE(setSensitivity(access(), enabled, index)) << enabled << ' ' << index;
  EXPECT_TRUE(journal.empty());
}

TEST_F(TouchSettings, KeepsTheResultsThatAreKept) {
  script.results = {{"EnableUpSound", 7}, {"EnableDoubleClick", 0x12345}};
  EXPECT_EQ(enableUpSound(access(), true).result, std::nullopt);
  EXPECT_EQ(enableDoubleClick(access(), true).result, 0x2345);
}

TEST_F(TouchSettings, SaysWhatItDidAndWhatTheDriverMadeOfIt) {
  const SettingAnswer done{true, std::nullopt};
  const SettingAnswer notOpened{false, std::nullopt};
  const DriverSettings allOn{
      .touchMode = 2, .rightClickTime = 350, .rightClick = true, .rotation = 7};
  const struct {
    const char* name;
    int asked;
    const SettingAnswer& answer;
    const char* told;
  } cases[] = {
      {"right-click", 0, done, "Right button: off was asked, the driver reports on"},
      {"right-click", 1, notOpened, "Right button: on was asked, the controller cannot be opened"},
      {"touch-mode", 2, done, "Touch mode: drawing"},
      {"rotation", 1, done, "Rotation: 90 was asked, the driver reports 7"},
      {"right-click-time", 400, done,
       "Right click response time: 400 ms was asked, the driver reports 350 ms"},
      {"touch-panel", 0, done, "Touch panel: off"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(settingOutcome(setting(c.name), c.asked, c.answer, allOn), c.told);
  }
}

TEST_F(TouchSettings, AFailedOpenIsToldByEverySetting) {
  script.results["OpenController"] = 1;
  for (const Setting& each : settingTable()) {
    EXPECT_FALSE(each.set(access(), prompt, {}, each.lowest).opened) << each.name;
  }
}

TEST_F(TouchSettings, RefusesWhatIsNoValueAndSaysWhatIs) {
  const struct {
    std::string name;
    const char* text;
    const char* told;
  } cases[] = {
      {"up-sound", "On", "expected on or off, found \"On\""},
      {"up-sound", "1", "expected on or off, found \"1\""},
      {"rotation", "45", "expected 0, 90, 180 or 270, found \"45\""},
      {"rotation", "", "expected 0, 90, 180 or 270, found nothing"},
      {"right-click-time", "299", "expected a number from 300 to 1200, found \"299\""},
      {"right-click-time", "1201", "expected a number from 300 to 1200, found \"1201\""},
      {"right-click-time", "400 ", "expected a number from 300 to 1200, found \"400 \""},
      {"double-click-area", "-1", "expected a number from 0 to 255, found \"-1\""},
      {"double-click-area", "99999999999",
       "expected a number from 0 to 255, found \"99999999999\""},
  };
  for (const auto& [name, text, told] : cases) {
    const auto value = parseSetting(setting(name.c_str()), text);
    ASSERT_FALSE(value) << name << ' ' << text;
    EXPECT_EQ(value.error(), name + ": " + told);
  }
  EXPECT_EQ(findSetting("no-such-setting"), nullptr);
}

TEST(TimingBars, NeverChangeAValueThatNobodyMoves) {
  for (const int time : {300, 349, 350, 1151, 1200}) {
    TimingBars bars({.rightClickTime = time, .doubleClickSpeed = 200, .doubleClickArea = 255});
    for (const Bar bar : {Bar::doubleClickSpeed, Bar::doubleClickArea, Bar::rightClickTime}) {
      const auto [lowest, highest] = bars.range(bar);
      EXPECT_LE(lowest, bars.position(bar));
      EXPECT_GE(highest, bars.position(bar));
      bars.move(bar, bars.position(bar));
    }
    EXPECT_EQ(bars.timing(), (ClickTiming{time, 200, 255})) << time;
    EXPECT_EQ(bars.label(Bar::rightClickTime), std::to_string(time));
  }
}

TEST(TimingBars, ShowHundredsOfMillisecondsAndTheAreaAsItIs) {
  TimingBars bars({.rightClickTime = 350, .doubleClickSpeed = 5, .doubleClickArea = 0});
  bars.move(Bar::rightClickTime, 9);
  bars.move(Bar::doubleClickSpeed, 7);
  bars.move(Bar::doubleClickArea, 33);
  EXPECT_EQ(bars.label(Bar::rightClickTime), "900");
  EXPECT_EQ(bars.label(Bar::doubleClickSpeed), "700");
  EXPECT_EQ(bars.label(Bar::doubleClickArea), "33");
  EXPECT_EQ(bars.timing(), (ClickTiming{900, 7, 33}));
  bars.move(Bar::rightClickTime, 99);
  EXPECT_EQ(bars.timing().rightClickTime, 1200);
}

TEST(CursorNote, ShowsTheFileAsItStandsAfterAnEmptyLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "\r\n"},
      {"one\n  two  ", "\r\none\r\n  two  \r\n"},
      {"one\r\n\r\ntwo\r\n", "\r\none\r\n\r\ntwo\r\n"},
      {"ma\xEEtre", "\r\nma\xC3\xAEtre\r\n"}};
  test::TemporaryFolder folder;
  EXPECT_EQ(cursorNote(folder.path()), "\r\n") << "without the file";
  for (const auto& [file, shown] : cases) {
    folder.write("cursoroff.txt", file);
    EXPECT_EQ(cursorNote(folder.path()), shown);
  }
}

}  // namespace
}  // namespace touch
