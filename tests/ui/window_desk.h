#pragma once

#include <QTest>
#include <QtWidgets>

#include "console/main/frmMain.h"
#include "console/main/test_parts.h"
#include "core/driver/simulation.h"
#include "core/driver/trace.h"
#include "serial/port/asio_serial_port.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/temporary_folder.h"
#include "tests/ports/pseudo_terminal.h"
#include "ui/screens/panel_monitor.h"

namespace touch::test {

/// The ports of a machine that has one, with `terminal` behind it.
inline ComPorts onlyCom1(const PseudoTerminal& terminal) {
  ComPorts ports;
  for (int number = 1; number <= 16; ++number) {
    ports.assignUnlessGiven(number, [number, &terminal]() -> std::string {
      return number == 1 && terminal.isPluggedIn() ? terminal.path() : "/dev/there-is-none";
    });
  }
  return ports;
}

/// Qt's events first, then everything that is due in `time`; window by window as a user would meet
/// them.
class WindowDesk : public Desk {
 protected:
  WindowDesk() {
    // A test that has ended the program leaves it so that no dialog stays open; only running it
    // again mends that.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QApplication::exec();
    script.names = {"RS232 DEVICE 1", "USB DEVICE 2"};
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
  }

  void live(std::chrono::milliseconds time) {
    QApplication::processEvents();
    clock.delay(time);
    QApplication::processEvents();
    // Outside of an event loop of its own, Qt leaves what is to be deleted later.
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  template <typename Widget>
  static Widget* find(const QWidget& window, const char* name) {
    auto* const found = window.findChild<Widget*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("no control called ") + name);
    return found;
  }
  template <typename Widget>
  Widget* find(const char* name) const {
    return find<Widget>(*shown, name);
  }
  void click(const char* name) const { QTest::mouseClick(find<QWidget>(name), Qt::LeftButton); }
  /// What a key that is held sends after a while.
  static void repeatKey(QWidget* focused, Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::simulateEvent(focused, true, key, with, {}, true);
  }
  void check(const char* box, bool on) const { find<QCheckBox>(box)->setChecked(on); }
  std::string text(const char* label) const { return find<QLabel>(label)->text().toStdString(); }
  /// The window of that name which is open; null when there is none.
  static QWidget* opened(const char* name) {
    for (QWidget* const top : QApplication::topLevelWidgets())
      if (top->objectName() == name && top->isVisible()) return top;
    return nullptr;
  }

  /// Types `name` into the file dialog that comes next; cancels it when that is empty.
  static void answerFileDialog(const QString& name) {
    QTimer::singleShot(0, qApp, [name] {
      auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return answerFileDialog(name);
      find<QLineEdit>(*dialog, "fileNameEdit")->setText(name);
      QMetaObject::invokeMethod(dialog, name.isEmpty() ? "reject" : "accept", Qt::QueuedConnection);
    });
  }

  /// How many lines of the journal begin so.
  std::ptrdiff_t count(const std::string& begin) const {
    return std::ranges::count_if(journal,
                                 [&](const std::string& line) { return line.starts_with(begin); });
  }

  QPointer<QWidget> shown;  ///< the window that all this is about
  TemporaryFolder folder;
  DrawingSwitches switches;
  measure::MeasureSetup measuring;
  PanelMonitor panelMonitor;
  WorkingFiles files{folder.path(), folder.path()};
};

/// The simulated driver beside the windows, and a hand that draws.
class DrawingDesk : public WindowDesk {
 protected:
  DrawingDesk() {
    auto bound = NexapiDriver::bind(SIMULATOR_LIBRARY);
    if (!bound) throw std::runtime_error(bound.error().describe());
    simulator = std::move(*bound);
    simulation = Simulation(*simulator);
    simulation.request("reset");
  }

  /// Draws from place to place, `steps` moves for each way, and lifts.
  static void draw(QWidget* canvas, const std::vector<QPoint>& places, int steps = 8) {
    QTest::mousePress(canvas, Qt::LeftButton, {}, places.front());
    for (std::size_t i = 1; i < places.size(); ++i) {
      for (int step = 1; step <= steps; ++step)
        QTest::mouseMove(canvas, places[i - 1] + (places[i] - places[i - 1]) * step / steps);
    }
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, places.back());
  }

  void changePanel(const char* trait, const char* value) {
    simulation.changePanel(trait, value, controller);
  }
  /// From now on it reports where it is touched.
  void makePanelExact() {
    for (const char* const trait : {"offset-x", "offset-y", "skew", "noise"})
      changePanel(trait, "0");
    for (const char* const trait : {"gain-x", "gain-y"})
      changePanel(trait, "1");
  }

  std::unique_ptr<NexapiDriver> simulator;
  Simulation simulation;
  std::string controller = "USB DEVICE 2";
};

/// The main window over the recording driver, started up; the journal begins after that.
class MainWindowDesk : public WindowDesk {
 protected:
  void make() {
    window = std::make_unique<frmMain>(access(), prompt, port, trace,
                                       TestParts{switches, files, measuring},
                                       Startup{.workFolder = folder.path(),
                                               .driverPath = "/lib/driver.so",
                                               .fullScreenSize = QSize(800, 480),
                                               .monitor = monitor,
                                               .ownFolder = ownFolder});
    shown = window.get();
    window->open();
  }
  void open() {
    make();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QApplication::processEvents();
    startUp = std::exchange(journal, {});
  }
  void showPage(const QString& caption) {
    auto* const tabs = find<QTabWidget>("tabs");
    for (int page = 0; page < tabs->count(); ++page) {
      if (tabs->tabText(page) == caption) tabs->setCurrentIndex(page);
    }
    ASSERT_EQ(tabs->tabText(tabs->currentIndex()), caption);
  }
  std::string status() { return text("statusLine"); }

  Trace trace;
  PseudoTerminal terminal;
  AsioSerialPort port{onlyCom1(terminal)};
  std::optional<int> monitor;       ///< said at the start
  std::filesystem::path ownFolder;  ///< of the program; empty: it remembers nothing
  std::unique_ptr<frmMain> window;
  Lines startUp;
};

}  // namespace touch::test
