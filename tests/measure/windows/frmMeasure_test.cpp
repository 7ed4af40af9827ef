#include "measure/windows/frmMeasure.h"

#include "measure/files/measurement_file.h"
#include "measure/windows/frmVerdict.h"
#include "tests/doubles/small_disk.h"
#include "tests/ui/window_desk.h"

namespace touch::test {
namespace {

/// A controller whose reports the test writes down.
class WrittenStream final : public TouchStream {
 public:
  explicit WrittenStream(const Clock& clock) : clock_(clock) {}

  /// Along a line, in parts of the panel; the finger is lifted at its end.
  void draw(QPointF from, QPointF to, int steps) {
    for (int step = 0; step <= steps; ++step) {
      const QPointF at = from + (to - from) * step / steps;
      add(at, true, 0.01 * step);
    }
    if (tellsLifts) add(to, false, 0.01 * (steps + 1));
  }

  Result<void, std::string> begin(int port) override {
    if (port != present) return tl::unexpected("there is no COM" + std::to_string(port));
    isOn = true;
    return {};
  }
  void end() override { isOn = false; }
  std::vector<ArrivedReport> read() override { return std::exchange(waiting_, {}); }
  std::optional<std::string> lost() const override { return why; }

  int present = 3;
  bool isOn = false;
  bool tellsLifts = true;
  std::optional<std::string> why;

 private:
  void add(QPointF at, bool touching, double later) {
    constexpr RawCounts greatest{16383};
    const auto counts = [](double part) {
      return RawCounts{static_cast<std::uint16_t>(part * greatest.value)};
    };
    const std::chrono::duration<double> now = clock_.now().time_since_epoch();
    waiting_.push_back({{0, counts(at.x()), counts(at.y()), greatest, 5, touching},
                        now + std::chrono::duration<double>(later)});
  }

  const Clock& clock_;
  std::vector<ArrivedReport> waiting_;
};

class MeasureWindow : public DrawingDesk {
 protected:
  MeasureWindow() {
    measuring.size = {{200}, {120}, measure::SizeSource::user};
    makePanelExact();
  }
  ~MeasureWindow() override { delete window; }

  void open(QSize size = QSize(800, 480)) {
    delete window;
    screen = size;
    window = new measure::frmMeasure({clock,
                                      prompt,
                                      session.messages,
                                      measuring,
                                      folder.path(),
                                      {},
                                      &stream,
                                      {{3, "COM3 (/dev/ttyS2)"}},
                                      guided},
                                     simulation, controller, *QGuiApplication::primaryScreen(),
                                     size, [this] { ++left; });
    shown = window;
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    QApplication::processEvents();
    canvas = find<QWidget>("linesCanvas");
  }
  void openAndStart(QSize size = QSize(800, 480)) {
    open(size);
    click("cmdStart");
  }
  void enter(const char* box, double value) { find<QDoubleSpinBox>(box)->setValue(value); }
  /// Where line `number` of an orientation lies, in pixels.
  int at(bool vertical, int number) const {
    const int length = vertical ? screen.width() : screen.height();
    return length / 32 + length * 15 / 16 * (number - 1) / 8;
  }
  void drawLine(bool vertical, int number, int off = 0, int steps = 120) {
    const int place = at(vertical, number) + off;
    vertical ? draw(canvas, {{place, 1}, {place, screen.height() - 2}}, steps)
             : draw(canvas, {{1, place}, {screen.width() - 2, place}}, steps);
  }
  /// The outcome, when it has been found.
  std::string verdict() const {
    auto* const page = find<measure::frmVerdict>("frmVerdict");
    EXPECT_TRUE(QTest::qWaitFor([&] { return text("verdictWord") != "Analysing …"; }));
    EXPECT_NE(page->report(), nullptr);
    const auto& subjects = page->report()->verdict.subjects;
    const auto passed = std::ranges::count_if(subjects, [](const measure::Subject& subject) {
      return measure::findGuide(subject.name) != nullptr &&
             subject.outcome() == measure::Outcome::pass;
    });
    return text("verdictWord") + ' ' + std::to_string(passed);
  }
  std::string cell(int row, int column) const {
    return find<QTableWidget>("figuresTable")->item(row, column)->text().toStdString();
  }

