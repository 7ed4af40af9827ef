#include "commission/steps/frmCommission.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "commission/bundle/bundle.h"
#include "commission/sheet/frmSheetPdf.h"
#include "commission/sheet/frmSheetView.h"
#include "commission/steps/controller_steps.h"
#include "commission/steps/frmCommissionStart.h"
#include "console/doctor/frmDoctorPage.h"
#include "console/panels/frmMonitorRow.h"
#include "console/settings/touch_settings.h"
#include "measure/report/conditions.h"
#include "measure/windows/frmFields.h"
#include "measure/windows/frmVerdict.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/screen_keyboard.h"
#include "ui/controls/scrollable.h"
#include "ui/guide/help.h"
#include "ui/screens/screen_size.h"
#include "ui/style/face_style.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch::commission {

namespace {

constexpr qreal captionSize = 1.4;

struct Field {
  const char* name;
  const char* caption;
  std::string PanelFacts::*text;
};
constexpr std::array<Field, 5> fields = {{
    {"panelSerial", QT_TRANSLATE_NOOP("touch::commission::frmCommission", "Serial &number:"),
     &PanelFacts::serialNumber},
    {"panelOperator", QT_TRANSLATE_NOOP("touch::commission::frmCommission", "&Operator:"),
     &PanelFacts::person},
    {"panelPlace", QT_TRANSLATE_NOOP("touch::commission::frmCommission", "&Place:"),
     &PanelFacts::place},
    {"panelOrder", QT_TRANSLATE_NOOP("touch::commission::frmCommission", "Or&der:"),
     &PanelFacts::order},
    {"panelNote", QT_TRANSLATE_NOOP("touch::commission::frmCommission", "No&te:"),
     &PanelFacts::note},
}};

QString durationText(std::chrono::seconds duration) {
  if (duration < std::chrono::minutes(1))
    return frmCommission::tr("Takes about %1 seconds.").arg(duration.count());
  return frmCommission::tr("Takes about %1 minutes.").arg(duration.count() / 60);
}

/// How a step is, in a word and a sign.
struct StateLook {
  QString word;
  std::optional<QStyle::StandardPixmap> sign;
};
StateLook lookOf(const StepRecord& record) {
  if (record.state == StepState::open) return {frmCommission::tr("open"), std::nullopt};
  if (record.state == StepState::skipped)
    return {frmCommission::tr("skipped"), QStyle::SP_MessageBoxInformation};
  if (!record.found.good) return {frmCommission::tr("problem"), QStyle::SP_MessageBoxCritical};
  return {frmCommission::tr("done"), QStyle::SP_DialogApplyButton};
}

QLabel* makeText() {
  auto* const label = new QLabel;
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return label;
}

}  // namespace

frmCommission::frmCommission(const CommissionParts& parts, const CommissionCall& call)
    : FullScreenWindow(call.screen, call.size, call.onLeft),
      prompt_(parts.prompt),
      patient_(parts.patient),
      tracing_(parts.trace),
      access_(parts.patient.access.value()),
      screens_(call.screens),
      gate_(access_.clock, [this] { pages_->setEnabled(true); }),
      pages_(new QStackedWidget(this)),
      startPage_(new frmCommissionStart),
      sheetView_(new frmSheetView),
      progress_(new QProgressBar),
      steps_(new QListWidget),
      caption_(makeText()),
      purpose_(makeText()),
      verdict_(makeText()),
      found_(makeText()),
      before_(makeText()),
      panelForm_(makePanelForm()),
      mends_(makeMends()),
      monitors_(new frmMonitorRow),
      keyboard_(new ScreenKeyboard),
      keyboardSwitch_(ScreenKeyboard::makeSwitch(*keyboard_)),
      targetsRow_(new QWidget),
      advice_(makeText()),
      targets_(new QComboBox),
      do_(new QPushButton(tr("&Start"))),
      skip_(new QPushButton(tr("S&kip …"))),
      set_(new QPushButton(tr("S&et them so"))),
      next_(new QPushButton(tr("Ne&xt"))),
      sheet_(new QPushButton(tr("Sho&w the sheet"))) {
  setObjectName("frmCommission");
  setWindowTitle(tr("Commissioning"));
  setHelpChapter(*this, "Commission a panel");
  addHelpKey(*this);
  pages_->addWidget(startPage_);
  pages_->addWidget(makeRunPage());
  pages_->addWidget(sheetView_);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  layout->addWidget(pages_);
  connect(startPage_, &frmCommissionStart::beginRequested, this, &frmCommission::begin);
  connect(startPage_, &frmCommissionStart::folderRequested, this, &frmCommission::chooseFolder);
  connect(sheetView_, &frmSheetView::closed, this, &frmCommission::showRunPage);
  connect(startPage_, &frmCommissionStart::leaveRequested, this, &frmCommission::askToLeave);
  connect(startPage_, &frmCommissionStart::goOnRequested, this, [this](const UnfinishedRun& one) {
    auto folder = RunFolder::open(one.folder);
    if (!folder) return tellFailure(folder.error());
    takeUp(std::move(*folder), one.run);
  });
}

