#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>

#include "calibration/calibration.h"
#include "console/main/frmStartup.h"
#include "console/main/panel_screens.h"
#include "console/main/test_parts.h"
#include "console/parameters/kept_calibration.h"
#include "console/pins/pin_editor.h"
#include "serial/commands/typed_line.h"
#include "ui/screens/panel_monitor.h"

namespace touch {

class frmCal;
class frmCheck;
class frmPinDefine;
class frmRSDebug;
class FullScreenWindow;
class ControllerStream;
class RecordedPort;
class MainConsole;
class MainModel;
class SerialPort;
class SimulatedPanels;
namespace measure {
struct MeasureParts;
}

/// The windows of other features: each is opened here, and nowhere else, when the main window's
/// logic allows it.
class frmWindows final : private PanelScreens {
  Q_DECLARE_TR_FUNCTIONS(touch::frmWindows)

 public:
  /// `panels` are null where the panels are real ones. All outlive this but `main`, whose windows
  /// these are.
  frmWindows(const Access& access, Prompt& prompt, SerialPort& port, const TestParts& tests,
             const Startup& startup, MainModel& model, MainConsole& console,
             SimulatedPanels* panels, QWidget& main);
  ~frmWindows() override;

  /// `checkedWithin`: the calibration is checked afterwards, with this limit.
  void calibrate(int points, const std::optional<DiagonalPercent>& checkedWithin);
  /// Checks the calibration that is in force.
  void check(DiagonalPercent limit);
  void draw();
  void measurePanel();
  void commission();  ///< Ctrl+K
  void debug();       ///< Ctrl+A
  /// Beside the main window, which stays in use; one that is open comes to the front.
  void openDebugger();
  void definePins();  ///< Ctrl+B
  /// Has the driver take `monitor`, counted from 1, for the panel's.
  void assignMonitor(int monitor);

 private:
  using Ended = std::function<void()>;

  void calibrationEnded(CalibrationOutcome outcome, const std::optional<DiagonalPercent>& limit);
  void openCheck(DiagonalPercent limit, std::unique_ptr<WayBack> wayBack, bool isNew);
  void endCalibration() const;
  void calibrateFor(int points, std::function<void(CalibrationOutcome)> ended) override;
  void checkFor(std::unique_ptr<WayBack> wayBack,
                std::function<void(const CheckResult&)> ended) override;
  void measureFor(measure::GuidedMeasuring guided, std::function<void()> ended) override;
  const QScreen& chooseMonitor(int monitor) override;
  void endScreen() override;
  /// Whether the driver has taken it.
  bool takeMonitor(int monitor);
  measure::MeasureParts measureParts(SerialPort& port);
  void openTest(const std::function<FullScreenWindow*(const Ended&)>& make);
  void comeBack();
  measure::Conditions knownConditions();

  Access access_;
  Prompt& prompt_;
  SerialPort& port_;
  TestParts tests_;
  Startup startup_;
  MainConsole& console_;
  MainModel& model_;
  SimulatedPanels* panels_;
  QWidget& main_;
  PanelMonitor panelMonitor_;
  PinEditor pinEditor_;
  frmPinDefine* pinWindow_ = nullptr;
  QPointer<frmCal> calibration_;
  std::unique_ptr<KeptCalibration> kept_;  ///< while a calibration runs that is checked afterwards
  QPointer<frmCheck> check_;
  std::unique_ptr<RecordedPort> recorded_;     ///< while a panel is commissioned and measured
  std::unique_ptr<ControllerStream> reports_;  ///< while a panel is measured
  QPointer<FullScreenWindow> test_;
  QPointer<FullScreenWindow> guided_;  ///< the measuring that a commissioning leads to
  SendHistory sentLines_;
  std::unique_ptr<frmRSDebug> debugger_;
};

}  // namespace touch
