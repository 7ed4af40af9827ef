#include "console/doctor/frmDoctorPage.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShowEvent>
#include <QTimer>
#include <QVBoxLayout>

#include "console/actions/actions.h"
#include "console/doctor/diagnostics_file.h"
#include "console/doctor/doctor_report.h"
#include "console/doctor/findings_list.h"
#include "support/prompt.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/face_style.h"
#include "ui/style/signs.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch {

frmDoctorPage::frmDoctorPage(Actions& actions, Prompt& prompt, const Trace& trace, Patient patient,
                             std::function<void()> searchPorts)
    : commands_(actions),
      prompt_(prompt),
      trace_(trace),
      patient_(std::move(patient)),
      searchPorts_(std::move(searchPorts)),
      summary_(new QLabel),
      findings_(new FindingsList([this](Mend mend) { carryOut(mend); })) {
  setHelpChapter(*this, "No controller is found");
  summary_->setObjectName("lblDoctorSummary");
  QFont large = resized(summary_->font(), 1.25);
  large.setBold(true);
  summary_->setFont(large);
  summary_->setWordWrap(true);
  findings_->setObjectName("findingsList");
  findings_->setAccessibleName(tr("Findings"));
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
  giveSign(*refresh, Sign::refresh);
  refresh->setToolTip(tr("Examines everything, and asks each controller what it is"));
  auto* const save = new QPushButton(tr("Save dia&gnostics file …"));
  save->setObjectName("cmdSaveDiagnostics");
  giveSign(*save, Sign::save);
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
  findings_->showAll(diagnosis.findings);
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

void frmDoctorPage::carryOut(Mend mend) {
  mend == Mend::searchPorts ? searchPorts_() : refresh();
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