frmCommission::~frmCommission() = default;

QWidget* frmCommission::makeRunPage() {
  auto* const page = new QWidget;
  auto* const rows = new QVBoxLayout(page);
  progress_->setObjectName("commissionProgress");
  progress_->setAccessibleName(tr("How much of the run is done"));
  progress_->setRange(0, 100);
  steps_->setObjectName("commissionSteps");
  steps_->setAccessibleName(tr("Steps"));
  steps_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  steps_->setMinimumHeight(fingerSize());  // a list wants more by itself than the keyboard leaves
  for (const Step& step : steps())
    steps_->addItem(spokenText("commission", step.caption));
  connect(steps_, &QListWidget::currentRowChanged, this, [this] { showStep(); });
  auto* const columns = new QHBoxLayout;
  columns->addWidget(steps_, 2);
  columns->addWidget(makeStep(), 3);
  rows->addWidget(progress_);
  rows->addLayout(columns, 1);
  rows->addWidget(keyboard_);
  return page;
}

QWidget* frmCommission::makeStep() {
  auto* const content = new QWidget;
  auto* const rows = new QVBoxLayout(content);
  caption_->setObjectName("stepCaption");
  caption_->setFont(resized(caption_->font(), captionSize));
  purpose_->setObjectName("stepPurpose");
  verdict_->setObjectName("runVerdict");
  verdict_->setFont(resized(verdict_->font(), 2));
  found_->setObjectName("stepFound");
  before_->setObjectName("stepBefore");
  targets_->setObjectName("calibrationTargets");
  makeFingerSized(*targets_);
  for (const int count : {2, 3, 5, 9})
    targets_->addItem(tr("%1 targets").arg(count), count);
  targets_->setCurrentIndex(targets_->findData(5));
  auto* const targetsForm = new QFormLayout(targetsRow_);
  targetsForm->setContentsMargins(0, 0, 0, 0);
  measure::addField(*targetsForm, tr("Calibrate &with:"), targets_, targets_);
  advice_->setObjectName("targetAdvice");
  monitors_->setObjectName("monitors");
  for (auto* const button : monitors_->findChildren<QPushButton*>())
    makeFingerSized(*button);
  connect(monitors_, &frmMonitorRow::assigned, this, &frmCommission::chooseMonitor);
  for (QWidget* const part :
       std::initializer_list<QWidget*>{caption_, purpose_, monitors_, panelForm_, advice_,
                                       targetsRow_, verdict_, found_, mends_, before_})
    rows->addWidget(part);
  rows->addStretch();
  auto* const page = new ScrolledPage;
  page->put(content, makeButtons());
  return page;
}

QWidget* frmCommission::makePanelForm() {
  auto* const widget = new QWidget;
  auto* const form = new QFormLayout(widget);
  form->setContentsMargins(0, 0, 0, 0);
  for (const Field& field : fields) {
    auto* const edit = new QLineEdit;
    constexpr int longest = 200;
    edit->setMaxLength(longest);
    edit->setObjectName(field.name);
    makeFingerSized(*edit);
    // A bar code scanner ends what it types with Enter.
    connect(edit, &QLineEdit::returnPressed, this, [this] { focusNextChild(); });
    measure::addField(*form, tr(field.caption), edit, edit);
  }
  return widget;
}

