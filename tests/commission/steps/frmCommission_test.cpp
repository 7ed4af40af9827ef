#include "commission/steps/frmCommission.h"

#include "console/panels/frmMonitorRow.h"
#include "tests/console/parameters/parameter_controller.h"
#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

/// Somebody at the panel who does as the test says.
class Hands final : public PanelScreens {
 public:
  void calibrateFor(int points, std::function<void(CalibrationOutcome)> ended) override {
    done.push_back("calibrate " + std::to_string(points));
    if (stays) {
      onEnd = [ended] { ended(CalibrationOutcome::cancelled); };
      return;
    }
    ended(CalibrationOutcome::stored);
  }
  void checkFor(std::unique_ptr<WayBack> wayBack,
                std::function<void(const CheckResult&)> ended) override {
    done.push_back("check");
    EXPECT_TRUE(wayBack->settle());
    ended({CheckOutcome::kept, Notice::success("It is good.")});
  }
  void measureFor(measure::GuidedMeasuring guided, std::function<void()> ended) override {
    done.push_back("measure");
    guided.begun.sources = {{measure::SourceKind::pointer, 1, 1, true, "pointer"}};
    guided.begun.traces.push_back({"V-1", 0, measure::Blame::undecided, {{{}, 0.1, 0.1}}});
    EXPECT_TRUE(guided.keep(guided.begun));
    ended();
  }
  const QScreen& chooseMonitor(int monitor) override {
    done.push_back("monitor " + std::to_string(monitor));
    return *QGuiApplication::screens().at(monitor - 1);
  }
  void endScreen() override {
    if (onEnd) std::exchange(onEnd, nullptr)();
  }

  bool stays = false;  ///< the calibration, until it is ended
  std::function<void()> onEnd;
  Lines done;
};

class CommissionWindow : public WindowDesk {
 protected:
  CommissionWindow() {
    script.results["GetRightClickTime"] = 1000;
    script.results["GetTouchMode"] = 1;
    for (int address = 0; address < 8; ++address)
      script.replies["GP0" + std::to_string(address)] = {replyOf("01234")};
  }
  ~CommissionWindow() override { delete window; }

  void open() {
    delete window;
    window = new commission::frmCommission(
        {prompt, patient, trace},
        {hands, *QGuiApplication::primaryScreen(), QSize(800, 480), [this] { ++left; }});
    shown = window;
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    QApplication::processEvents();
  }
  void enter() {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    live(1ms);
  }
  std::string caption() const { return text("stepCaption"); }
  int done() const { return find<QProgressBar>("commissionProgress")->value(); }
  void choose(int step) { find<QListWidget>("commissionSteps")->setCurrentRow(step); }
  /// The only run's folder.
  fs::path run() const {
    for (const auto& entry : fs::directory_iterator(folder.path() / "commissioning"))
      if (entry.is_directory()) return entry;
    return {};
  }

  Hands hands;
  Patient patient{.access = access(), .driverPath = "nexapi", .workFolder = folder.path()};
  Trace trace;
  QPointer<commission::frmCommission> window;
  int left = 0;
};

