#include "console/frmMaintenancePage.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QFrame>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/text.h"

namespace touch {

frmMaintenancePage::frmMaintenancePage(const std::filesystem::path& driver,
                                       const std::filesystem::path& workFolder, Trace& trace,
                                       QWidget* parent)
    : QWidget(parent),
      trace_(trace),
      traceFile_(workFolder / "trace.jsonl"),
      advancedFrame_(new QFrame),
      traceSwitch_(new QCheckBox(tr("&Trace every driver call and serial transfer"))) {
  auto* const driverPath = new QLabel(shownText(driver.string()));
  driverPath->setObjectName("driverPath");
  driverPath->setWordWrap(true);
  driverPath->setTextInteractionFlags(Qt::TextSelectableByMouse);

  traceSwitch_->setObjectName("checkTrace");
  traceSwitch_->setChecked(trace_.isOn());
  traceSwitch_->setToolTip(tr("Written to %1").arg(shownText(traceFile_.string())));
  connect(traceSwitch_, &QCheckBox::toggled, this, &frmMaintenancePage::switchTrace);

  advancedFrame_->setObjectName("advancedFrame");
  advancedFrame_->setFrameShape(QFrame::StyledPanel);
  auto* const advanced = new QFormLayout(advancedFrame_);
  advanced->addRow(tr("Driver library:"), driverPath);
  advanced->addRow(traceSwitch_);
  advancedFrame_->hide();

  auto* const hint = new QLabel(tr("Press I for the advanced functions."));
  hint->setWordWrap(true);

  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(hint);
  layout->addWidget(advancedFrame_);
  layout->addStretch();
}

void frmMaintenancePage::showAdvancedFrame() {
  advancedFrame_->show();
}

void frmMaintenancePage::switchTrace(bool on) {
  if (!on) {
    trace_.stop();
    emit statusChanged(tr("The trace is off."));
    return;
  }
  if (const auto complaint = trace_.start(traceFile_)) {
    const QSignalBlocker silent(traceSwitch_);
    traceSwitch_->setChecked(false);
    emit statusChanged(shownText(*complaint));
  } else {
    emit statusChanged(tr("Tracing to %1").arg(shownText(traceFile_.string())));
  }
}

}  // namespace touch