/// One button for each mend, in its order.
QWidget* frmCommission::makeMends() {
  auto* const box = new QWidget;
  auto* const column = new QVBoxLayout(box);
  column->setContentsMargins(0, 0, 0, 0);
  const struct {
    const char* name;
    QString caption;
    QString description;
    void (frmCommission::*pressed)();
  } all[] = {
      {"cmdTakePortBack", tr("Take the port &back"),
       tr("Has the driver open the controller's port again"), &frmCommission::takePortBack},
      {"cmdEnablePanel", tr("Switch the &panel on"), tr("Has the controller report touches again"),
       &frmCommission::enablePanel},
      {"cmdChooseFolder", tr("C&hoose another folder …"),
       tr("Saves the run and the parameters in another folder"), &frmCommission::chooseFolder},
  };
  for (const auto& [name, caption, description, pressed] : all) {
    auto* const button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAccessibleDescription(description);
    button->setToolTip(description);
    button->setAutoDefault(true);
    makeFingerSized(*button);
    connect(button, &QPushButton::clicked, this, pressed);
    column->addWidget(button, 0, Qt::AlignLeft);
  }
  return box;
}

QWidget* frmCommission::makeButtons() {
  auto* const row = new QWidget;
  auto* const buttons = new QHBoxLayout(row);
  auto* const leave = new QPushButton(tr("Lea&ve"));
  const struct {
    QPushButton* button;
    const char* name;
    void (frmCommission::*pressed)();
  } all[] = {{set_, "cmdSetAsWanted", &frmCommission::setAsWanted},
             // Not all steps have it: before "Start", which so stays in its place.
             {skip_, "cmdSkipStep", &frmCommission::skipStep},
             {do_, "cmdDoStep", &frmCommission::carryOut},
             {next_, "cmdNextStep", &frmCommission::goOn},
             {sheet_, "cmdShowSheet", &frmCommission::showSheet},
             {leave, "cmdLeaveCommission", &frmCommission::askToLeave}};
  for (const auto& [button, name, pressed] : all) {
    button->setObjectName(name);
    button->setAutoDefault(true);
    makeFingerSized(*button);
    connect(button, &QPushButton::clicked, this, pressed);
    // The keyboard meets "Leave" behind the others, but it stands far from where the main window
    // has "Exit", which a second tap would meet.
    button == leave ? buttons->insertWidget(0, leave) : buttons->addWidget(button);
  }
  buttons->insertWidget(1, keyboardSwitch_);
  buttons->insertStretch(2);
  setKind(*sheet_, ButtonKind::primary);
  connect(keyboardSwitch_, &QPushButton::toggled, this, [this](bool isOn) {
    auto* const first = findChild<QLineEdit*>(fields.front().name);
    if (isOn && qobject_cast<QLineEdit*>(focusWidget()) == nullptr) first->setFocus();
  });
  return row;
}

void frmCommission::started() {
  showStart();
}

void frmCommission::showStart() {
  const auto folder = runsIn(patient_.workFolder);
  UnfinishedRuns found = unfinishedRuns(folder);
  startPage_->offer(std::move(found.runs), folder);
  startPage_->takeFocus();
  for (const FileError& error : found.damaged)
    tellFailure(error);
}

void frmCommission::begin() {
  Run run;
  run.profile = startPage_->profile();
  run.use = startPage_->use();
  if (!patient_.versions.empty()) run.program = patient_.versions.front();
  run.began = measure::dateOf(std::chrono::system_clock::now());
  auto folder = RunFolder::make(runsIn(patient_.workFolder), run);
  if (!folder) return tellFailure(folder.error());
  takeUp(std::move(*folder), std::move(run));
}

void frmCommission::takeUp(RunFolder folder, Run run) {
  guided_.emplace(access_, Backup(patient_.workFolder), std::move(folder), std::move(run));
  trace_.emplace(tracing_, guided_->folder());
  for (const Field& field : fields)
    findChild<QLineEdit*>(field.name)->setText(shownText(guided_->run().panel.*field.text));
  showRunPage();
  choose(guided_->next().value_or(StepId::sheet));
}

StepId frmCommission::chosen() const {
  return static_cast<StepId>(std::max(steps_->currentRow(), 0));
}

