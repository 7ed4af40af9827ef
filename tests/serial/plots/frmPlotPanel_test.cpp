#include "serial/plots/frmPlotPanel.h"

#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

class PlotPanel : public WindowDesk {
 protected:
  PlotPanel() {
    shown = &panel;
    QObject::connect(&panel, &frmPlotPanel::statusChanged,
                     [this](const QString& text) { status = text.toStdString(); });
    panel.show();
  }
  /// A recording of so many reports, 100 a second; and what stands behind them.
  void openRecording(int reports, const std::string& rest = {}) {
    std::string recorded = "touch recording 1\n# Line: 19200,n,8,1\n";
    for (int i = 0; i < reports; ++i)
      recorded += recordingLine({i * 10ms, Direction::fromController, {0xD8, 1, 2, 3, 4}}) + '\n';
    folder.write("long.txt", recorded + rest);
    answerFileDialog("long.txt");
    click("cmdPlotRecording");
  }
  bool isReading() const { return find<QWidget>("cmdPlotCancel")->isVisible(); }

  std::string status;
  frmPlotPanel panel{
      clock, [] { return TimedReports(ReportFamily::tablet); }, {folder.path(), folder.path()}};
};

TEST_F(PlotPanel, ReadsALongRecordingInPiecesThatTheUserCanEnd) {
  openRecording(100'000);
  ASSERT_TRUE(isReading());
  live(1ms);
  const auto* const progress = find<QProgressBar>("plotProgress");
  const int once = progress->value();
  EXPECT_GT(once, progress->minimum());
  EXPECT_LT(once, progress->maximum());
  live(1ms);
  EXPECT_TRUE(isReading());
  EXPECT_GT(progress->value(), once);
  click("cmdPlotCancel");
  EXPECT_FALSE(isReading());
  EXPECT_EQ(status, "Reading was ended. Reports in long.txt so far: 90000");
  EXPECT_THAT(text("lblFigures"), StartsWith("Reports: 90000. Strokes: 1."));
  live(1s);
  EXPECT_THAT(text("lblFigures"), StartsWith("Reports: 90000.")) << "nothing more is read";

  openRecording(100'000);
  live(1s);
  EXPECT_FALSE(isReading());
  EXPECT_EQ(status, "Reports in long.txt: 100000");
  EXPECT_THAT(text("lblFigures"), HasSubstr("speed: 0."));
}

TEST_F(PlotPanel, SaysWhereARecordingBreaksOffAndBeginsAnewInTheMiddle) {
  openRecording(40'000, "400.000000 < XX\n");
  live(1s);
  EXPECT_FALSE(isReading());
  EXPECT_THAT(status, EndsWith("found \"XX\""));
  EXPECT_THAT(text("lblFigures"), StartsWith("Reports: 40000."));

  openRecording(100'000);
  ASSERT_TRUE(isReading());
  click("cmdPlotLive");
  EXPECT_FALSE(isReading());
  live(1s);
  panel.take(1s, Bytes{0xD8, 1, 2, 3, 4, 0x98, 1, 2, 3, 4}, {});
  panel.renew();
  EXPECT_THAT(text("lblFigures"), StartsWith("Reports: 2."));
  EXPECT_THAT(text("lblFigures"), HasSubstr("speed: 1."));
}

TEST_F(PlotPanel, SavesTheTableOfARecordingInPiecesThatTheUserCanEnd) {
  openRecording(100'000);
  click("cmdPlotSave");
  EXPECT_EQ(status, "The recording is still being read.");
  live(1s);
  const auto save = [this] {
    answerFileDialog("all.csv");
    click("cmdPlotSave");
  };
  save();
  EXPECT_TRUE(isReading());
  click("cmdPlotCancel");
  EXPECT_EQ(status, "Saving was ended. Nothing was saved.");
  EXPECT_FALSE(fs::exists(folder.path() / "all.csv"));
  save();
  live(1s);
  EXPECT_FALSE(isReading());
  EXPECT_THAT(status, StartsWith("Saved in "));
  EXPECT_EQ(std::ranges::count(folder.read("all.csv"), '\n'), 100'001);
}

}  // namespace
}  // namespace touch::test
