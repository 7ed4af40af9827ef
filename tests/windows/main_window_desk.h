#pragma once

#include <QLabel>
#include <QTabWidget>
#include <memory>

#include "console/frmMain.h"
#include "serial/asio_serial_port.h"
#include "tests/support/temporary_folder.h"
#include "tests/windows/window_desk.h"

namespace touch::test {

/// The main window over the recording driver, started up; the journal begins after that.
class MainWindowDesk : public WindowDesk {
 protected:
  MainWindowDesk() {
    script.names = {"RS232 DEVICE 1", "USB DEVICE 2"};
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
  }
  void open() {
    window = std::make_unique<frmMain>(
        access(), prompt, port, trace, TestParts{switches, files, linearity},
        Startup{folder.path(), "/lib/driver.so", {}, QSize(800, 480)});
    window->open();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QApplication::processEvents();
    startUp = std::exchange(journal, {});
  }
  void showPage(const QString& caption) {
    auto* const tabs = find<QTabWidget>(*window, "tabs");
    for (int page = 0; page < tabs->count(); ++page) {
      if (tabs->tabText(page) == caption) tabs->setCurrentIndex(page);
    }
    ASSERT_EQ(tabs->tabText(tabs->currentIndex()), caption);
  }
  QString status() { return find<QLabel>(*window, "statusLine")->text(); }

  TemporaryFolder folder;
  DrawingSwitches switches;
  LinearitySetup linearity;
  WorkingFiles files{folder.path(), folder.path()};
  Trace trace;
  AsioSerialPort port{ComPorts()};
  std::unique_ptr<frmMain> window;
  Lines startUp;
};

}  // namespace touch::test
