#include "serial/recording/frmReplayBar.h"

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

}  // namespace
}  // namespace touch::test
