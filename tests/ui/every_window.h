#pragma once

#include <QSignalSpy>

#include "calibration/frmCal.h"
#include "calibration/frmCheck.h"
#include "commission/steps/frmCommission.h"
#include "console/parameters/kept_calibration.h"
#include "linetest/canvas/frmDraw.h"
#include "measure/truth/trial.h"
#include "measure/windows/frmMeasure.h"
#include "measure/windows/frmTouchTest.h"
#include "measure/windows/frmVerdict.h"
#include "serial/rawdrawing/frmRsDraw.h"
#include "tests/serial/debugger/serial_desk.h"
#include "ui/controls/finger_style.h"
#include "ui/driver_notice.h"
#include "ui/event_loop_clock.h"
#include "ui/guide/guide_window.h"
#include "ui/guide/help.h"

namespace touch::test {

/// Opens each window in each of its states, on simulated controllers.
class EveryWindow : public DrawingDesk {
 protected:
  using Visitor = std::function<void(const std::string& where, QWidget& window)>;

  EveryWindow() {
    script.replies["GP80"] = {replyOf("00005")};
    for (int wire = 1; wire <= 5; ++wire)
      script.replies["GP8" + std::to_string(wire)] = {replyOf("00101")};
    for (int address = 0; address < 8; ++address)
      script.replies["GP0" + std::to_string(address)] = {replyOf("01234")};
    prompt.answerText = "kqzm";
  }
  void TearDown() override {
    for (const std::string& fault : faults_)
      ADD_FAILURE() << fault;
    DrawingDesk::TearDown();
  }

  /// A window that is laid out for the screen here need not fit another one.
  static QSize sizeHere() {
    const QSize here = QGuiApplication::primaryScreen()->size();
    return here.width() < 1024 ? here.boundedTo({800, 480}) : QSize(1024, 768);
  }
  void visitAll(Visitor visit) {
    visit_ = std::move(visit);
    visitMain();
    visitCalibration();
    visitCheck();
    visitTests();
    visitMeasurement();
    visitCommission();
    visitDebugger();
    visitGuide();
    visitDriverNotices();
  }

  void blame(const std::string& where, const QWidget& widget, const std::string& what) {
    const QString text = widget.property("text").toString();
    faults_.insert(where + ": " + widget.metaObject()->className() + ' ' +
                   widget.objectName().toStdString() + " \"" + text.toStdString() + "\" " + what);
  }

 private:
  static void settle(QWidget& window, const QSize& size) {
    window.resize(size);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QApplication::processEvents();
  }
  /// Opens a window and visits it as it is then.
  void open(auto& window, const std::string& state = "") {
    window.open();
    settle(window, size_);
    // Once it is active it fills in its texts, and then each frame around them is laid out again.
    constexpr int framesWithinEachOther = 6;
    for (int frame = 0; frame < framesWithinEachOther; ++frame)
      QApplication::processEvents();
    visit_(window.objectName().toStdString() + state, window);
  }
  static void press(QWidget& window, const char* name) {
    find<QAbstractButton>(window, name)->click();
    QApplication::processEvents();
  }
  /// The page of the main window that the control is on.
  static QWidget* pageOf(const char* control, const QWidget& window) {
    auto& tabs = *find<QTabWidget>(window, "tabs");
    for (int page = 0; page < tabs.count(); ++page)
      if (tabs.widget(page)->isAncestorOf(find<QWidget>(window, control))) return tabs.widget(page);
    return nullptr;
  }
  void visitPages(const std::string& where, QWidget& window, const char* tabs) {
    auto& pages = *find<QTabWidget>(window, tabs);
    for (int page = 0; page < pages.count(); ++page) {
      pages.setCurrentIndex(page);
      // What is seen only on request.
      for (const char* const name : {"cmdInfo", "Command17", "cmdAdvanced"}) {
        auto* const button = window.findChild<QAbstractButton*>(name);
        if (button != nullptr && button->isVisible()) button->click();
      }
      live(std::chrono::milliseconds(1));
      visit_(where + ", page " + std::to_string(page), window);
    }
  }

