#include "console/main/frmWindows.h"

#include "calibration/frmCal.h"
#include "calibration/frmCheck.h"
#include "console/main/main_console.h"
#include "console/main/panel_screens.h"
#include "console/panels/monitors.h"
#include "console/panels/simulated_panels.h"
#include "console/parameters/parameter_block.h"
#include "console/pins/frmPinDefine.h"
#include "console/settings/touch_settings.h"
#include "core/driver/driver_settings.h"
#include "linetest/canvas/frmDraw.h"
#include "measure/windows/frmMeasure.h"
#include "ports/port_list.h"
#include "serial/debugger/frmRSDebug.h"
#include "serial/receiving/controller_stream.h"
#include "serial/recording/recording_ports.h"

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

void frmWindows::calibrate(int points, const std::optional<DiagonalPercent>& checkedWithin) {
  const auto open = [this, checkedWithin] {
    main_.showNormal();
    if (panels_ != nullptr) panels_->calibrationBegins();
    if (checkedWithin) {
      kept_ = std::make_unique<KeptCalibration>(access_, Backup(startup_.workFolder));
      // The program may be about to end: reading takes a while.
      if (console_.actions().gate().isCutShort())
        return calibrationEnded(CalibrationOutcome::cancelled, checkedWithin);
    }
    calibration_ = new frmCal(
        access_, prompt_, startup_.simulation, panelMonitor_.of(main_), startup_.fullScreenSize,
        [this, checkedWithin] {
          if (!checkedWithin) comeBack();
        },
        [this, checkedWithin](CalibrationOutcome outcome) {
          calibrationEnded(outcome, checkedWithin);
        });
    calibration_->open();
  };
  console_.calstart(points, {open, [this] { endCalibration(); }});
}

void frmWindows::endCalibration() const {
  if (calibration_) calibration_->askToLeave();
  if (check_) check_->askToLeave();
}

void frmWindows::calibrationEnded(CalibrationOutcome outcome,
                                  const std::optional<DiagonalPercent>& limit) {
  const bool stored = outcome == CalibrationOutcome::stored;
  if (stored && limit) return openCheck(*limit, std::move(kept_), true);
  if (limit) comeBack();
  Notice notice = noticeOf(outcome);
  const auto tidied =
      kept_    ? kept_->settle()
      : stored ? dropUnchecked(access_.session.controllerName, Backup(startup_.workFolder))
               : Status();
  kept_.reset();
  if (!tidied) notice.text += ' ' + tidied.error().describe() + '.';
  console_.calibrationEnded(stored, notice);
  if (panels_ != nullptr) panels_->calibrationEnded(stored);
}

void frmWindows::openCheck(DiagonalPercent limit, std::unique_ptr<WayBack> wayBack, bool isNew) {
  const auto ended = [this, isNew](const CheckResult& result) {
    comeBack();
    const bool isPutBack = result.outcome == CheckOutcome::putBack;
    console_.calibrationEnded(isNew || isPutBack, result.notice);
    if (panels_ != nullptr) panels_->calibrationEnded(isNew && !isPutBack);
  };
  check_ = new frmCheck({access_.clock, startup_.simulation, access_.session.controllerName, limit,
                         std::move(wayBack)},
                        panelMonitor_.of(main_), startup_.fullScreenSize, ended);
  check_->open();
}

void frmWindows::check(DiagonalPercent limit) {
  const auto open = [this, limit] {
    main_.showNormal();
    openCheck(limit, wayBackLeft(access_, Backup(startup_.workFolder)), false);
  };
  console_.checkCalibration({open, [this] { endCalibration(); }});
}

