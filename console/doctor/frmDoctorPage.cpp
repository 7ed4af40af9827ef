#include "console/doctor/frmDoctorPage.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShowEvent>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "console/actions/actions.h"
#include "console/doctor/diagnostics_file.h"
#include "console/doctor/doctor_report.h"
#include "support/prompt.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/face_style.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch {

namespace {

/// How a state is said and drawn: never by colour alone.
struct StateLook {
  QString word;
  QStyle::StandardPixmap icon;
};

StateLook lookOf(FindingState state) {
  switch (state) {
    case FindingState::problem:
      return {frmDoctorPage::tr("Problem"), QStyle::SP_MessageBoxCritical};
    case FindingState::note:
      return {frmDoctorPage::tr("Note"), QStyle::SP_MessageBoxInformation};
    case FindingState::ok:
      break;
  }
  return {frmDoctorPage::tr("In order"), QStyle::SP_DialogApplyButton};
}

QString findingText(const Finding& finding) {
  QString text = lookOf(finding.state).word + ": " + shownText(finding.what);
  if (!finding.why.empty()) text += '\n' + shownText(finding.why);
  if (!finding.nextStep.empty()) {
    text += '\n' + frmDoctorPage::tr("Next: %1").arg(shownText(finding.nextStep));
  }
  return text;
}

/// A finding may be taller than the list: its keys first scroll to the end of it, then on to the
/// next one.
class FindingsList final : public QListWidget {
 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (scrollWithin(event->key())) return;
    const int row = currentRow();
    QListWidget::keyPressEvent(event);
    // A page on may end within the next finding: the list would stay where it is.
    const int step = event->key() == Qt::Key_PageDown ? 1 : event->key() == Qt::Key_PageUp ? -1 : 0;
    if (step != 0 && currentRow() == row)
      setCurrentRow(std::clamp(row + step, 0, std::max(count() - 1, 0)));
  }

 private:
  bool scrollWithin(int key) {
    const bool down = key == Qt::Key_Down || key == Qt::Key_PageDown;
    const bool up = key == Qt::Key_Up || key == Qt::Key_PageUp;
    if (currentItem() == nullptr || (!down && !up)) return false;
    const QRect finding = visualItemRect(currentItem());
    const int hidden = down ? finding.bottom() - viewport()->rect().bottom() : -finding.top();
    if (hidden <= 0) return false;
    const bool byPage = key == Qt::Key_PageDown || key == Qt::Key_PageUp;
    const int line = fontMetrics().lineSpacing();
    const int step = std::min(hidden, byPage ? std::max(viewport()->height() - line, line) : line);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + (down ? step : -step));
    return true;
  }
};

}  // namespace

frmDoctorPage::frmDoctorPage(Actions& actions, Prompt& prompt, const Trace& trace, Patient patient)
    : commands_(actions),
      prompt_(prompt),
      trace_(trace),
      patient_(std::move(patient)),
      summary_(new QLabel),
      findings_(new FindingsList) {
  setHelpChapter(*this, "No controller is found");
  summary_->setObjectName("lblDoctorSummary");
  findings_->setObjectName("findingsList");
  findings_->setAccessibleName(tr("Findings"));
  findings_->setWordWrap(true);
  findings_->setTextElideMode(Qt::ElideNone);
  findings_->setResizeMode(QListView::Adjust);
  findings_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  findings_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  findings_->setSpacing(2);
  findings_->setMinimumHeight(fingerSize());
  auto* const layout = new QVBoxLayout(this);
  // The buttons come first: on a small screen what stands below the list is out of reach.
  layout->addWidget(makeHead());
  layout->addWidget(findings_, 1);
}

QWidget* frmDoctorPage::makeHead() {
  auto* const box = new QWidget;
  auto* const row = new QHBoxLayout(box);
  row->setContentsMargins(0, 0, 0, 0);
  auto* const refresh = new QPushButton(tr("&Refresh"));
  refresh->setObjectName("cmdDoctorRefresh");
  setKind(*refresh, ButtonKind::primary);
  refresh->setToolTip(tr("Examines everything, and asks each controller what it is"));
  auto* const save = new QPushButton(tr("Save dia&gnostics file …"));
  save->setObjectName("cmdSaveDiagnostics");
  save->setToolTip(tr("Packs all that somebody needs who is to help you into one file"));
  row->addWidget(refresh);
  row->addWidget(save);
  row->addWidget(summary_, 1);
  // The status line says the same.
  summary_->setVisible(!isSmallScreen());
  connect(refresh, &QPushButton::clicked, this, &frmDoctorPage::refresh);
  connect(save, &QPushButton::clicked, this, &frmDoctorPage::chooseFile);
  return box;
}

void frmDoctorPage::showDiagnosis(const Diagnosis& diagnosis) {
  summary_->setText(shownText(summary(diagnosis)));
  findings_->clear();
  for (const Finding& finding : diagnosis.findings) {
    findings_->addItem(new QListWidgetItem(style()->standardIcon(lookOf(finding.state).icon),
                                           findingText(finding)));
  }
  findings_->setCurrentRow(0);
}

void frmDoctorPage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous() || findings_->count() > 0) return;
  // Once the page is painted: looking takes a while.
  QTimer::singleShot(0, this, [this] { showDiagnosis(look(withScreens(patient_))); });
}

Patient frmDoctorPage::withScreens(Patient patient) {
  std::vector<ExaminedScreen>& screens = patient.screens.emplace();
  for (const QScreen* const screen : QGuiApplication::screens()) {
    const QSize pixels = screen->size() * screen->devicePixelRatio();
    screens.push_back({screen->name().toStdString(), pixels.width(), pixels.height(),
                       qRound(100 * screen->devicePixelRatio())});
  }
  return patient;
}

void frmDoctorPage::refresh() {
  commands_.examine(tr("Checking …").toStdString(), [this] { return noticeOf(diagnose()); });
}

Diagnosis frmDoctorPage::diagnose() {
  Diagnosis diagnosis =
      examine(withScreens(patient_), [this](const std::string& what) { tellProgress(what); });
  showDiagnosis(diagnosis);
  return diagnosis;
}

void frmDoctorPage::tellProgress(const std::string& what) {
  commands_.progress(tr("Checking: %1 …").arg(shownText(what)).toStdString());
}

void frmDoctorPage::chooseFile() {
  const QString time = QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
  const auto file =
      askFileToSave(this, tr("Save diagnostics file"),
                    patient_.workFolder / ("touchutility-" + time.toStdString() + ".zip"),
                    tr("ZIP (*.zip)"), "zip");
  if (file) save(*file);
}

void frmDoctorPage::save(const std::filesystem::path& file) {
  commands_.examine(tr("Packing the diagnostics file …").toStdString(), [this, &file] {
    const Diagnosis diagnosis = diagnose();
    const std::string contents = diagnosticsContents(withScreens(patient_), diagnosis, trace_);
    if (!prompt_.confirm(contents + ' ' + tr("Save it?").toStdString()))
      return Notice(tr("Nothing was saved.").toStdString());
    const DiagnosticsSaved saved =
        saveDiagnostics(file, withScreens(patient_), diagnosis, trace_,
                        [this](const std::string& what) { tellProgress(what); });
    const auto kind = !saved.written         ? NoticeKind::error
                      : saved.failed.empty() ? NoticeKind::success
                                             : NoticeKind::remark;
    return Notice(kind, saved.describe(file));
  });
}

}  // namespace touch
