
#include "console/settings/touch_settings.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

using Bar = TimingBars::Bar;

class TouchSettings : public Desk {
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

  /// What lies between opening and closing; after that nothing is done but a message shown.
  Lines callsOf(const std::function<void()>& action) {
    journal.clear();
    action();
    EXPECT_EQ(journal.front(), "OpenController " + session.controllerName);
    const auto closing = std::find(journal.begin(), journal.end(), "CloseController");
    EXPECT_THAT(Lines(closing + 1, journal.end()), Each(StartsWith("message ")));
    return {journal.begin() + 1, closing};
  }
};

TEST_F(TouchSettings, EachMakesItsOwnCallsAndNoOther) {
  const DriverSettings current{
      .rightClickTime = 700ms, .doubleClickSpeed = Deciseconds(4), .doubleClickArea = 9};
  const std::tuple<const char*, const char*, Lines> cases[] = {
      {"up-sound", "on", {"EnableUpSound 1"}},
      {"down-sound", "on", {"EnableDownSound 1"}},
      {"double-click", "off", {"EnableDoubleClick 0"}},
      {"right-click", "on", {"EnableRightClick 1"}},
      {"rotation", "270", {"SetRotation 3"}},
      {"touch-mode", "button", {"SetReportMode 3"}},
      {"double-click-speed", "255", timing(700, 255, 9)},
      {"double-click-area", "0", timing(700, 4, 0)},
      {"right-click-time", "1200", timing(1200, 4, 9)},
      {"sensitivity", "most", {"WriteBuffer SE4", "delay 300", "FlushReadBuffer"}},
      {"touch-panel", "off", panelMode("MS", "MI")},
      {"touch-panel", "on", panelMode("MS", "MS")},
  };
  for (const auto& [name, text, calls] : cases) {
    SCOPED_TRACE(std::string(name) + ' ' + text);
    const Setting& changed = setting(name);
    const auto value = parseSetting(changed, text);
    ASSERT_TRUE(value);
    EXPECT_EQ(callsOf([&] { changed.set(access(), prompt, current, *value); }), calls);
  }
  session.controllerName = "PS2 DEVICE 1";
  EXPECT_EQ(callsOf([this] { disableTouchPanel(access(), true); }), panelMode("MP", "MI"));
}

TEST_F(TouchSettings, ConfirmIsJudgedByTheSpeedAloneAfterTheControllerIsClosed) {
  for (const auto& [speed, told] : {std::pair(1, "message Update OK"),
                                    {0, "message Update Error"},
                                    {0x10000, "message Update OK"}}) {
    const int others = speed == 0;
    script.results = {{"SetRightClickTime", others},
                      {"SetDoubleClickSpeed", speed},
                      {"SetDoubleClickArea", others}};
    const auto confirm = [this] { confirmTiming(access(), prompt, {350ms, Deciseconds(5), 12}); };
    EXPECT_EQ(callsOf(confirm), timing(350, 5, 12));
    EXPECT_EQ(Lines(journal.end() - 2, journal.end()), (Lines{"CloseController", told})) << speed;
  }
}

TEST_F(TouchSettings, SayWhenTheControllerCannotBeOpened) {
  script.results["OpenController"] = 1;
  for (const Setting& each : settingTable()) {
    const auto answer = each.set(access(), prompt, {}, each.lowest);
    EXPECT_THAT(settingOutcome(each, each.lowest, answer),
                EndsWith(" was asked, the controller cannot be opened"));
  }
}

