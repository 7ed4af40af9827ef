#include "serial/recording/frmReplayBar.h"

#include "serial/recording/replay_time.h"
#include "tests/serial/debugger/debugger_bench.h"
#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

/// Ten transfers, one a second, of which the number is the only byte.
class ReplayBar : public WindowDesk {
 protected:
  ReplayBar() {
    shown = &bar;
    EXPECT_TRUE(replay.open());
    QObject::connect(&bar, &frmReplayBar::sought, [this] { ++sought; });
    bar.show(&replay);
  }
  static std::unique_ptr<TransferSource> recording() {
    std::vector<Transfer> transfers;
    for (std::uint8_t second = 0; second <= 10; ++second)
      transfers.push_back({std::chrono::seconds(second), Direction::fromController, {second}});
    return std::make_unique<KeptTransfers>(std::move(transfers));
  }
  Bytes readAfter(std::chrono::milliseconds time) {
    live(time);
    Bytes bytes = replay.readAll();
    bar.show(&replay);
    return bytes;
  }

  ReplayPort replay{recording(), clock};
  int sought = 0;
  frmReplayBar bar;
};

TEST_F(ReplayBar, HoldsStepsAndLetsGoOn) {
  EXPECT_EQ(readAfter(1500ms), Bytes({0, 1}));
  EXPECT_FALSE(find<QPushButton>("cmdStepReplay")->isEnabled()) << "it is not held";
  click("cmdHoldReplay");
  EXPECT_EQ(readAfter(5s), Bytes());
  EXPECT_EQ(text("lblReplayTime"), "1.5 of 10.0 s");
  click("cmdStepReplay");
  EXPECT_EQ(readAfter(5s), Bytes({2}));
  click("cmdHoldReplay");
  EXPECT_EQ(readAfter(1s), Bytes({3}));
}

TEST_F(ReplayBar, MovesAndHurries) {
  auto* const place = find<QSlider>("sliderReplay");
  place->setValue(750);
  EXPECT_EQ(sought, 1);
  EXPECT_EQ(text("lblReplayTime"), "7.5 of 10.0 s");
  EXPECT_EQ(readAfter(600ms), Bytes({8}));
  place->setValue(0);
  auto* const speed = find<QComboBox>("comboReplaySpeed");
  speed->setCurrentIndex(speed->findData(5.0));
  emit speed->activated(speed->currentIndex());
  EXPECT_EQ(readAfter(1s), Bytes({0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(place->value(), 500) << "it shows where the replay is";
  place->setSliderDown(true);
  place->setSliderPosition(200);
  readAfter(100ms);
  EXPECT_EQ(place->sliderPosition(), 200) << "what the user moves stays";
  bar.show(nullptr);
  EXPECT_FALSE(bar.isVisible());
}

TEST_F(ReplayBar, GoesExactlyToATimeThatIsTyped) {
  auto* const typed = find<QLineEdit>("editReplayTime");
  const auto go = [typed](const char* text) {
    typed->selectAll();
    QTest::keyClicks(typed, text);
    QTest::keyClick(typed, Qt::Key_Return);
  };
  go("0:00:03,25");
  EXPECT_EQ(replay.position(), 3250ms);
  EXPECT_EQ(sought, 1);
  go("99:59:59");
  EXPECT_EQ(replay.position(), 10s) << "it ends there";
  go("1::2");
  EXPECT_EQ(sought, 2);
  EXPECT_NE(typed->styleSheet(), "") << "marked as wrong";
  go("4.000001");
  EXPECT_EQ(replay.position(), 4'000'001us);
  EXPECT_EQ(typed->styleSheet(), "");
  click("cmdReplayOn");
  EXPECT_EQ(replay.position(), 5'000'001us);
  click("cmdReplayBack");
  click("cmdReplayBack");
  EXPECT_EQ(replay.position(), 3'000'001us);
}

TEST_F(ReplayBar, StepsFinelyInARecordingOfADay) {
  ReplayPort day(
      std::make_unique<KeptTransfers>(std::vector<Transfer>{
          {0s, Direction::fromController, {1}}, {86'400s, Direction::fromController, {2}}}),
      clock);
  EXPECT_TRUE(day.open());
  bar.show(&day);
  day.pause(true);
  auto* const place = find<QSlider>("sliderReplay");
  place->setValue(place->maximum() / 2);
  EXPECT_EQ(day.position(), 43'200s);
  QTest::keyClick(place, Qt::Key_Right);
  EXPECT_EQ(day.position(), 43'201s);
  bar.show(nullptr);
}

TEST(ReplayTime, IsReadInSecondsOrWithHoursAndMinutes) {
  const struct {
    const char* text;
    std::optional<std::chrono::microseconds> time;
  } cases[] = {
      {"75", 75s},
      {" 1:15 ", 75s},
      {"1:02:03.5", 3723'500ms},
      {"86400,000001", 86'400'000'001us},
      {"90:00", 5400s},
      {"", std::nullopt},
      {"-1", std::nullopt},
      {"1:60", std::nullopt},
      {"1:2:3:4", std::nullopt},
      {"1.", std::nullopt},
      {"1:", std::nullopt},
      {"9999999", std::nullopt},
      {"1.0000001", std::nullopt},
      {"1.5:2", std::nullopt},
      {"1 h", std::nullopt},
  };
  for (const auto& [text, time] : cases)
    EXPECT_EQ(parseReplayTime(text), time) << text;
}

}  // namespace
}  // namespace touch::test