void frmWindows::openTest(const std::function<FullScreenWindow*(const Ended&)>& make) {
  const auto open = [this, &make] {
    main_.showNormal();
    test_ = make([this] {
      comeBack();
      console_.testEnded();
    });
    // The program may be about to end: to make it may have taken a while.
    if (console_.actions().gate().isCutShort()) return test_->leave();
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

measure::Conditions frmWindows::knownConditions() {
  measure::Conditions known;
  known.controller = access_.session.controllerName;
  known.firmware = model_.identity.firmware;
  known.unitType = model_.identity.unitType;
  if (!startup_.versions.empty()) known.program = startup_.versions.front();
  if (known.controller.empty()) return known;
  if (const auto settings = reportedSettings(access_)) {
    for (const Setting& setting : settingTable())
      if (setting.get != nullptr)
        known.settings.emplace(setting.name, settingText(setting, setting.get(*settings)));
  }
  if (const auto block = readBlock(access_)) {
    for (const ParameterWord& word : *block)
      known.parameterWords.push_back(wordText(word));
  }
  return known;
}

/// With a stream of the controller's own reports, where its port can be had.
measure::MeasureParts frmWindows::measureParts(SerialPort& port) {
  std::vector<measure::PortChoice> ports;
  const auto lacks = access_.driver.missing();
  const bool lendsPort = std::ranges::none_of(portLoanOperations, [&](std::string_view name) {
    return std::ranges::find(lacks, name) != lacks.end();
  });
  if (lendsPort && debugger_ == nullptr && !access_.session.controllerName.empty()) {
    reports_ = std::make_unique<ControllerStream>(access_, prompt_, port, console_.reportFormats());
    for (const ListedPort& listed : listedPorts(startup_.ports))
      if (listed.number > 0)
        ports.push_back({listed.number, startup_.ports.describe(listed.number)});
  }
  return {access_.clock,       prompt_, access_.session.messages, tests_.measuring,
          startup_.workFolder, {},      reports_.get(),           std::move(ports)};
}

void frmWindows::measurePanel() {
  openTest([this](const Ended& ended) {
    measure::MeasureParts parts = measureParts(port_);
    parts.known = knownConditions();
    const auto left = [this, ended] {
      reports_.reset();
      ended();
    };
    return new measure::frmMeasure(std::move(parts), startup_.simulation,
                                   access_.session.controllerName, panelMonitor_.of(main_),
                                   startup_.fullScreenSize, left);
  });
}

void frmWindows::commission() {
  if (!tests_.commission) return;
  const auto open = [this] {
    main_.showNormal();
    const auto left = [this] {
      comeBack();
      console_.commissionEnded();
    };
    test_ = tests_.commission({*this, panelMonitor_.of(main_), startup_.fullScreenSize, left});
    test_->open();
  };
  const auto end = [this] {
    if (test_) test_->askToLeave();
  };
  console_.commission({open, end});
}

void frmWindows::calibrateFor(int points, std::function<void(CalibrationOutcome)> ended) {
  access_.session.calibrationPoints = points;
  if (panels_ != nullptr) panels_->calibrationBegins();
  calibration_ = new frmCal(
      access_, prompt_, startup_.simulation, panelMonitor_.of(main_), startup_.fullScreenSize,
      [] {},
      [this, ended = std::move(ended)](CalibrationOutcome outcome) {
        if (panels_ != nullptr) panels_->calibrationEnded(outcome == CalibrationOutcome::stored);
        ended(outcome);
      });
  calibration_->open();
}

void frmWindows::checkFor(std::unique_ptr<WayBack> wayBack,
                          std::function<void(const CheckResult&)> ended) {
  check_ = new frmCheck({access_.clock, startup_.simulation, access_.session.controllerName,
                         usualCheckLimit, std::move(wayBack)},
                        panelMonitor_.of(main_), startup_.fullScreenSize, std::move(ended));
  check_->open();
}

void frmWindows::measureFor(measure::GuidedMeasuring guided, std::function<void()> ended) {
  // Its bytes are evidence too; the measurement goes on without them.
  recorded_ = std::make_unique<RecordedPort>(port_, access_.clock);
  const auto file = guided.folder / guided.recording;
  const bool records = recorded_
                           ->startRecording(file, {.controller = access_.session.controllerName,
                                                   .program = guided.begun.conditions.program})
                           .has_value();
  measure::MeasureParts parts = measureParts(*recorded_);
  parts.workingFolder = guided.folder;
  parts.guided = std::move(guided);
  const auto left = [this, file, records, ended = std::move(ended)] {
    reports_.reset();
    const bool isEmpty = recorded_->receivedBytes() == 0;
    static_cast<void>(recorded_->stopRecording());
    recorded_.reset();
    std::error_code ignored;
    if (records && isEmpty) std::filesystem::remove(file, ignored);
    ended();
  };
  guided_ =
      new measure::frmMeasure(std::move(parts), startup_.simulation, access_.session.controllerName,
                              panelMonitor_.of(main_), startup_.fullScreenSize, left);
  guided_->open();
}

void frmWindows::endScreen() {
  endCalibration();
  if (guided_) guided_->leave();
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
                           sentLines_,
                           startup_.versions.empty() ? std::string() : startup_.versions.front(),
                           [this] { return console_.busy(); }, startup_.ports, startup_.recordings},
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

bool frmWindows::takeMonitor(int monitor) {
  const bool taken = touch::assignMonitor(access_, prompt_, monitor);
  if (taken) panelMonitor_.assign(monitor);
  return taken;
}

const QScreen& frmWindows::chooseMonitor(int monitor) {
  takeMonitor(monitor);
  return panelMonitor_.of(main_);
}

void frmWindows::assignMonitor(int monitor) {
  console_.actions().perform(tr("Assigning the monitor …").toStdString(), [this, monitor] {
    const bool taken = takeMonitor(monitor);
    const QString text =
        taken ? tr("The panel belongs to monitor %1.") : tr("The driver did not take monitor %1.");
    return Notice(taken ? NoticeKind::success : NoticeKind::error, text.arg(monitor).toStdString());
  });
}

}  // namespace touch
