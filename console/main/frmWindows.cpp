#include "console/main/frmWindows.h"

#include "calibration/frmCal.h"
#include "console/main/main_console.h"
#include "console/panels/monitors.h"
#include "console/panels/simulated_panels.h"
#include "console/pins/frmPinDefine.h"
#include "linetest/canvas/frmDraw.h"
#include "linetest/linearity/frmLinearity.h"
#include "serial/debugger/frmRSDebug.h"

namespace touch {

namespace {

Notice noticeOf(CalibrationOutcome outcome) {
  const auto line = [](const QString& text) { return text.toStdString(); };
  switch (outcome) {
    case CalibrationOutcome::stored:
      return Notice::success(line(frmWindows::tr("Calibration saved.")));
    case CalibrationOutcome::timedOut:
      return Notice::error(line(frmWindows::tr(
          "No touch came in time. The calibration was given up; nothing was stored.")));
    case CalibrationOutcome::failed:
      return Notice::error(line(frmWindows::tr("The calibration failed; nothing was stored.")));
    case CalibrationOutcome::cancelled:
      break;
  }
  return line(frmWindows::tr("The calibration was cancelled; nothing was stored."));
}

}  // namespace

frmWindows::frmWindows(const Access& access, Prompt& prompt, SerialPort& port,
                       const TestParts& tests, const Startup& startup, MainModel& model,
                       MainConsole& console, SimulatedPanels* panels, QWidget& main)
    : access_(access),
      prompt_(prompt),
      port_(port),
      tests_(tests),
      startup_(startup),
      console_(console),
      model_(model),
      panels_(panels),
      main_(main),
      panelMonitor_(startup.monitor),
      pinEditor_(access, prompt, Backup(startup.workFolder)) {
  model.watch([this](Part part) {
    if (part == Part::work && pinWindow_ != nullptr) pinWindow_->setEnabled(!model_.work);
  });
}

frmWindows::~frmWindows() = default;

void frmWindows::comeBack() {
  main_.showNormal();
  main_.raise();
  main_.activateWindow();
}

void frmWindows::calibrate(int points) {
  const auto ended = [this](CalibrationOutcome outcome) {
    const bool stored = outcome == CalibrationOutcome::stored;
    console_.calibrationEnded(stored, noticeOf(outcome));
    if (panels_ != nullptr) panels_->calibrationEnded(stored);
  };
  const auto open = [this, &ended] {
    main_.showNormal();
    if (panels_ != nullptr) panels_->calibrationBegins();
    calibration_ = new frmCal(
        access_, prompt_, startup_.simulation, panelMonitor_.of(main_), startup_.fullScreenSize,
        [this] { comeBack(); }, ended);
    calibration_->open();
  };
  const auto end = [this] {
    if (calibration_) calibration_->askToLeave();
  };
  console_.calstart(points, {open, end});
}

void frmWindows::openTest(const std::function<FullScreenWindow*(const Ended&)>& make) {
  const auto open = [this, &make] {
    main_.showNormal();
    test_ = make([this] {
      comeBack();
      console_.testEnded();
    });
    test_->open();
  };
  const auto end = [this] {
    if (test_) test_->leave();
  };
  console_.openTest({open, end});
}

void frmWindows::draw() {
  openTest([this](const Ended& ended) {
    return new frmDraw({access_.clock, prompt_, access_.session.messages, tests_.switches,
                        tests_.files, startup_.workFolder},
                       startup_.simulation, access_.session.controllerName, panelMonitor_.of(main_),
                       startup_.fullScreenSize, ended);
  });
}

void frmWindows::judgeLinearity() {
  openTest([this](const Ended& ended) {
    return new frmLinearity(
        {prompt_, access_.session.messages, tests_.linearity, startup_.workFolder},
        startup_.simulation, access_.session.controllerName, panelMonitor_.of(main_),
        startup_.fullScreenSize, ended);
  });
}

void frmWindows::debug() {
  if (console_.requestDebugger()) openDebugger();
}

void frmWindows::openDebugger() {
  if (debugger_) {
    debugger_->comeToFront();
    return;
  }
  console_.debuggerOpened({[this] { return debugger_ && debugger_->isBusy(); },
                           [this] {
                             if (debugger_) debugger_->leave(DebuggerEnd::quit);
                           }});
  debugger_ = std::make_unique<frmRSDebug>(
      access_, prompt_, port_,
      DebuggerSurroundings{startup_.workFolder, console_.reportFormats(), tests_.switches,
                           startup_.simulation, startup_.fullScreenSize, panelMonitor_, main_,
                           [this] { return console_.busy(); }},
      [this](DebuggerEnd end) {
        debugger_.release()->deleteLater();
        if (end == DebuggerEnd::quit) {
          main_.raise();
          main_.activateWindow();
        }
        console_.debuggerEnded(end == DebuggerEnd::exit);
      });
  debugger_->open();
}

void frmWindows::definePins() {
  if (!console_.requestPinDefinition()) return;
  if (pinWindow_ == nullptr) {
    pinWindow_ = new frmPinDefine(
        pinEditor_,
        [this](const std::string& what, const std::function<Notice()>& action) {
          return console_.actions().perform(what, action);
        },
        &main_);
  }
  pinWindow_->open();
}

void frmWindows::assignMonitor(int monitor) {
  console_.actions().perform(tr("Assigning the monitor …").toStdString(), [this, monitor] {
    const bool taken = touch::assignMonitor(access_, prompt_, monitor);
    if (taken) panelMonitor_.assign(monitor);
    const QString text =
        taken ? tr("The panel belongs to monitor %1.") : tr("The driver did not take monitor %1.");
    return Notice(taken ? NoticeKind::success : NoticeKind::error, text.arg(monitor).toStdString());
  });
}

}  // namespace touch
