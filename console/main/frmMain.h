#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>

#include "console/main/frmGreeting.h"
#include "console/main/frmStartup.h"
#include "console/main/main_console.h"
#include "console/panels/simulated_panels.h"

class QTabWidget;

namespace touch {

class frmControllerPage;
class frmHeader;
class frmMaintenancePage;
class frmWindows;
class ScrolledPage;
class StatusLine;
class Trace;
struct TestParts;

/// The main window: puts model, logic and pages together, and hears the hot keys.
class frmMain final : public QWidget {
  Q_OBJECT

 public:
  frmMain(const Access& access, Prompt& prompt, SerialPort& port, Trace& trace,
          const TestParts& tests, const Startup& startup);
  ~frmMain() override;

  /// Shows the window at once; the search for controllers begins when it has been painted.
  void open();

 signals:
  /// Once, after the window has been painted for the first time.
  void seen();
  /// It is being closed: the program is to end soon.
  void closing();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// When the user sees the window: makes the pages that are not seen yet, and only now hears
  /// keys and waits.
  void begin();
  /// Those behind the first, into the places that their tabs have.
  void makeOtherPages();
  /// What the user wants to do first.
  void follow(frmGreeting::Choice choice);
  bool hotKey(const QKeyEvent& key);
  void draw(Part part);
  void drawWork();
  ScrolledPage* currentPage() const;
  /// To `before`, or to the page when that can no longer be used.
  void giveFocusBack(QWidget* before);

  Access access_;
  Prompt& prompt_;
  Trace& trace_;
  Startup startup_;
  MainModel model_;
  MainConsole console_;
  std::optional<SimulatedPanels> panels_;
  std::unique_ptr<frmWindows> windows_;

  frmHeader* header_;
  QWidget* controls_;
  QTabWidget* tabs_;
  frmControllerPage* controllerPage_;
  frmMaintenancePage* maintenancePage_ = nullptr;
  StatusLine* statusLine_;
  QPointer<QWidget> focusBeforeWork_;
  bool begun_ = false;
};

}  // namespace touch