void frmCommission::choose(StepId id) {
  showRun();
  steps_->setCurrentRow(static_cast<int>(id));
  showStep();
  if (id == StepId::panel)
    findChild<QWidget*>("panelSerial")->setFocus();
  else
    (sheet_->isVisible() ? sheet_ : do_)->setFocus();
}

void frmCommission::showRun() {
  const Run& run = guided_->run();
  progress_->setValue(static_cast<int>(100 * progress(run)));
  // As wide as a sign, so that all captions begin at one place.
  QPixmap noSign(fingerSize(), fingerSize());
  noSign.fill(Qt::transparent);
  for (const Step& step : steps()) {
    QListWidgetItem* const item = steps_->item(static_cast<int>(step.id));
    const auto [word, sign] = lookOf(run[step.id]);
    const QString caption = spokenText("commission", step.caption);
    item->setText(caption);
    QIcon icon = sign ? style()->standardIcon(*sign) : QIcon(noSign);
    // Where it is chosen the colour says the same.
    const int size = style()->pixelMetric(QStyle::PM_ListViewIconSize, nullptr, steps_);
    icon.addPixmap(icon.pixmap(size), QIcon::Selected);
    item->setIcon(icon);
    item->setData(Qt::AccessibleTextRole, caption + ", " + word);
    // A little less than usual: so all ten are seen at once on a screen that is 480 high.
    item->setSizeHint({0, fingerSize() - 2});
  }
}

void frmCommission::showStep() {
  if (!guided_) return;
  const Run& run = guided_->run();
  const StepId id = chosen();
  const Step& step = stepOf(id);
  const StepRecord& record = run[id];
  caption_->setText(spokenText("commission", step.caption));
  purpose_->setText(spokenText("commission", step.purpose) + ' ' +
                    durationText(step.duration(run.profile)));
  QStringList lines;
  if (record.state == StepState::skipped) lines << tr("Skipped: %1").arg(shownText(record.reason));
  for (const std::string& text : record.found.texts)
    lines << shownText(text);
  showVerdict(id);
  if (id == StepId::verdict && judgementIn(run)) lines.removeFirst();  // it stands above them
  if (id == StepId::sheet && record.state == StepState::done) {
    if (const auto judged = judgementIn(run); judged && !judged->reason.empty())
      lines << shownText(judged->reason);
    lines << tr("The sheet is in the folder %1: sheet.pdf, sheet.html, sheet.json.")
                 .arg(shownText(utf8Of(guided_->folder().path())))
          << tr("All of it in one file, to hand over and to keep: %1")
                 .arg(shownText(utf8Of(bundleOf(guided_->folder()))));
  }
  found_->setText(lines.join("\n\n"));
  before_->clear();
  panelForm_->setVisible(id == StepId::panel);
  keyboardSwitch_->setVisible(id == StepId::panel);
  keyboard_->setVisible(id == StepId::panel && keyboardSwitch_->isChecked());
  targetsRow_->setVisible(id == StepId::calibrate);
  monitors_->setVisible(id == StepId::prerequisites && QGuiApplication::screens().size() > 1);
  mends_->setVisible(id == StepId::prerequisites && !guided_->mends().empty());
  for (const auto& [mend, name] : {std::pair{Mend::takePortBack, "cmdTakePortBack"},
                                   {Mend::enablePanel, "cmdEnablePanel"},
                                   {Mend::chooseFolder, "cmdChooseFolder"}})
    mends_->findChild<QWidget*>(name)->setVisible(std::ranges::find(guided_->mends(), mend) !=
                                                  guided_->mends().end());
  const bool canBeDone = isReachable(run, id);
  showAdvice();
  do_->setText(record.state == StepState::open ? tr("&Start") : tr("&Repeat"));
  do_->setEnabled(canBeDone);
  setKind(*do_, record.state == StepState::open ? ButtonKind::primary : ButtonKind::plain);
  skip_->setVisible(step.mayBeSkipped && record.state == StepState::open);
  skip_->setEnabled(canBeDone);
  next_->setVisible(record.state != StepState::open && guided_->next().has_value());
  sheet_->setVisible(id == StepId::sheet && record.state == StepState::done);
  set_->setVisible(id == StepId::settings && record.state == StepState::done && !record.found.good);
}

