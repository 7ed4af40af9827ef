#include "console/maintenance/frmMaintenancePage.h"

#include <QCheckBox>
#include <QDateTime>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <functional>

#include "console/actions/actions.h"
#include "console/panels/frmMonitorRow.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/scrollable.h"
#include "ui/guide/help.h"
#include "ui/style/face_style.h"
#include "ui/style/signs.h"
#include "ui/text.h"

namespace touch {

frmMaintenancePage::frmMaintenancePage(MainModel& model, Actions& actions, ParameterEditor& editor,
                                       Trace& trace, const std::filesystem::path& driver,
                                       const std::filesystem::path& workFolder,
                                       MaintenanceTools tools)
    : model_(model),
      commands_(actions),
      editor_(editor),
      trace_(trace),
      tools_(std::move(tools)),
      workFolder_(workFolder),
      advanced_(new QPushButton(tr("Ad&vanced …"))),
      advancedFrame_(new QFrame),
      undo_(new QPushButton(tr("U&ndo"))),
      traceSwitch_(new QCheckBox(tr("Tra&ce every driver call and serial transfer"))) {
  setHelpChapter(*this, "Maintenance");
  auto* const driverPath = new QLineEdit(shownText(driver.string()));
  driverPath->setObjectName("driverPath");
  driverPath->setAccessibleName(tr("Driver library"));
  driverPath->setReadOnly(true);

  traceSwitch_->setObjectName("checkTrace");
  traceSwitch_->setChecked(trace_.isOn());
  traceSwitch_->setToolTip(tr("Written to a new file in the working folder each time"));
  connect(traceSwitch_, &QCheckBox::toggled, this, &frmMaintenancePage::switchTrace);

  advancedFrame_->setObjectName("advancedFrame");
  advancedFrame_->setFrameShape(QFrame::StyledPanel);
  auto* const advanced = new QFormLayout(advancedFrame_);
  advanced->setRowWrapPolicy(QFormLayout::WrapLongRows);
  auto* const monitors = new frmMonitorRow;
  connect(monitors, &frmMonitorRow::assigned, this, tools_.assignMonitor);
  monitorRow_ = monitors;
  advanced->addRow(tr("Panel on monitor:"), monitorRow_);
  advanced->addRow(tr("Driver library:"), driverPath);
  advanced->addRow(traceSwitch_);
  advanced->addRow(makeTools());
  advancedFrame_->hide();

  advanced_->setObjectName("cmdAdvanced");
  advanced_->setToolTip(tr("Shows the advanced functions (key I)"));
  advanced_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  connect(advanced_, &QPushButton::clicked, this, &frmMaintenancePage::showAdvancedFrame);

  functions_ = makeFunctions();
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(functions_);
  layout->addWidget(advanced_);
  layout->addWidget(advancedFrame_);
  layout->addStretch();
  model.watch([this](Part part) { draw(part); });
}

void frmMaintenancePage::draw(Part part) {
  if (part == Part::controllers) {
    functions_->setEnabled(model_.selected.has_value());
    monitorRow_->setEnabled(model_.selected.has_value());
  } else if (part == Part::parameters) {
    undo_->setEnabled(editor_.canUndo());
  } else if (part == Part::page && isAncestorOf(window()->focusWidget())) {
    // Whoever comes finds what is harmless, not the first button, nor the last one that they
    // pressed here.
    harmless()->setFocus();
  } else if (part == Part::work && !model_.work) {
    watchTrace();
  }
}

QWidget* frmMaintenancePage::makeFunctions() {
  auto* const box = new QWidget;
  auto* const grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  const struct {
    QPushButton* button;
    const char* name;
    QString purpose;
    QString work;
    Notice (ParameterEditor::*action)();
  } functions[] = {
      {new QPushButton(tr("Defaul&ts")), "Command2",
       tr("Restores the factory settings. "
          "The current parameters are saved in the folder \"backup\" first."),
       tr("Restoring the defaults …"), &ParameterEditor::restoreDefaults},
      {undo_, "cmdUndoDefaults", tr("Puts back the parameters from before the last change."),
       tr("Writing the parameters back …"), &ParameterEditor::undo},
      {new QPushButton(tr("R&eset")), "Command3",
       tr("Restarts the controller (like switching it off and on)."),
       tr("Resetting the controller …"), &ParameterEditor::reset},
  };
  int row = 0;
  for (const auto& function : functions) {
    function.button->setObjectName(function.name);
    function.button->setMinimumWidth(3 * fingerSize());
    if (function.button != undo_) setKind(*function.button, ButtonKind::dangerous);
    function.button->setAccessibleDescription(function.purpose);
    auto* const purpose = new QLabel(function.purpose);
    purpose->setWordWrap(true);
    grid->addWidget(function.button, row, 0);
    grid->addWidget(purpose, row, 1);
    ++row;
    connect(function.button, &QPushButton::clicked, this,
            [this, what = function.work.toStdString(),
             step = std::function<Notice()>(std::bind_front(function.action, &editor_))] {
              commands_.perform(what, step);
            });
  }
  grid->setColumnStretch(1, 1);
  undo_->setEnabled(false);
  giveSign(*undo_, Sign::undo);
  return box;
}

/// What Ctrl+A and Ctrl+B do, for those who have no keyboard at hand but that of the screen.
QWidget* frmMaintenancePage::makeTools() {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  auto* const debugger = new QPushButton(tr("Serial de&bugger …"));
  debugger->setObjectName("cmdDebugger");
  giveSign(*debugger, Sign::talk);
  debugger->setToolTip("Ctrl+A");
  auto* const pins = new QPushButton(tr("Sensor &pins …"));
  pins->setObjectName("cmdPins");
  pins->setToolTip("Ctrl+B");
  row->addWidget(debugger);
  row->addWidget(pins);
  row->addStretch();
  connect(debugger, &QPushButton::clicked, this, [this] { tools_.debug(); });
  connect(pins, &QPushButton::clicked, this, [this] { tools_.definePins(); });
  return box;
}

QWidget* frmMaintenancePage::harmless() const {
  return advanced_;
}

void frmMaintenancePage::showAdvancedFrame() {
  advancedFrame_->show();
  bringIntoView(*advancedFrame_);
}

void frmMaintenancePage::watchTrace() {
  const auto reason = trace_.takeBreak();
  if (!reason) return;
  const QSignalBlocker silent(traceSwitch_);
  traceSwitch_->setChecked(false);
  commands_.tell(Notice::error(*reason));
}

void frmMaintenancePage::switchTrace(bool on) {
  if (!on) {
    trace_.stop();
    commands_.tell(tr("The trace is off.").toStdString());
    return;
  }
  // A file of its own each time: an earlier trace may be what somebody is waiting for.
  const QString time = QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
  const auto file = workFolder_ / ("trace-" + time.toStdString() + ".jsonl");
  if (const auto started = trace_.start(file); !started) {
    const QSignalBlocker silent(traceSwitch_);
    traceSwitch_->setChecked(false);
    commands_.tell(Notice::error(started.error()));
  } else {
    commands_.tell(
        Notice::success(tr("Tracing to %1").arg(shownText(file.string())).toStdString()));
  }
}

}  // namespace touch