  WrittenStream stream{clock};
  std::optional<measure::GuidedMeasuring> guided;
  QPointer<measure::frmMeasure> window;
  QWidget* canvas = nullptr;
  QSize screen;
  int left = 0;
};

TEST_F(MeasureWindow, GoesFromTheSizeThroughTheLinesToTheResults) {
  measuring.size.reset();
  open();
  EXPECT_THAT(text("sizeSource"), StartsWith("Nominal"));
  enter("panelWidth", 200);
  EXPECT_THAT(text("sizeSource"), StartsWith("Nominal")) << "the height is still a guess";
  enter("panelHeight", 119);
  click("panelHeightMore");
  EXPECT_EQ(text("sizeSource"), "Active area, as entered.");
  find<QLineEdit>("serialNumber")->setText("A-17");
  click("cmdStart");
  EXPECT_EQ(text("lineTitle"), "V-1   0 of 18 measured");
  draw(canvas, {{25, 1}, {26, 3}}, 1);
  EXPECT_THAT(text("instruction"), StartsWith("Stroke too short"));
  constexpr int twoMillimetres = 8;
  drawLine(true, 1, twoMillimetres);
  EXPECT_THAT(text("instruction"), StartsWith("Drawn: FAIL"));
  EXPECT_THAT(text("instruction"), HasSubstr("\noffset: 2."));
  click("cmdRepeat");
  drawLine(true, 1, 0, 5);
  EXPECT_THAT(text("instruction"), HasSubstr("INCOMPLETE"));
  EXPECT_THAT(text("instruction"), HasSubstr("\nsamples: 6; at least 50"));
  click("cmdRepeat");
  for (int line = 0; line < 18; ++line) {
    drawLine(line < 9, line % 9 + 1, line == 9 ? twoMillimetres : 1);
    QTest::keyClick(canvas, line % 2 == 0 ? Qt::Key_Right : Qt::Key_Return);
  }
  EXPECT_THAT(folder.read("Tvm-v1.txt"), StartsWith("V-1\r\n"));
  EXPECT_EQ(verdict(), "FAIL 17");
  auto* const table = find<QTableWidget>("figuresTable");
  ASSERT_EQ(table->rowCount(), 18);
  EXPECT_EQ(cell(9, 1), "FAIL");
  EXPECT_THAT(text("conditions"), HasSubstr("A-17"));

  const std::tuple<const char*, const char*, const char*> exports[] = {
      {"cmdExportPng", "a.png", "\x89PNG"},
      {"cmdExportPdf", "b.pdf", "%PDF-"},
      {"cmdExportCsv", "c.csv", "line,verdict,samples,"},
      {"cmdSave", "d.json", "{\n  \"schema\": \"touch measurement\""},
  };
  for (const auto& [button, file, beginning] : exports) {
    {
      const SmallDisk full(1);
      answerFileDialog(file);
      click(button);
    }
    EXPECT_THAT(journal.back(), HasSubstr(file + std::string(": expected a place that can be ")));
    EXPECT_FALSE(fs::exists(folder.path() / file));
    answerFileDialog(file);
    click(button);
    EXPECT_THAT(folder.read(file), StartsWith(beginning));
    EXPECT_EQ(text("statusLine"), "OK: Saved in " + (folder.path() / file).string());
  }

  // A smaller panel errs less.
  auto* const tabs = find<QTabWidget>("verdictPages");
  tabs->setCurrentIndex(5);
  enter("correctedWidth", 80);
  enter("correctedHeight", 48);
  click("cmdJudgeAgain");
  EXPECT_EQ(verdict(), "PASS 18");
  auto* const limits = find<QComboBox>(*find<QWidget>("measureResult"), "limits");
  limits->setCurrentIndex(2);
  emit limits->activated(2);
  EXPECT_EQ(verdict(), "FAIL 17") << "signatures are stricter";

  tabs->setCurrentIndex(4);
  table->setCurrentCell(9, 0);
  click("cmdDrawAgain");
  EXPECT_EQ(text("lineTitle"), "H-1   18 of 18 measured");
  EXPECT_THAT(text("instruction"), StartsWith("Measured before"));

  openAndStart();
  EXPECT_EQ(verdict(), "FAIL 17") << "a set that is whole is shown";
  EXPECT_EQ(count("confirm"), 0);
  prompt.answers = false;
  click("cmdMeasureAnew");
  EXPECT_TRUE(fs::exists(folder.path() / "Tvm-h9.txt"));
  prompt.answers = true;
  click("cmdMeasureAnew");
  EXPECT_EQ(count("confirm Measure everything anew?"), 2);
  EXPECT_EQ(text("lineTitle"), "V-1   0 of 18 measured");
  EXPECT_FALSE(fs::exists(folder.path() / "Tvm-h9.txt"));
  EXPECT_THAT(folder.read("Tvm-h9.txt.old"), StartsWith("H-9"));

  open();
  answerFileDialog("d.json");
  click("cmdOpen");
  EXPECT_EQ(verdict(), "FAIL 17");
  EXPECT_FALSE(find<QPushButton>("cmdDrawAgain")->isVisible());
  const auto shownLimits = [this] {
    return find<QComboBox>(*find<QWidget>("measureResult"), "limits")->currentText();
  };
  EXPECT_THAT(shownLimits().toStdString(), StartsWith("industrial")) << "not those of the setup";
  enter("correctedWidth", 81);
  click("cmdJudgeAgain");
  verdict();
  EXPECT_EQ(measuring.size->width.value, 80) << "the panel that is here is another one";

  std::string strict = folder.read("d.json");
  const std::string_view samples = "\"samples\": 50";
  ASSERT_NE(strict.find(samples), strict.npos);
  strict.replace(strict.find(samples), samples.size(), "\"samples\": 51");
  folder.write("e.json", strict);
  click("cmdBackToLines");
  answerFileDialog("e.json");
  click("cmdOpen");
  verdict();
  EXPECT_EQ(shownLimits(), "those of the measurement");
}

TEST_F(MeasureWindow, MeasuresTheControllersOwnReportsAndIsOperatedByThem) {
  measuring.reportPort = 5;
  open();
  EXPECT_FALSE(measuring.reportPort) << "there is no such port";
  find<QComboBox>("touchesFrom")->setCurrentIndex(1);
  stream.present = 0;
  click("cmdStart");
  EXPECT_EQ(journal.back(), "message there is no COM3");
  EXPECT_FALSE(canvas->isVisible());
  stream.present = 3;
  click("cmdStart");
  EXPECT_TRUE(stream.isOn);
  QTest::mouseClick(canvas, Qt::LeftButton, {}, {400, 200});
  EXPECT_THAT(text("instruction"), StartsWith("Draw along")) << "the pointer does not count";

  constexpr double firstLine = 1.0 / 32;
  stream.draw({firstLine, 0}, {firstLine, 1}, 200);
  live(20ms);
  EXPECT_THAT(text("instruction"), StartsWith("Drawn: PASS: at most 0.0"));
  const auto* const next = find<QPushButton>("cmdNext");
  const QPointF middle = next->mapTo(window.data(), next->rect().center());
  const QPointF pressed(middle.x() / 800, middle.y() / 480);
  stream.draw(pressed, pressed, 1);
  live(20ms);
  EXPECT_THAT(text("lineTitle"), StartsWith("V-2   1 of"));

  stream.tellsLifts = false;
  constexpr double secondLine = firstLine + 15.0 / 128;
  stream.draw({secondLine, 0}, {secondLine, 1}, 200);
  live(20ms);
  EXPECT_THAT(text("instruction"), StartsWith("Draw along"));
  live(200ms);
  EXPECT_THAT(text("instruction"), StartsWith("Drawn: PASS")) << "it has gone without a word";
  click("cmdRepeat");

  stream.why = "The cable was pulled.";
  live(20ms);
  EXPECT_THAT(journal.back(), HasSubstr("The cable was pulled.\n\nFrom now on the pointer"));
  EXPECT_FALSE(stream.isOn);
  drawLine(true, 2);
  EXPECT_THAT(text("instruction"), StartsWith("Drawn: PASS"));
  stream.why.reset();
  click("cmdNext");
  click("cmdResults");
  EXPECT_EQ(verdict(), "INCOMPLETE 2");
  EXPECT_THAT(text("conditions"), HasSubstr("raw counts and pointer events"));
  click("cmdBackToLines");
  EXPECT_TRUE(stream.isOn);
  window->leave();
  live(0ms);
  EXPECT_FALSE(stream.isOn);
}

TEST_F(MeasureWindow, SavesTapsThatNoReportCameOf) {
  measuring.plan = {false, true, false, false, measure::LineSet::ten, 9};
  open();
  find<QComboBox>("touchesFrom")->setCurrentIndex(1);
  click("cmdStart");
  click("cmdNothingCame");
  for (int target = 0; target < 9; ++target)
    QTest::keyClick(find<QWidget>("touchTestCanvas"), Qt::Key_Right);
  EXPECT_EQ(verdict(), "FAIL 0");
  answerFileDialog("d.json");
  click("cmdSave");
  EXPECT_TRUE(measure::readMeasurement(folder.path() / "d.json"));
}

TEST_F(MeasureWindow, HandsEachLineToWhoeverGuidesAndAsksForTheSizeAlone) {
  measure::Measurement kept;
  guided.emplace();
  guided->begun.plan = {true, false, false, false, measure::LineSet::ten, 9};
  guided->begun.limits = measure::findProfile("kiosk")->limits;
  guided->begun.conditions.serialNumber = "A-17";
  guided->keep = [&kept](const measure::Measurement& measurement) {
    kept = measurement;
    return Status();
  };
  open();
  for (const char* const said : {"measureTests", "limits", "serialNumber", "cmdOpen"})
    EXPECT_FALSE(find<QWidget>(said)->isVisible()) << said;
  click("cmdStart");
  drawLine(true, 1);
  EXPECT_TRUE(kept.traces.empty());
  click("cmdNext");
  EXPECT_EQ(kept.traces.size(), 1u);
  EXPECT_EQ(kept.conditions.serialNumber, "A-17");
  EXPECT_EQ(kept.size.width.value, 200);
  EXPECT_EQ(kept.limits, guided->begun.limits);
  drawLine(true, 3);
  click("cmdNext");
  click("cmdResults");
  EXPECT_EQ(verdict(), "INCOMPLETE 2");
  EXPECT_EQ(kept.traces.size(), 2u);
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 1) << "nothing is asked: everything is kept";