/// In the letters and the colour of an outcome, on the steps from the verdict on.
void frmCommission::showVerdict(StepId id) {
  const auto judged = judgementIn(guided_->run());
  verdict_->setVisible(judged && (id == StepId::verdict || id == StepId::sheet));
  if (!judged) return;
  const bool simulated = isSimulated(guided_->run());
  const QString word = measure::wordOf(judged->outcome);
  QPalette coloured = verdict_->palette();
  coloured.setColor(QPalette::WindowText,
                    measure::outcomeColour(outcomeLook(judged->outcome, simulated), palette()));
  verdict_->setPalette(coloured);
  verdict_->setText(simulated ? tr("%1, simulated").arg(word) : word);
}

/// An earlier measurement takes a while to be judged, and is only when the step can be done.
void frmCommission::showAdvice() {
  const bool isWanted =
      chosen() == StepId::calibrate && isReachable(guided_->run(), StepId::calibrate);
  advice_->setVisible(isWanted);
  if (!isWanted) return;
  const TargetAdvice& advice = guided_->targetAdvice();
  advice_->setText(shownText(advice.why));
  // What the user has chosen since stays.
  if (advised_ != advice) targets_->setCurrentIndex(targets_->findData(advice.targets));
  advised_ = advice;
}

Status frmCommission::lookAround() {
  return guided_->lookAround(examine(frmDoctorPage::withScreens(patient_)));
}

Status frmCommission::namePanel() {
  trace_.reset();
  auto named = guided_->namePanel(typedFacts());
  trace_.emplace(tracing_, guided_->folder());
  return named;
}

void frmCommission::takePortBack() {
  work([this] {
    commission::takePortBack(access_);
    return lookAround();
  });
}

void frmCommission::enablePanel() {
  work([this] {
    disableTouchPanel(access_, false);
    return lookAround();
  });
}

void frmCommission::chooseFolder() {
  std::optional<std::filesystem::path> folder;
  gate_.run([&] { folder = askFolder(this, tr("Working folder"), patient_.workFolder); });
  if (!folder) return;
  if (!guided_) {
    patient_.workFolder = *folder;
    return showStart();
  }
  work([this, &folder]() -> Status {
    trace_.reset();
    auto moved = guided_->moveTo(*folder);
    trace_.emplace(tracing_, guided_->folder());
    if (!moved) return moved;
    patient_.workFolder = *folder;
    prompt_.message(
        tr("The run is now saved in %1. To continue it after a restart, start the program "
           "with --work-dir and this folder.")
            .arg(shownText(utf8Of(*folder)))
            .toStdString());
    return lookAround();
  });
}

void frmCommission::chooseMonitor(int monitor) {
  gate_.run([this, monitor] { moveTo(screens_.chooseMonitor(monitor)); });
}

void frmCommission::carryOut() {
  if (!gate_.isOpen() || !guided_) return;
  const StepId id = chosen();
  if (guided_->run()[id].state != StepState::open)
    if (const auto opened = guided_->repeat(id); !opened) return tellFailure(opened.error());
  switch (id) {
    case StepId::prerequisites:
      return work([this] { return lookAround(); });
    case StepId::panel:
      return work([this] { return namePanel(); });
    case StepId::identity:
      return work([this] { return guided_->identify(driverName(patient_)); });
    case StepId::settings:
      return work([this] { return guided_->compareSettings(); });
    case StepId::calibrate:
      return calibrate();
    case StepId::check:
      return check();
    case StepId::measure:
      return measure();
    case StepId::rate:
      return work([this] { return guided_->tellRate(); });
    case StepId::verdict:
      return work([this] { return guided_->judge(); });
    case StepId::sheet:
      return work([this]() -> Status {
        const auto print = [](const RunFolder& folder, const Sheet& sheet,
                              const measure::Report* report) {
          return printSheet(folder, sheet, report);
        };
        const auto bundle = guided_->handOver(*trace_, print);
        return bundle ? Status() : tl::unexpected(bundle.error());
      });
  }
}

void frmCommission::setAsWanted() {
  work([this] { return guided_->setAsWanted(prompt_); });
}

void frmCommission::goOn() {
  choose(guided_->next().value_or(StepId::sheet));
}

