#pragma once

#include <functional>
#include <locale>

#include "calibration/frmCal.h"
#include "linetest/frmDraw.h"
#include "linetest/frmLinearity.h"
#include "serial/frmRsDraw.h"
#include "tests/windows/serial_desk.h"
#include "ui/finger_style.h"
#include "ui/guide_window.h"
#include "ui/help.h"
#include "ui/language.h"

namespace touch::test {

/// Every text comes back in marks and 40 % longer. What a window shows without the marks has not passed the translator.
class LongTexts final : public QTranslator {
 public:
  using QTranslator::QTranslator;
  bool isEmpty() const override { return false; }
  QString translate(const char*, const char* source, const char*, int) const override {
    QString text = QString::fromUtf8(source);
    QString more;
    for (qsizetype i = text.size() * 2 / 5 - 2; i > 0; --i)
      more += i % 6 == 0 ? ' ' : 'n';
    return u'«' + text + more + u'»';
  }
};

/// Speaks a language until the end of the scope.
class Speaking final {
 public:
  explicit Speaking(const QString& language) {
    if (!speak(language)) throw std::runtime_error("there is no " + language.toStdString());
  }
  explicit Speaking(LongTexts* translator) : Speaking(QString("en")) {
    QCoreApplication::installTranslator(translator);
  }
  Speaking(const Speaking&) = delete;
  Speaking& operator=(const Speaking&) = delete;
  ~Speaking() {
    qDeleteAll(qApp->findChildren<QTranslator*>());
    std::locale::global(before_);
  }

 private:
  std::locale before_;
};

/// Opens each window in each of its states, on simulated controllers.
class EveryWindow : public DrawingDesk {
 protected:
  using Visitor = std::function<void(const std::string& where, QWidget& window)>;

  EveryWindow() {
    script.names = {"RS232 DEVICE 1", "USB DEVICE 2"};
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    script.replies["GP80"] = {replyOf("00005")};
    for (int wire = 1; wire <= 5; ++wire)
      script.replies["GP8" + std::to_string(wire)] = {replyOf("00101")};
    prompt.answerText = "kqzm";
  }
  void TearDown() override {
    for (const std::string& fault : faults_)
      ADD_FAILURE() << fault;
    DrawingDesk::TearDown();
  }