  guided->begun = kept;
  measuring.size.reset();
  open();
  click("cmdStart");
  EXPECT_EQ(count("confirm "), 0) << "its lines are known, as is its size";
  EXPECT_THAT(text("lineTitle"), StartsWith("V-5   2 of 10"));
  EXPECT_EQ(find<QDoubleSpinBox>("panelWidth")->value(), 200);
}

TEST_F(MeasureWindow, AsksWhoDidAStrokeFarOff) {
  openAndStart();
  prompt.answerYes = false;
  draw(canvas, {{25, 1}, {200, 478}}, 100);
  EXPECT_EQ(count("confirm OutSide X,Y Limit\n\nThe stroke left its line by up to 43."), 1);
  EXPECT_THAT(text("instruction"), StartsWith("Draw along")) << "by hand: to be drawn again";
  prompt.answers = false;
  draw(canvas, {{25, 1}, {200, 478}}, 100);
  click("cmdNext");
  EXPECT_THAT(text("lineTitle"), StartsWith("V-1"));
  prompt.answers = prompt.answerYes = true;
  click("cmdNext");
  EXPECT_THAT(text("lineTitle"), StartsWith("V-2"));
  click("cmdResults");
  EXPECT_EQ(verdict(), "FAIL 0");
  EXPECT_EQ(cell(0, 1), "FAIL");
  EXPECT_EQ(cell(1, 1), "INCOMPLETE");
}

TEST_F(MeasureWindow, SaysNominalWhereTheSizeIsAGuess) {
  measuring.size.reset();
  open();
  QTest::keyClick(find<QDoubleSpinBox>("panelWidth"), Qt::Key_Return);
  drawLine(true, 1);
  EXPECT_THAT(text("instruction"), HasSubstr(" mm nominal off, straight to 0.00 mm nominal."));
  click("cmdResults");
  EXPECT_EQ(verdict(), "INCOMPLETE 0");
  EXPECT_THAT(text("verdictPanel"), HasSubstr("nominal"));
}

TEST_F(MeasureWindow, FollowsTheScreensSize) {
  openAndStart();
  drawLine(true, 1);
  click("cmdNext");
  window->resize(1000, 500);
  QApplication::processEvents();
  EXPECT_EQ(text("lineTitle"), "V-1   0 of 18 measured") << "the line lies elsewhere";
  screen = QSize(1000, 500);
  drawLine(true, 1);
  EXPECT_THAT(text("instruction"), StartsWith("Drawn"));
}

TEST_F(MeasureWindow, GoesBackAndOnAndLaterOnWithItsResults) {
  openAndStart();
  drawLine(true, 1);
  for (const auto key : {Qt::Key_Right, Qt::Key_Enter, Qt::Key_Left, Qt::Key_Backspace})
    repeatKey(canvas, key);
  repeatKey(canvas, Qt::Key_N, Qt::AltModifier);
  EXPECT_FALSE(find<QPushButton>("cmdNext")->isDown());
  repeatKey(canvas, Qt::Key_Escape);
  EXPECT_TRUE(window->isVisible());
  QTest::mousePress(canvas, Qt::LeftButton, {}, {at(true, 1), 240});
  for (const auto key : {Qt::Key_Right, Qt::Key_Left})
    QTest::keyClick(canvas, key);
  QTest::mouseRelease(canvas, Qt::LeftButton, {}, {at(true, 1), 240});
  click("cmdResults");
  click("cmdBackToLines");
  EXPECT_THAT(text("lineTitle"), StartsWith("V-1"));
  EXPECT_THAT(text("instruction"), StartsWith("Drawn"));
  click("cmdNext");
  QTest::keyClick(canvas, Qt::Key_Right);
  EXPECT_THAT(text("lineTitle"), StartsWith("V-3"));
  click("cmdBack");
  QTest::keyClick(canvas, Qt::Key_Left);
  EXPECT_THAT(text("lineTitle"), StartsWith("V-1"));
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 1);
  EXPECT_TRUE(window.isNull());
  openAndStart();
  EXPECT_EQ(count("confirm 1 of 18 lines have been measured."), 1);
  EXPECT_THAT(text("lineTitle"), StartsWith("V-2   1 of 18"));
}