void frmCommission::skipStep() {
  if (!gate_.isOpen() || !guided_) return;
  const StepId id = chosen();
  std::vector<std::string> usual;
  for (const char* const reason : usualReasons())
    usual.push_back(say("commission", reason));
  const auto reason =
      prompt_.reason(tr("Why do you skip this step? The reason stands on the sheet.").toStdString(),
                     say("commission", stepOf(id).caption), usual);
  if (!reason || reason->find_first_not_of(' ') == std::string::npos) return;
  work([this, id, &reason] { return guided_->skip(id, *reason); });
}

void frmCommission::calibrate() {
  const int points = targets_->currentData().toInt();
  const auto ended = [this, points](bool completed) {
    comeBack([this, points, completed] { return guided_->endCalibration(points, completed); });
  };
  gate_.begin(
      [this, points, ended] {
        showWait();
        guided_->beginCalibration();
        // The program may be about to end: reading takes a while.
        if (gate_.isCutShort()) return ended(false);
        screens_.calibrateFor(points, [ended](CalibrationOutcome outcome) {
          ended(outcome == CalibrationOutcome::stored);
        });
      },
      [this] { screens_.endScreen(); });
}

void frmCommission::check() {
  gate_.begin(
      [this] {
        showWait();
        screens_.checkFor(guided_->takeWayBack(), [this](const CheckResult& result) {
          comeBack([this, result] { return guided_->endCheck(result); });
        });
      },
      [this] { screens_.endScreen(); });
}

void frmCommission::measure() {
  const auto begun = guided_->measurement(measure::nominalSize(width(), height()));
  if (!begun) return tellFailure(begun.error());
  const auto keep = [this](const measure::Measurement& measurement) {
    return guided_->keep(measurement);
  };
  gate_.begin(
      [&] {
        showWait();
        const RunFolder& folder = guided_->folder();
        screens_.measureFor({*begun, folder.path(), keep,
                             freeName(folder.names(), RunFolder::recordingName, ".txt")},
                            [this] { comeBack([this] { return guided_->endMeasurement(); }); });
      },
      [this] { screens_.endScreen(); });
}

PanelFacts frmCommission::typedFacts() const {
  PanelFacts facts;
  for (const Field& field : fields)
    facts.*field.text = findChild<QLineEdit*>(field.name)->text().trimmed().toStdString();
  return facts;
}

void frmCommission::showWait() {
  pages_->setEnabled(false);
  found_->setText(tr("Please wait …"));
  repaint();
}

void frmCommission::work(const std::function<Status()>& step) {
  gate_.run([this, &step] {
    showWait();
    endStep(step);
  });
}

void frmCommission::endStep(const std::function<Status()>& step) {
  const Status done = step();
  pages_->setEnabled(true);
  if (gate_.isLeaving()) return;
  if (!done) tellFailure(done.error());
  const StepId ended = chosen();
  const StepRecord& record = guided_->run()[ended];
  choose(stepAfter(guided_->run(), ended));
  QStringList found;
  if (record.state == StepState::skipped) found << tr("Skipped: %1").arg(shownText(record.reason));
  for (const std::string& text : record.found.texts)
    found << shownText(text);
  if (chosen() == ended || found.isEmpty()) return;
  before_->setText(
      tr("%1: %2").arg(spokenText("commission", stepOf(ended).caption), found.join('\n')));
}

void frmCommission::tellFailure(const FileError& error) const {
  prompt_.message(error.describe());
}

void frmCommission::comeBack(const std::function<Status()>& step) {
  raise();
  activateWindow();
  gate_.end([this, &step] { endStep(step); });
}

void frmCommission::showSheet() {
  if (!gate_.isOpen() || !guided_) return;
  pages_->setCurrentWidget(sheetView_);
  if (const auto opened = sheetView_->open(guided_->folder()); !opened) {
    showRunPage();
    tellFailure(opened.error());
  }
}

void frmCommission::showRunPage() {
  pages_->setCurrentIndex(1);
  if (sheet_->isVisible()) sheet_->setFocus();
}

void frmCommission::askToLeave() {
  gate_.leave([this] { leave(); });
}

void frmCommission::keyPressEvent(QKeyEvent* event) {
  if (event->isAutoRepeat()) return;
  if (event->key() == Qt::Key_Escape)
    return pages_->currentWidget() == sheetView_ ? showRunPage() : askToLeave();
  FullScreenWindow::keyPressEvent(event);
}

}  // namespace touch::commission
