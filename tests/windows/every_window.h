#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QPointer>
#include <QTabWidget>
#include <QTranslator>
#include <functional>
#include <locale>

#include "calibration/frmCal.h"
#include "console/frmMain.h"
#include "linetest/frmDraw.h"
#include "linetest/frmLinearity.h"
#include "serial/asio_serial_port.h"
#include "serial/frmRSDebug.h"
#include "serial/frmRsDraw.h"
#include "tests/windows/drawing_desk.h"
#include "ui/guide_window.h"
#include "ui/help.h"
#include "ui/language.h"

namespace touch::test {

/// Every text comes back in marks and 40 % longer. What a window shows without the marks has not passed the translator.
class LongTexts final : public QTranslator {
 public:
  bool isEmpty() const override { return false; }
  QString translate(const char*, const char* source, const char*, int) const override {
    QString text = QString::fromUtf8(source);
    QString more;
    for (qsizetype i = text.size() * 2 / 5 - 2; i > 0; --i)
      more += i % 6 == 0 ? ' ' : 'n';
    return u'«' + text + more + u'»';
  }
};

/// Speaks the language of `translator`, or a real one, until the end of the scope.
class Speaking final {
 public:
  explicit Speaking(QTranslator& translator) : translator_(&translator) {
    speak("en");
    QCoreApplication::installTranslator(translator_);
  }
  explicit Speaking(const QString& language) {
    const auto before = qApp->findChildren<QTranslator*>();
    if (!speak(language)) throw std::runtime_error("there is no " + language.toStdString());
    for (QTranslator* const installed : qApp->findChildren<QTranslator*>())
      if (!before.contains(installed)) own_.append(installed);
  }
  Speaking(const Speaking&) = delete;
  Speaking& operator=(const Speaking&) = delete;
  ~Speaking() {
    if (translator_ != nullptr) QCoreApplication::removeTranslator(translator_);
    qDeleteAll(own_);
    std::locale::global(before_);
  }

 private:
  std::locale before_;
  QTranslator* translator_ = nullptr;
  QList<QTranslator*> own_;
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

  void visitAll(const QSize& size, const Visitor& visit) {
    visitMain(size, visit);
    visitCalibration(size, visit);
    visitDrawing(size, visit);
    visitLinearity(size, visit);
    visitDebugger(size, visit);
    visitRawDrawing(size, visit);
    visitGuide(size, visit);
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

  void visitMain(const QSize& size, const Visitor& visit) {
    frmMain window(access(), prompt, port_, trace_, TestParts{switches, files, linearity},
                   Startup{folder.path(), "/usr/lib/libnexapi.so", simulation, size});
    window.open();
    settle(window, size);
    QTest::keyClick(&window, Qt::Key_A, Qt::ControlModifier);
    auto* const tabs = find<QTabWidget>(window, "tabs");
    for (int page = 0; page < tabs->count(); ++page) {
      tabs->setCurrentIndex(page);
      // What is seen only on request.
      for (const char* name : {"cmdInfo", "Command17", "cmdAdvanced"})
        if (find<QWidget>(window, name)->isVisible()) press(window, name);
      live(std::chrono::milliseconds(1));
      visit("frmMain, page " + std::to_string(page), window);
    }
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
    auto* const tabs = find<QTabWidget>(*window, "resultTabs");
    for (int page = 0; page < tabs->count(); ++page) {
      tabs->setCurrentIndex(page);
      QApplication::processEvents();
      visit("frmLinearity, results " + std::to_string(page), *window);
    }
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
    const auto visitTabs = [&](const std::string& where) {
      auto* const tabs = window.findChild<QTabWidget*>("debuggerTabs");
      for (int page = 0; page < (tabs != nullptr ? tabs->count() : 1); ++page) {
        if (tabs != nullptr) tabs->setCurrentIndex(page);
        QApplication::processEvents();
        visit(where + ", page " + std::to_string(page), window);
      }
    };
    visitTabs("frmRSDebug, quorvane");
    press(window, "Option2");
    find<QComboBox>(window, "Combo1")->setCurrentIndex(6);
    visitTabs("frmRSDebug, E02");
    press(window, "Option1");
    find<QComboBox>(window, "Combo1")->setCurrentIndex(21);
    visitTabs("frmRSDebug, M01");
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

  Trace trace_;
  AsioSerialPort port_{ComPorts()};
};

}  // namespace touch::test