TEST_F(MeasureWindow, TellsOfDamagedResultsAndPutsRefusedOnesAside) {
  const auto measureFirst = [this] {
    drawLine(true, 1);
    click("cmdNext");
  };
  openAndStart();
  measureFirst();
  folder.write("Tvm-v2.txt", "torn");
  open();
  prompt.answers = false;
  click("cmdStart");
  live(0ms);
  EXPECT_EQ(left, 1) << "closing the question leaves";

  prompt.answers = true;
  prompt.answerYes = false;
  journal.clear();
  openAndStart();
  EXPECT_THAT(journal, ElementsAre(HasSubstr("Tvm-v2.txt, line 1: expected the line's "),
                                   StartsWith("confirm 1 of 18 lines have been measured")));
  EXPECT_THAT(text("lineTitle"), StartsWith("V-1   0 of 18"));
  EXPECT_THAT(folder.read("Tvm-v1.txt.old"), StartsWith("V-1"));
  openAndStart();
  EXPECT_EQ(count("confirm"), 1) << "what was refused is not offered again";

  measureFirst();
  prompt.onMessage = [this] { fs::remove(folder.path() / "Tvm-v1.txt"); };
  openAndStart();
  EXPECT_THAT(journal.back(), HasSubstr("Tvm-v1.txt: expected a file that can be renamed"));
}

