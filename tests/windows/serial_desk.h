#pragma once

#include <QLabel>
#include <QPushButton>
#include <deque>

#include "serial/asio_serial_port.h"
#include "serial/frmRSDebug.h"
#include "tests/serial/pseudo_terminal.h"
#include "tests/support/temporary_folder.h"
#include "tests/windows/window_desk.h"

namespace touch::test {

/// The debugger's window over the recording driver and a real pseudo-terminal behind COM1. While a window waits, the far
/// end keeps what it received and gives the next answer.
class SerialDesk : public WindowDesk {
 protected:
  SerialDesk() {
    // A test that has ended the program leaves it so that no dialog stays open; only running it again mends that.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QApplication::exec();
    clock.onAdvance = [this](auto) { answer(); };
  }
  void TearDown() override {
    window.reset();
    WindowDesk::TearDown();
  }

  frmRSDebug& open() {
    window = std::make_unique<frmRSDebug>(
        access(), prompt, port,
        DebuggerSurroundings{folder.path(), {}, switches, {}, QSize(800, 480)},
        [this](DebuggerEnd end) { ended = end; });
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    return *window;
  }
  void press(const char* name) {
    QTest::mouseClick(find<QPushButton>(*window, name), Qt::LeftButton);
  }
  QString label(const char* name) { return find<QLabel>(*window, name)->text(); }
  void unplug() {
    terminal->unplug();
    live(std::chrono::milliseconds(300));
  }
  /// The raw drawing that stands in front of the debugger; null when there is none.
  static QWidget* openedDrawing() {
    for (QWidget* const top : QApplication::topLevelWidgets()) {
      if (top->objectName() == "frmRsDraw" && top->isVisible()) return top;
    }
    return nullptr;
  }
  std::ptrdiff_t count(const std::string& line) const { return std::ranges::count(journal, line); }
  /// How often something was told that begins so.
  std::ptrdiff_t messages(const std::string& begin) const {
    return std::ranges::count_if(
        journal, [&](const std::string& line) { return line.starts_with("message " + begin); });
  }

  TemporaryFolder folder;
  DrawingSwitches switches;
  std::unique_ptr<PseudoTerminal> terminal = std::make_unique<PseudoTerminal>();
  AsioSerialPort port{ports()};
  std::unique_ptr<frmRSDebug> window;
  std::optional<DebuggerEnd> ended;
  std::size_t expected = 0;   ///< bytes that the next answer waits for
  std::deque<Bytes> answers;  ///< each to as many bytes
  Lines wire;                 ///< what the far end received

 private:
  ComPorts ports() {
    ComPorts ports;
    ports.assignUnlessGiven(2, [] { return "/dev/there-is-none"; });
    ports.assignUnlessGiven(1, [this]() -> std::string {
      return terminal->isPluggedIn() ? terminal->path() : "/dev/there-is-none";
    });
    return ports;
  }
  void answer() {
    if (answers.empty() || !terminal->isPluggedIn()) return;
    wire.push_back(hexText(terminal->receive(expected)));
    terminal->send(answers.front());
    answers.pop_front();
  }
};

}  // namespace touch::test
