#pragma once

#include "serial/debugger/frmRSDebug.h"
#include "tests/ports/pseudo_terminal.h"
#include "tests/ui/window_desk.h"

namespace touch::test {

/// The debugger's window over the recording driver and a real pseudo-terminal behind COM1. While a
/// window waits, the far end keeps what it received and gives the next answer.
class SerialDesk : public WindowDesk {
 protected:
  SerialDesk() {
    clock.onAdvance = [this](auto) { answer(); };
  }
  void TearDown() override {
    window.reset();
    WindowDesk::TearDown();
  }

  void open() {
    window = std::make_unique<frmRSDebug>(access(), prompt, port,
                                          DebuggerSurroundings{folder.path(),
                                                               {},
                                                               switches,
                                                               {},
                                                               QSize(800, 480),
                                                               panelMonitor,
                                                               mainWindow,
                                                               history,
                                                               "Program 1",
                                                               [this] { return mainIsBusy; },
                                                               onlyCom1(*terminal)},
                                          [this](DebuggerEnd end) { ended = end; });
    shown = window.get();
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  }
  void choose(const char* set, int entry) {
    find<QRadioButton>(set)->click();
    find<QComboBox>("Combo1")->setCurrentIndex(entry);
  }

  /// The device was unplugged, and another one is there in its place.
  void plugIn() { terminal.emplace(); }

  std::optional<PseudoTerminal> terminal{std::in_place};
  AsioSerialPort port{onlyCom1(*terminal)};
  std::unique_ptr<frmRSDebug> window;
  std::optional<DebuggerEnd> ended;
  QWidget mainWindow;
  SendHistory history;
  bool mainIsBusy = false;
  std::size_t expected = 0;   ///< bytes that the next answer waits for
  std::deque<Bytes> answers;  ///< each to as many bytes
  Lines wire;                 ///< what the far end received

 private:
  void answer() {
    if (answers.empty() || !terminal->isPluggedIn()) return;
    wire.push_back(hexText(terminal->receive(expected)));
    terminal->send(answers.front());
    answers.pop_front();
  }
};

}  // namespace touch::test
