#pragma once

#include <QWidget>
#include <functional>
#include <optional>

#include "commission/run/run_trace.h"
#include "commission/steps/guided_run.h"
#include "console/doctor/doctor.h"
#include "console/main/panel_screens.h"
#include "support/gate.h"
#include "support/prompt.h"
#include "ui/screens/full_screen_window.h"

class QComboBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QStackedWidget;

namespace touch {
class frmMonitorRow;
class ScreenKeyboard;
}  // namespace touch

namespace touch::commission {

class frmCommissionStart;
class frmSheetView;

/// What a commissioning lives on. All of it outlives the window.
struct CommissionParts {
  Prompt& prompt;
  Patient& patient;  ///< with a driver; the user may choose another working folder
  Trace& trace;
};

/// The full-screen window that leads through a commissioning: its steps on one side, the one in
/// hand on the other. Calibration, check and measurement open in front of it.
class frmCommission final : public FullScreenWindow {
  Q_OBJECT

 public:
  frmCommission(const CommissionParts& parts, const CommissionCall& call);
  ~frmCommission() override;

  /// Nothing is asked: everything is kept. What is in front of it, or under way, ends first.
  void askToLeave() override;

 protected:
  void started() override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* makeRunPage();
  QWidget* makeStep();
  QWidget* makePanelForm();
  QWidget* makeMends();
  QWidget* makeButtons();
  void showSheet();
  void showRunPage();

  void showStart();
  void begin();
  void takeUp(RunFolder folder, Run run);
  StepId chosen() const;
  void choose(StepId id);
  void showRun();
  void showStep();
  void showVerdict(StepId id);
  void showAdvice();
  void carryOut();
  Status lookAround();
  Status namePanel();
  void takePortBack();
  void enablePanel();
  void chooseFolder();
  void chooseMonitor(int monitor);
  void skipStep();
  void setAsWanted();
  void goOn();
  void calibrate();
  void check();
  void measure();
  PanelFacts typedFacts() const;
  /// Does something that may take a while; afterwards the next open step is in hand.
  void work(const std::function<Status()>& step);
  void showWait();
  /// The part of an action that ends a step.
  void endStep(const std::function<Status()>& step);
  void tellFailure(const FileError& error) const;
  /// A window in front of this one has ended, and with it the action.
  void comeBack(const std::function<Status()>& step);

  Prompt& prompt_;
  Patient& patient_;
  Trace& tracing_;
  Access access_;
  PanelScreens& screens_;
  std::optional<GuidedRun> guided_;
  std::optional<RunTrace> trace_;
  Gate gate_;  ///< a step is under way, here or in a window in front

  QStackedWidget* pages_;
  frmCommissionStart* startPage_;
  frmSheetView* sheetView_;
  QProgressBar* progress_;
  QListWidget* steps_;
  QLabel* caption_;
  QLabel* purpose_;
  QLabel* verdict_;
  QLabel* found_;
  QLabel* before_;  ///< what the step before has found, when it has just ended
  QWidget* panelForm_;
  QWidget* mends_;
  frmMonitorRow* monitors_;
  ScreenKeyboard* keyboard_;
  QPushButton* keyboardSwitch_;
  QWidget* targetsRow_;
  QLabel* advice_;
  std::optional<TargetAdvice> advised_;  ///< that the targets were chosen by
  QComboBox* targets_;
  QPushButton* do_;
  QPushButton* skip_;
  QPushButton* set_;
  QPushButton* next_;
  QPushButton* sheet_;
};

}  // namespace touch::commission
