#pragma once

#include <QPointer>
#include <QWidget>
#include <filesystem>
#include <memory>
#include <optional>

#include "calibration/frmCal.h"
#include "console/doctor/doctor.h"
#include "console/main/main_console.h"
#include "console/pins/pin_editor.h"
#include "core/driver/simulation.h"
#include "core/driver/trace.h"
#include "linetest/test_parts.h"
#include "serial/debugger/frmRSDebug.h"
#include "ui/screens/panel_monitor.h"

class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace touch {

class frmCalibrationPage;
class frmControllerPage;
class frmDoctorPage;
class frmMaintenancePage;
class frmParametersPage;
class frmPinDefine;
class frmSettingsPage;
class frmTestsPage;
class FullScreenWindow;
class ScrolledPage;
class StatusLine;
struct SimulatedFault;

/// What the program was started with, as far as its windows care.
struct Startup {
  std::filesystem::path workFolder;
  std::filesystem::path driverPath;
  std::optional<Simulation> simulation;      ///< set while the simulated driver is bound
  std::optional<QSize> fullScreenSize;       ///< logical pixels, in place of each full screen
  std::optional<int> monitor{};              ///< that the panel covers, counted from 1
  std::optional<BindError> refusedDriver{};  ///< why the driver that was wanted is not bound
  ComPorts ports{};
  std::vector<std::string> versions{};  ///< of the program and of what it stands on
};

/// The main window: the controllers, what can be done with them, hot keys, and the ways out.
class frmMain final : public QWidget, private MainView {
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

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void showBusy(const std::string& what) override;
  void showIdle() override;
  void showStatus(const Notice& status) override;
  void showReady(const Notice& status) override;
  void showControllers(const std::vector<std::string>& names,
                       std::optional<std::size_t> selected) override;
  void showSettings() override;
  void showParameters() override;
  void showIdentity(const Identity& identity) override;
  void showInformation(const std::vector<std::string>& lines) override;
  std::string showPicture(const std::filesystem::path& file) override;
  std::string showIcon(const std::filesystem::path& file) override;
  void endSearching() override;
  void showAdvancedFrame() override;
  void showPasswordFrame(bool shown) override;
  void openDebugger() override;
  bool debuggerIsBusy() const override;
  void openPinDefinition() override;
  void openCalibration() override;
  void cancelCalibration() override;
  void openTest(TestScreen test) override;
  void closeTest() override;
  void closeDebugger() override;
  void endProgram() override;

  /// When the user sees the window: makes the pages that he does not see yet, and only now hears
  /// keys and waits.
  void begin();
  /// Those behind the first, into the places that their tabs have.
  void makeOtherPages();
  void connectPages();
  /// Scrolls the page so that all of `part` is seen, or as much as fits, from its top on.
  void bringIntoView(QWidget* part);
  void perform(const QString& what, const std::function<Notice()>& action);
  Patient patient() const;
  /// Examines and shows what was found.
  Diagnosis diagnose();
  void sayLooking(const std::string& what);
  void saveDiagnostics(const std::filesystem::path& file);
  /// The line of the page that is shown: what was last said on it, else how the controller is.
  void showPageStatus();
  ScrolledPage* currentPage() const;
  /// To `before`, or to the page when that can no longer be used.
  void giveFocusBack(QWidget* before);
  QWidget* makeHeader();
  QWidget* makePasswordFrame();
  QWidget* makeFooter();
  bool hotKey(const QKeyEvent& key);
  void switchFault(const SimulatedFault& fault, bool on);
  void calibrationEnded(CalibrationOutcome outcome);
  std::optional<Simulation::PanelError> panelError() const;

  Access access_;
  Prompt& prompt_;
  SerialPort& port_;
  Trace& trace_;
  TestParts tests_;
  Startup startup_;
  PanelMonitor panelMonitor_;
  MainConsole console_;
  PinEditor pinEditor_;

  QLabel* picture_;
  QWidget* controls_;
  QTabWidget* tabs_;
  frmControllerPage* controllerPage_;
  frmSettingsPage* settingsPage_ = nullptr;
  frmCalibrationPage* calibrationPage_ = nullptr;
  frmMaintenancePage* maintenancePage_ = nullptr;
  frmParametersPage* parametersPage_ = nullptr;
  frmTestsPage* testsPage_ = nullptr;
  frmDoctorPage* doctorPage_ = nullptr;
  frmPinDefine* pinWindow_ = nullptr;
  QFrame* passwordFrame_;
  QLineEdit* passwordBox_;
  StatusLine* statusLine_;
  std::vector<Notice> said_;  ///< on each page
  Notice ready_;
  QPushButton* cancelSearch_;
  QPushButton* release_;
  QPointer<frmCal> calibrationWindow_;
  QPointer<FullScreenWindow> testWindow_;
  std::unique_ptr<frmRSDebug> debuggerWindow_;
  QPointer<QWidget> focusBeforeBusy_;
  QPointer<QWidget> focusBeforePassword_;
  std::optional<Simulation::PanelError> errorBefore_;
  bool begun_ = false;
  bool ended_ = false;
};

}  // namespace touch