TEST_F(CommissionWindow, LeadsByEnterAloneFromTheFirstStepToTheSheet) {
  open();
  enter();
  EXPECT_EQ(caption(), "What has to be there");
  enter();
  EXPECT_EQ(caption(), "Which panel");
  QTest::keyClicks(QApplication::focusWidget(), "A-17");
  for (int field = 0; field < 5; ++field)
    enter();
  find<QPushButton>("cmdDoStep")->setFocus();
  enter();
  EXPECT_EQ(caption(), "Controller and backup");
  for (const char* const next :
       {"Settings", "Calibration", "Check of the calibration", "Measurement", "Measurement"}) {
    enter();
    EXPECT_EQ(caption(), next);
  }
  EXPECT_THAT(text("stepFound"), HasSubstr("Something is missing."));
  click("cmdNextStep");
  EXPECT_EQ(caption(), "Report rate");
  enter();
  EXPECT_EQ(hands.done, Lines({"calibrate 5", "check", "measure"}));
  enter();
  EXPECT_EQ(caption(), "Verdict") << "it is no PASS, which is to be seen";
  choose(9);
  click("cmdDoStep");
  EXPECT_EQ(done(), 100);
  for (const char* const file : {"sheet.pdf", "sheet.html", "sheet.json"})
    EXPECT_TRUE(fs::exists(run() / file)) << file;
  click("cmdShowSheet");
  live(1ms);
  auto* const sheet = find<QWidget>("frmSheetView");
  EXPECT_TRUE(sheet->isVisible());
  const auto pages = sheet->findChildren<QLabel*>();
  EXPECT_EQ(pages.size(), 2) << "as many as the paper has";
  auto* const area = sheet->findChild<QScrollArea*>();
  for (const auto key : {Qt::Key_Down, Qt::Key_PageDown}) {
    const int before = area->verticalScrollBar()->value();
    QTest::keyClick(QApplication::focusWidget(), key);
    EXPECT_GT(area->verticalScrollBar()->value(), before);
  }
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(sheet->isVisible());
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 1);
}

TEST_F(CommissionWindow, GoesOnWhereItWasAndSkipsForAReasonOnly) {
  open();
  enter();
  prompt.answerText = " ";
  click("cmdSkipStep");
  EXPECT_EQ(done(), 0) << "a blank is no reason";
  prompt.answerText = "seen before";
  click("cmdSkipStep");
  EXPECT_EQ(caption(), "Which panel");
  EXPECT_FALSE(find<QPushButton>("cmdSkipStep")->isVisible());
  find<QLineEdit>("panelSerial")->setText(" A-17 ");
  click("cmdDoStep");
  window->askToLeave();
  live(0ms);

  open();
  EXPECT_THAT(find<QPushButton>("cmdGoOn")->text().toStdString(), StartsWith("Go on with A-17"));
  enter();
  EXPECT_EQ(caption(), "Controller and backup");
  choose(0);
  EXPECT_EQ(text("stepFound"), "Skipped: seen before");
  choose(6);
  EXPECT_FALSE(find<QPushButton>("cmdDoStep")->isEnabled()) << "other steps come first";
}

TEST_F(CommissionWindow, MendsWhatIsInTheWayWithoutLeavingTheStep) {
  const auto answers = std::exchange(script.replies, {});
  script.results["GetReportStatus"] = 0;
  folder.write("backup", "no folder");
  script.onCall = [&](const std::string& line) {
    if (line == "ReopenCOMPort") script.replies = answers;
    if (line == "WriteBuffer MS") script.results["GetReportStatus"] = 1;
  };
  open();
  enter();
  EXPECT_FALSE(find<QWidget>("cmdTakePortBack")->isVisible()) << "nobody has looked yet";
  enter();
  const TemporaryFolder other;
  answerFileDialog(QString::fromStdString(other.path().string()));
  for (const char* const mend : {"cmdTakePortBack", "cmdEnablePanel", "cmdChooseFolder"}) {
    EXPECT_EQ(caption(), "What has to be there");
    ASSERT_TRUE(find<QWidget>(mend)->isVisible()) << mend;
    click(mend);
    EXPECT_FALSE(find<QWidget>(mend)->isVisible()) << mend << ": it is judged again";
  }
  EXPECT_EQ(caption(), "Which panel");
  EXPECT_THAT(journal, Contains(HasSubstr("--work-dir")));
  EXPECT_EQ(patient.workFolder, other.path());
  EXPECT_TRUE(fs::is_empty(folder.path() / "commissioning")) << "the run has gone along";
  click("cmdDoStep");
  click("cmdDoStep");
  EXPECT_TRUE(fs::exists(other.path() / "backup")) << "and so do the parameters";
}

