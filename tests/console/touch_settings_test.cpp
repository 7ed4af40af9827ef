#include "console/touch_settings.h"

#include "tests/support/desk.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

using test::Lines;
using Bar = TimingBars::Bar;

class TouchSettings : public test::Desk {
 protected:
  static const Setting& setting(const char* name) { return *findSetting(name); }
  static Lines timing(int time, int speed, int area) {
    return {"SetRightClickTime " + std::to_string(time),
            "SetDoubleClickSpeed " + std::to_string(speed),
            "SetDoubleClickArea " + std::to_string(area)};
  }
  static Lines panelMode(const std::string& first, const std::string& second) {
    return {"WriteBuffer " + first, "delay 30", "WriteBuffer " + second, "delay 300",
            "ReadBuffer 10"};
  }

  /// What lies between opening and closing.
  Lines callsOf(const std::function<void()>& action) {
    journal.clear();
    action();
    EXPECT_EQ(journal.front(), "OpenController " + session.controllerName);
    const auto close = std::find(journal.begin(), journal.end(), "CloseController");
    return {journal.begin() + 1, close};
  }
};

TEST_F(TouchSettings, EachMakesItsOwnCallsAndNoOther) {
  const DriverSettings current{.rightClickTime = 700, .doubleClickSpeed = 4, .doubleClickArea = 9};
  const std::tuple<const char*, const char*, Lines> cases[] = {
      {"up-sound", "on", {"EnableUpSound 1"}},
      {"down-sound", "on", {"EnableDownSound 1"}},
      {"double-click", "off", {"EnableDoubleClick 0"}},
      {"right-click", "on", {"EnableRightClick 1"}},
      {"rotation", "90", {"SetRotation 1"}},
      {"rotation", "270", {"SetRotation 3"}},
      {"touch-mode", "desktop", {"SetReportMode 1"}},
      {"touch-mode", "button", {"SetReportMode 3"}},
      {"double-click-speed", "255", timing(700, 255, 9)},
      {"double-click-area", "0", timing(700, 4, 0)},
      {"right-click-time", "1200", timing(1200, 4, 9)},
      {"sensitivity", "low", {"WriteBuffer SE0", "delay 300", "FlushReadBuffer"}},
      {"sensitivity", "most", {"WriteBuffer SE4", "delay 300", "FlushReadBuffer"}},
      {"touch-panel", "off", panelMode("MS", "MI")},
      {"touch-panel", "on", panelMode("MS", "MS")},
  };
  for (const auto& [name, text, calls] : cases) {
    SCOPED_TRACE(std::string(name) + ' ' + text);
    const auto value = parseSetting(setting(name), text);
    ASSERT_TRUE(value);
    EXPECT_EQ(callsOf([&] { setting(name).set(access(), prompt, current, *value); }), calls);
  }
  for (const int none : {-1, 5})
    EXPECT_FALSE(setSensitivity(access(), true, none)) << "nothing is chosen";
  EXPECT_FALSE(setSensitivity(access(), false, 4)) << "not enabled";
  session.controllerName = "PS2 DEVICE 1";
  EXPECT_EQ(callsOf([this] { disableTouchPanel(access(), true); }), panelMode("MP", "MI"));
  EXPECT_EQ(callsOf([this] { disableTouchPanel(access(), false); }), panelMode("MP", "MS"));
}

TEST_F(TouchSettings, ConfirmIsJudgedByTheSpeedAloneAfterTheControllerIsClosed) {
  const struct {
    std::int32_t time, speed, area;
    const char* told;
  } cases[] = {{0, 1, 0, "message Update OK"},
               {1, 0, 1, "message Update Error"},
               {1, 0x10000, 1, "message Update OK"}};
  for (const auto& [time, speed, area, told] : cases) {
    script.results = {
        {"SetRightClickTime", time}, {"SetDoubleClickSpeed", speed}, {"SetDoubleClickArea", area}};
    EXPECT_EQ(callsOf([this] {
                confirmTiming(access(), prompt, {350, 5, 12});
              }),
              timing(350, 5, 12));
    EXPECT_EQ(Lines(journal.end() - 2, journal.end()), (Lines{"CloseController", told})) << speed;
  }
}

TEST_F(TouchSettings, SayWhatTheDriverMadeOfThem) {
  const DriverSettings allOn{
      .touchMode = 2, .rightClickTime = 350, .rightClick = true, .rotation = 7};
  const std::tuple<const char*, int, const char*> cases[] = {
      {"right-click", 0, "Right button: off was asked, the driver reports on"},
      {"touch-mode", 2, "Touch mode: drawing"},
      {"rotation", 1, "Rotation: 90 was asked, the driver reports 7"},
      {"right-click-time", 400,
       "Right click response time: 400 ms was asked, the driver reports 350 ms"},
  };
  for (const auto& [name, asked, told] : cases)
    EXPECT_EQ(settingOutcome(setting(name), asked, {true, std::nullopt}, allOn), told);

  script.results["OpenController"] = 1;
  for (const Setting& each : settingTable()) {
    const auto answer = each.set(access(), prompt, {}, each.lowest);
    EXPECT_THAT(settingOutcome(each, each.lowest, answer, {}),
                testing::EndsWith(" was asked, the controller cannot be opened"));
  }
}

TEST_F(TouchSettings, RefuseWhatIsNoValueAndSayWhatIs) {
  const std::tuple<std::string, const char*, const char*> cases[] = {
      {"up-sound", "On", "expected on or off, found \"On\""},
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
}

TEST(TimingBars, ChangeOnlyWhatIsMovedAndShowMillisecondsButForTheArea) {
  constexpr Bar speed = Bar::doubleClickSpeed, area = Bar::doubleClickArea,
                time = Bar::rightClickTime;
  for (const int reported : {300, 349, 350, 1151, 1200}) {
    TimingBars bars({.rightClickTime = reported, .doubleClickSpeed = 200, .doubleClickArea = 255});
    for (const Bar bar : {speed, area, time}) {
      const auto [lowest, highest] = bars.range(bar);
      EXPECT_THAT(bars.position(bar), testing::AllOf(testing::Ge(lowest), testing::Le(highest)));
      bars.move(bar, bars.position(bar));
    }
    EXPECT_EQ(bars.timing(), (ClickTiming{reported, 200, 255}));
    EXPECT_EQ(bars.label(time), std::to_string(reported));
    bars.move(time, 9);
    bars.move(speed, 7);
    EXPECT_EQ(bars.timing(), (ClickTiming{900, 7, 255}));
    EXPECT_EQ((Lines{bars.label(time), bars.label(speed), bars.label(area)}),
              (Lines{"900", "700", "255"}));
    bars.move(time, 99);
    EXPECT_EQ(bars.timing().rightClickTime, 1200);
  }
}

TEST(CursorNote, ShowsTheFileAsItStandsAfterAnEmptyLine) {
  test::TemporaryFolder folder;
  EXPECT_EQ(cursorNote(folder.path()), "\r\n") << "without the file";
  folder.write("cursoroff.txt", "one\r\n\n  ma\xEEtre  ");
  EXPECT_EQ(cursorNote(folder.path()), "\r\none\r\n\r\n  ma\xC3\xAEtre  \r\n");
}

}  // namespace
}  // namespace touch