TEST_F(MeasureWindow, ThePanelOfButtonsLeavesTheLineFree) {
  for (const QSize size : {QSize(800, 480), QSize(1920, 1080)}) {
    openAndStart(size);
    for (const measure::Guide* guide : guidesOf(measure::LineSet::eighteen)) {
      const QRect panel = find<QWidget>("guidePanel")->geometry();
      EXPECT_TRUE(window->rect().contains(panel)) << size.width() << ' ' << guide->name;
      for (int step = 0; step <= 200; ++step) {
        const auto place = [step](double from, double to, int length) {
          return static_cast<int>(std::lerp(from, to, step / 200.0) * length);
        };
        const QPoint onLine(place(guide->from.x, guide->to.x, size.width()),
                            place(guide->from.y, guide->to.y, size.height()));
        ASSERT_FALSE(panel.adjusted(-4, -4, 4, 4).contains(onLine))
            << size.width() << ' ' << guide->name;
      }
      QTest::keyClick(canvas, Qt::Key_Right);
    }
  }
}

TEST_F(MeasureWindow, GoesFromTestToTestAndAsksBeforeItLosesAny) {
  measuring.plan = {true, true, true, true, measure::LineSet::full, 9};
  openAndStart();
  for (int line = 0; line < 18; ++line)
    QTest::keyClick(canvas, Qt::Key_Right);
  auto* const touched = find<QWidget>("touchTestCanvas");
  const auto skipTo = [&](const char* title) {
    for (int task = 0; task < 40 && !touched->isVisible(); ++task)
      QApplication::processEvents();
    for (int task = 0; task < 40; ++task) {
      if (find<QLabel>("touchTestTitle")->text().contains(title)) return true;
      QTest::keyClick(touched, Qt::Key_Right);
    }
    return false;
  };
  EXPECT_TRUE(skipTo("D-1"));
  EXPECT_TRUE(skipTo("Tap")) << text("touchTestTitle");
  QTest::mouseClick(touched, Qt::LeftButton, {}, {80, 48});
  EXPECT_TRUE(skipTo("est"));
  prompt.answerYes = false;
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 0);
  EXPECT_EQ(count("confirm Leave without saving the measurement?"), 1);
  prompt.answerYes = true;
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 1);

  measuring.plan = {false, true, false, false, measure::LineSet::ten, 9};
  openAndStart();
  QTest::mouseClick(find<QWidget>("touchTestCanvas"), Qt::LeftButton, {}, {80, 48});
  for (int target = 0; target < 9; ++target)
    QTest::keyClick(find<QWidget>("touchTestCanvas"), Qt::Key_Right);
  EXPECT_EQ(verdict(), "INCOMPLETE 0");
  click("cmdMeasureAnew");
  EXPECT_THAT(text("touchTestTitle"), StartsWith("Taps: target 1")) << "without any line";
  QTest::mouseClick(find<QWidget>("touchTestCanvas"), Qt::LeftButton, {}, {80, 48});
  for (int target = 0; target < 9; ++target)
    QTest::keyClick(find<QWidget>("touchTestCanvas"), Qt::Key_Right);
  EXPECT_EQ(verdict(), "INCOMPLETE 0");
  answerFileDialog("taps.json");
  click("cmdSave");
  QTest::keyClick(window, Qt::Key_Escape);
  live(0ms);
  EXPECT_EQ(left, 2);
  EXPECT_EQ(count("confirm Leave without saving the measurement?"), 2) << "it is saved";
}

}  // namespace
}  // namespace touch::test