TEST_F(CommissionWindow, CanBeKeptInAnotherFolderFromTheStart) {
  fs::create_directory(folder.path() / "others");
  folder.write("commissioning", "no folder");
  open();
  click("cmdBegin");
  EXPECT_THAT(journal, Contains(HasSubstr("commissioning")));
  answerFileDialog(QString::fromStdString((folder.path() / "others").string()));
  click("cmdStartFolder");
  EXPECT_THAT(text("commissionFolder"), EndsWith("others/commissioning"));
  click("cmdBegin");
  EXPECT_EQ(caption(), "What has to be there");
}

TEST_F(CommissionWindow, MovesToThePanelsMonitor) {
  open();
  enter();
  const auto screens = QGuiApplication::screens();
  auto* const row = find<frmMonitorRow>("monitors");
  EXPECT_EQ(row->isVisible(), screens.size() > 1);
  emit row->assigned(static_cast<int>(screens.size()));
  EXPECT_EQ(hands.done, Lines({"monitor " + std::to_string(screens.size())}));
  EXPECT_EQ(window->screen(), screens.back());
  EXPECT_TRUE(window->isVisible());
  // Some window systems put a frame around it, which may be what begins there.
  EXPECT_THAT(screens.back()->geometry().topLeft(),
              testing::AnyOf(window->geometry().topLeft(), window->pos()));
}

TEST_F(CommissionWindow, IsFilledInByFingerAlone) {
  open();
  click("cmdBegin");
  click("cmdDoStep");
  EXPECT_EQ(caption(), "Which panel");
  EXPECT_FALSE(find<QWidget>("screenKeyboard")->isVisible());
  find<QWidget>("cmdDoStep")->setFocus();
  click("cmdScreenKeyboard");
  for (const char* const key : {"screenKey_A", "screenKey_7", "screenKeyBack", "screenKey_-",
                                "screenKey_1", "screenKeyNext", "screenKeySpace", "screenKey_Z"})
    click(key);
  EXPECT_EQ(find<QLineEdit>("panelSerial")->text(), "A-1");
  EXPECT_EQ(find<QLineEdit>("panelOperator")->text(), " Z");
  click("cmdDoStep");
  EXPECT_FALSE(find<QWidget>("screenKeyboard")->isVisible()) << "nothing is typed here";
}

TEST_F(CommissionWindow, SaysHowManyTargetsSuitAndLeavesTheChoiceToTheUser) {
  open();
  auto* const use = find<QComboBox>("commissionUse");
  use->setCurrentIndex(use->findData("signature"));
  enter();
  for (int step = 0; step < 4; ++step)
    click("cmdDoStep");
  EXPECT_EQ(caption(), "Settings") << "they are not as this use wants them";
  EXPECT_FALSE(find<QWidget>("targetAdvice")->isVisible());
  click("cmdNextStep");
  EXPECT_THAT(text("targetAdvice"), StartsWith("9 targets"));
  auto* const targets = find<QComboBox>("calibrationTargets");
  EXPECT_EQ(targets->currentData(), 9);
  targets->setCurrentIndex(targets->findData(3));
  choose(0);
  choose(4);
  click("cmdDoStep");
  EXPECT_EQ(hands.done, Lines({"calibrate 3"}));
}

TEST_F(CommissionWindow, LeavesWhenWhatIsInFrontOfItHasEnded) {
  open();
  enter();
  prompt.answerText = "no need";
  click("cmdSkipStep");
  click("cmdDoStep");
  click("cmdDoStep");
  click("cmdDoStep");
  EXPECT_EQ(caption(), "Calibration");
  hands.stays = true;
  click("cmdDoStep");
  EXPECT_EQ(left, 0);
  window->askToLeave();
  live(0ms);
  EXPECT_EQ(left, 1);
  hands.stays = false;
  open();
  enter();
  EXPECT_EQ(caption(), "Check of the calibration") << "the calibration is done, badly";
  choose(4);
  EXPECT_EQ(text("stepFound"), "The calibration was not completed.");
}

}  // namespace
}  // namespace touch::test