TEST_F(TouchSettings, OfThePanelShowWhatWasSentUntilTheyAreRead) {
  SettingsPanel panel(access(), prompt);
  // Read as 0, the mode is shown as 2 and written as 1: that stays so while others are changed.
  const DriverSettings read{.touchMode = 2,
                            .rightClickTime = 700ms,
                            .doubleClickSpeed = Deciseconds(4),
                            .timingRead = true};
  panel.take(read);
  EXPECT_FALSE(panel.changeSensitivity(4)) << "the page is not filled yet";
  const std::tuple<const char*, int, bool DriverSettings::*, Lines> switches[] = {
      {"up-sound", 1, &DriverSettings::upSound, {"EnableUpSound 1"}},
      {"down-sound", 1, &DriverSettings::downSound, {"EnableDownSound 1"}},
      {"double-click", 1, &DriverSettings::doubleClick, {"EnableDoubleClick 1"}},
      {"right-click", 1, &DriverSettings::rightClick, {"EnableRightClick 1"}},
      {"touch-panel", 1, &DriverSettings::reporting, panelMode("MS", "MS")},
  };
  DriverSettings expected = read;
  // This driver reports nothing of what it is told.
  script.results = {{"GetUpSoundStatus", 0}, {"GetReportStatus", 0}};
  for (const auto& [name, value, member, calls] : switches) {
    EXPECT_EQ(callsOf([&, n = name, v = value] { panel.change(setting(n), v); }), calls);
    expected.*member = true;
    EXPECT_EQ(panel.shown(), expected) << name;
  }
  EXPECT_EQ(callsOf([&] { panel.change(setting("rotation"), 3); }), Lines{"SetRotation 3"});
  EXPECT_EQ(panel.shown().rotation, 3);
  panel.take(read);
  panel.change(setting("up-sound"), 0);
  EXPECT_EQ(panel.shown(), read) << "of another controller nothing stays";

  panel.moveBar(Bar::doubleClickSpeed, 5);
  script.results["SetDoubleClickSpeed"] = 0;
  EXPECT_EQ(panel.confirm().text, "Timing: the driver did not take it");
  script.results = {};
  EXPECT_EQ(callsOf([&] { panel.confirm(); }), timing(700, 5, 0));
  EXPECT_EQ(panel.bars().timing(), (ClickTiming{700ms, Deciseconds(5), 0}));
  script.results["OpenController"] = 1;
  EXPECT_EQ(panel.confirm().text, "Timing: the controller cannot be opened");
}

TEST(CursorNote, IsTheFilesTextIfThereIsAFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(*cursorNote(folder.path()), "\r\n");
  folder.write("cursoroff.txt", "one\ntwo");
  EXPECT_EQ(*cursorNote(folder.path()), "\r\none\r\ntwo\r\n");
  folder.write("cursoroff.txt", std::string(largestCursorNote + 1, 'x'));
  EXPECT_FALSE(cursorNote(folder.path())) << "there is one, and it is not shown";
}

TEST_F(TouchSettings, RefuseWhatIsNoValueAndSayWhatIs) {
  const std::tuple<std::string, std::string, std::vector<const char*>> cases[] = {
      {"up-sound", "on or off", {"On", "1"}},
      {"right-click-time", "a number from 300 to 1200", {"299", "1201", "400 ", "99999999999"}},
  };
  for (const auto& [name, allowed, texts] : cases) {
    for (const std::string text : texts)
      EXPECT_EQ(parseSetting(setting(name.c_str()), text).error(),
                name + ": expected " + allowed + ", found \"" + text + '"');
  }
}

TEST(TimingBars, ChangeOnlyWhatIsMoved) {
  TimingBars bars(
      {.rightClickTime = 1151ms, .doubleClickSpeed = Deciseconds(200), .doubleClickArea = 255});
  for (const Bar bar : {Bar::doubleClickSpeed, Bar::doubleClickArea, Bar::rightClickTime}) {
    EXPECT_GE(bars.range(bar).highest, bars.position(bar));
    bars.move(bar, bars.position(bar));
  }
  EXPECT_EQ(bars.timing(), (ClickTiming{1151ms, Deciseconds(200), 255}));
  EXPECT_EQ(bars.position(Bar::rightClickTime), 12) << "the nearest hundred";
  bars.move(Bar::rightClickTime, 99);
  bars.move(Bar::doubleClickSpeed, 7);
  EXPECT_EQ(bars.timing(), (ClickTiming{1200ms, Deciseconds(7), 255}));
}

}  // namespace
}  // namespace touch::test