  void visitMain() {
    frmMain window(access(), prompt, port_, trace_, TestParts{switches, files, measuring},
                   Startup{.workFolder = folder.path(),
                           .driverPath = "/usr/lib/libnexapi.so",
                           .simulation = simulation,
                           .fullScreenSize = size_,
                           .ownFolder = folder.path() / "own"});
    window.open();
    settle(window, size_);
    QTest::keyClick(&window, Qt::Key_A, Qt::ControlModifier);
    visitPages("frmMain", window, "tabs");
    if (!isSmallScreen()) {  // where problems and what mends them are seen without scrolling
      const auto replies = std::exchange(script.replies, {});
      find<QTabWidget>(window, "tabs")->setCurrentWidget(pageOf("findingsList", window));
      press(window, "cmdDoctorRefresh");
      visit_("frmMain, problems", window);
      script.replies = replies;
    }
    QTest::keyClick(&window, Qt::Key_B, Qt::ControlModifier);
    auto* const pins = find<QWidget>(window, "frmPinDefine");
    settle(*pins, size_.boundedTo({660, 640}));
    visit_("frmPinDefine", *pins);
  }
  void visitCalibration() {
    frmCal window(
        access(), prompt, simulation, *QGuiApplication::primaryScreen(), size_, [] {},
        [](CalibrationOutcome) {});
    window.show();
    settle(window, size_);
    visit_("frmCal", window);
  }
  void visitCheck() {
    makePanelExact();
    auto kept = std::make_unique<KeptCalibration>(access(), Backup(folder.path()));
    frmCheck window({clock, simulation, controller, usualCheckLimit, std::move(kept)},
                    *QGuiApplication::primaryScreen(), size_, [](const CheckResult&) {});
    open(window);
    // The last figure is too far off, so both buttons can be pressed.
    QPoint beside;
    const TwipsSize pixels{static_cast<float>(size_.width()), static_cast<float>(size_.height())};
    for (const TwipsPoint cross : checkCrosses(pixels)) {
      if (cross == checkCrosses(pixels).back()) beside = {-size_.width() / 20, 0};
      const QPoint place(static_cast<int>(cross.x), static_cast<int>(cross.y));
      QTest::mouseClick(find<QWidget>(window, "checkCanvas"), Qt::LeftButton, {}, place + beside);
    }
    visit_("frmCheck, touched", window);
  }
  void visitTests() {
    const QScreen& screen = *QGuiApplication::primaryScreen();
    {
      frmDraw window({clock, prompt, session.messages, switches, files, folder.path()}, simulation,
                     controller, screen, size_, [] {});
      open(window);
      QTest::mouseClick(find<QWidget>(window, "drawingCanvas"), Qt::RightButton, {},
                        {size_.width() - 5, size_.height() - 5});
      visit_("frmDraw, menu", window);
      for (const auto& [key, state] :
           {std::pair(Qt::Key_F1, "help"), std::pair(Qt::Key_T, "results")}) {
        QTest::keyClick(&window, Qt::Key_Escape);
        QTest::keyClick(&window, key);
        QApplication::processEvents();
        visit_(std::string("frmDraw, ") + state, window);
      }
    }
    measure::frmMeasure window({clock, prompt, session.messages, measuring, folder.path()},
                               simulation, controller, screen, size_, [] {});
    open(window, ", start");
    press(window, "cmdStart");
    draw(find<QWidget>(window, "linesCanvas"),
         {{size_.width() / 32, 1}, {size_.width() / 32, size_.height() - 2}}, 40);
    visit_("frmMeasure, drawn", window);
    for (int line = 0; line < 9; ++line)
      press(window, "cmdNext");
    visit_("frmMeasure, horizontal", window);
    QSignalSpy judged(find<measure::frmVerdict>(window, "frmVerdict"), &measure::frmVerdict::shown);
    press(window, "cmdResults");
    EXPECT_TRUE(judged.count() > 0 || judged.wait());
    visitPages("frmMeasure, results", window, "verdictPages");
  }
  void visitMeasurement() {
    using measure::TouchTest;
    measure::Plan plan;
    plan.rest = plan.taps = plan.coverage = true;
    measure::truth::Trial trial;
    trial.traits.bow = 0.02;
    const auto measurement =
        measure::truth::record(trial, plan, measure::profiles().front().limits);
    measure::Measurement begun;
    begun.size = measurement.size;
    measure::frmTouchTest test(clock, simulation, controller, begun, [] { return std::nullopt; });
    // As the window around it does.
    setHelpChapter(test, "Prove a panel is good");
    addHelpKey(test);
    test.show();
    for (const TouchTest kind :
         {TouchTest::rest, TouchTest::taps, TouchTest::coverage, TouchTest::directions}) {
      test.begin(kind);
      settle(test, size_);
      visit_("frmTouchTest, test " + std::to_string(static_cast<int>(kind)), test);
    }
    draw(find<QWidget>(test, "touchTestCanvas"), {{1, 1}, {size_.width() - 2, 9}}, 60);
    visit_("frmTouchTest, far off", test);
  }
  void visitCommission() {
    struct NoHands final : PanelScreens {
      void calibrateFor(int, std::function<void(CalibrationOutcome)>) override {}
      void checkFor(std::unique_ptr<WayBack>, std::function<void(const CheckResult&)>) override {}
      void measureFor(measure::GuidedMeasuring, std::function<void()>) override {}
      const QScreen& chooseMonitor(int) override { return *QGuiApplication::primaryScreen(); }
      void endScreen() override {}
    } hands;
    Patient patient{.access = access(), .workFolder = folder.path()};
    commission::frmCommission window({prompt, patient, trace_},
                                     {hands, *QGuiApplication::primaryScreen(), size_, [] {}});
    open(window, ", start");
    press(window, "cmdBegin");
    auto& steps = *find<QListWidget>(window, "commissionSteps");
    for (int step = 0; step < 5; ++step) {
      steps.setCurrentRow(step);
      QApplication::processEvents();
      visit_("frmCommission, step " + std::to_string(step), window);
      if (window.findChild<QWidget*>("cmdScreenKeyboard")->isVisible()) {
        press(window, "cmdScreenKeyboard");
        visit_("frmCommission, keyboard", window);
        press(window, "cmdScreenKeyboard");
      }
      press(window, "cmdDoStep");
    }
  }
  void visitDebugger() {
    {
      frmRSDebug window(
          access(), prompt, port_,
          DebuggerSurroundings{
              folder.path(), {}, switches, simulation, size_, panelMonitor, below_, history_, {}},
          [](DebuggerEnd) {});
      open(window);
      press(window, "Check1");
      press(window, "Command3");
      for (const auto& [set, entry] :
           {std::pair("Option3", -1), std::pair("Option2", 6), std::pair("Option1", 21)}) {
        press(window, set);
        find<QComboBox>(window, "Combo1")->setCurrentIndex(entry);
        QApplication::processEvents();
        visitPages(std::string("frmRSDebug, ") + set, window, "debuggerTabs");
      }
    }
    Gate gate(clock);
    frmRsDraw window(
        {clock, prompt, session.messages, switches, ReportDecoder(ReportFamily::tablet), {}, size_},
        ReceivingPort{port_, gate, {}}, *QGuiApplication::primaryScreen(), [] {});
    open(window);
    press(window, "cmdHelp");
    visit_("frmRsDraw, help", window);
  }
  void visitGuide() {
    QWidget below;
    showHelp(below);
    auto* const window = below.findChild<GuideWindow*>();
    settle(*window, size_);
    press(*window, "cmdFind");
    visit_("guide", *window);
  }
  void visitDriverNotices() {
    EventLoopClock waiting;
    DriverNotice notice(waiting);
    const auto visitBox = [this](const char* name) {
      QWidget* const box = opened(name);
      ASSERT_NE(box, nullptr) << name;
      EXPECT_TRUE(QTest::qWaitForWindowActive(box));
      visit_(name, *box);
    };
    notice.stillWaiting({"nexapi.dll", "GetRotation", std::chrono::seconds(3)});
    visitBox("driverHangs");
    notice.waitEnded();
    notice.lost("The touch driver /usr/lib/libnexapi.so crashed in GetRotation: signal 11.");
    visitBox("driverLost");
    delete opened("driverLost");
  }

  const QSize size_ = sizeHere();
  QWidget below_;
  SendHistory history_;
  Visitor visit_;
  std::set<std::string> faults_;
  Trace trace_;
  PseudoTerminal terminal_;
  AsioSerialPort port_{onlyCom1(terminal_)};
};

}  // namespace touch::test