  /// A window that is laid out for the screen here need not fit another one.
  static std::vector<QSize> sizesHere() {
    const QSize small(800, 480);
    const QSize large(1024, 768);
    const QSize here = QGuiApplication::primaryScreen()->size();
    if (here.width() >= large.width()) return {large};
    return isSmallScreen() ? std::vector{here} : std::vector{small, large};
  }
  void visitAll(const Visitor& visit) { visitAll(sizesHere().front(), visit); }
  void visitAll(const QSize& size, const Visitor& visit) {
    visitMain(size, visit);
    visitCalibration(size, visit);
    visitDrawing(size, visit);
    visitLinearity(size, visit);
    visitDebugger(size, visit);
    visitRawDrawing(size, visit);
    visitGuide(size, visit);
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
  static void press(QWidget& window, const char* name) {
    find<QAbstractButton>(window, name)->click();
    QApplication::processEvents();
  }
  static void visitPages(QTabWidget& tabs, const std::function<void(const std::string&)>& visit) {
    for (int page = 0; page < tabs.count(); ++page) {
      tabs.setCurrentIndex(page);
      QApplication::processEvents();
      visit(", page " + std::to_string(page));
    }
  }

  void visitMain(const QSize& size, const Visitor& visit) {
    frmMain window(access(), prompt, port_, trace_, TestParts{switches, files, linearity},
                   Startup{folder.path(), "/usr/lib/libnexapi.so", simulation, size});
    window.open();
    settle(window, size);
    QTest::keyClick(&window, Qt::Key_A, Qt::ControlModifier);
    visitPages(*find<QTabWidget>(window, "tabs"), [&](const std::string& page) {
      // What is seen only on request.
      for (const char* name : {"cmdInfo", "Command17", "cmdAdvanced"})
        if (find<QWidget>(window, name)->isVisible()) press(window, name);
      live(std::chrono::milliseconds(1));
      visit("frmMain" + page, window);
    });
    find<QWidget>(window, "passwordFrame")->hide();
    QTest::keyClick(&window, Qt::Key_B, Qt::ControlModifier);
    auto* const pins = find<QWidget>(window, "frmPinDefine");
    settle(*pins, size.boundedTo({660, 640}));
    visit("frmPinDefine", *pins);
    pins->close();
  }
  void visitCalibration(const QSize& size, const Visitor& visit) {
    const QPointer<frmCal> window = new frmCal(
        access(), prompt, simulation, *QGuiApplication::primaryScreen(), size, [] {},
        [](CalibrationOutcome) {});
    window->show();
    settle(*window, size);
    visit("frmCal", *window);
    delete window;
  }
  void visitDrawing(const QSize& size, const Visitor& visit) {
    const QPointer<frmDraw> window =
        new frmDraw({clock, prompt, session.messages, switches, files, folder.path()}, simulation,
                    controller, *QGuiApplication::primaryScreen(), size, [] {});
    window->open();
    settle(*window, size);
    visit("frmDraw", *window);
    QTest::mouseClick(find<QWidget>(*window, "drawingCanvas"), Qt::RightButton, {},
                      {size.width() - 5, 5});
    visit("frmDraw, menu", *window);
    QTest::keyClick(window, Qt::Key_Escape);
    for (const auto& [key, state] :
         {std::pair(Qt::Key_F1, "help"), std::pair(Qt::Key_T, "results")}) {
      QTest::keyClick(window, key);
      QApplication::processEvents();
      visit(std::string("frmDraw, ") + state, *window);
      QTest::keyClick(window, key);
    }
    delete window;
  }
  void visitLinearity(const QSize& size, const Visitor& visit) {
    const QPointer<frmLinearity> window =
        new frmLinearity({prompt, session.messages, linearity, folder.path()}, simulation,
                         controller, *QGuiApplication::primaryScreen(), size, [] {});
    window->open();
    settle(*window, size);
    visit("frmLinearity, size", *window);
    press(*window, "cmdStart");
    auto* const canvas = find<QWidget>(*window, "linearityCanvas");
    for (const char* state : {"instruction", "drawn"}) {
      visit(std::string("frmLinearity, ") + state, *window);
      draw(canvas, {{size.width() / 32, 1}, {size.width() / 32, size.height() - 2}}, 40);
    }
    for (int line = 0; line < 9; ++line)
      press(*window, "cmdNext");
    visit("frmLinearity, horizontal", *window);
    press(*window, "cmdResults");
    visitPages(*find<QTabWidget>(*window, "resultTabs"),
               [&](const std::string& page) { visit("frmLinearity, results" + page, *window); });
    delete window;
  }
  void visitDebugger(const QSize& size, const Visitor& visit) {
    frmRSDebug window(access(), prompt, port_,
                      DebuggerSurroundings{folder.path(), {}, switches, simulation, size},
                      [](DebuggerEnd) {});
    window.open();
    settle(window, size);
    press(window, "Check1");
    press(window, "Command3");
    const struct {
      const char* set;
      const char* name;
      int entry;
    } states[] = {{"Option3", "quorvane", -1}, {"Option2", "E02", 6}, {"Option1", "M01", 21}};
    for (const auto& [set, name, entry] : states) {
      press(window, set);
      find<QComboBox>(window, "Combo1")->setCurrentIndex(entry);
      QApplication::processEvents();
      const std::string where = std::string("frmRSDebug, ") + name;
      const auto visitPage = [&](const std::string& page) { visit(where + page, window); };
      auto* const tabs = window.findChild<QTabWidget*>("debuggerTabs");
      tabs != nullptr ? visitPages(*tabs, visitPage) : visitPage("");
    }
    window.leave(DebuggerEnd::quit);
    live(std::chrono::milliseconds(1));
  }
  void visitRawDrawing(const QSize& size, const Visitor& visit) {
    auto* const window = new frmRsDraw(
        {clock, prompt, session.messages, switches, ReportDecoder(ReportFamily::tablet), {}, size},
        ReceivingPort{port_, {}, {}}, *QGuiApplication::primaryScreen(), [] {});
    window->open();
    settle(*window, size);
    visit("frmRsDraw", *window);
    press(*window, "cmdHelp");
    visit("frmRsDraw, help", *window);
    window->close();
    live(std::chrono::milliseconds(1));
  }
  void visitGuide(const QSize& size, const Visitor& visit) {
    QWidget below;
    showHelp(below);
    auto* const window = below.findChild<GuideWindow*>();
    settle(*window, size);
    visit("guide", *window);
    press(*window, "cmdFind");
    visit("guide, search", *window);
  }

  std::set<std::string> faults_;
  Trace trace_;
  AsioSerialPort port_{ComPorts()};
};

}  // namespace touch::test
