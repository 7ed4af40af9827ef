#include "measure/windows/frmMeasure.h"

#include <QKeyEvent>
#include <QScreen>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <utility>

#include "measure/files/measurement_file.h"
#include "measure/lines/line_files.h"
#include "measure/report/conditions.h"
#include "measure/windows/frmLines.h"
#include "measure/windows/frmMeasureResult.h"
#include "measure/windows/frmMeasureStart.h"
#include "measure/windows/frmTouchTest.h"
#include "ui/guide/help.h"
#include "ui/screens/screen_size.h"
#include "ui/text.h"
#include "ui/text_file_dialogs.h"

namespace touch::measure {

frmMeasure::frmMeasure(MeasureParts parts, const Simulation& simulation, std::string controller,
                       const QScreen& screen, const std::optional<QSize>& size,
                       std::function<void()> onLeft)
    : FullScreenWindow(screen, size,
                       [this, left = std::move(onLeft)] {
                         listenNoMore();
                         left();
                       }),
      parts_(std::move(parts)),
      screen_(screen),
      pages_(new QStackedWidget(this)),
      startPage_(
          new frmMeasureStart(parts_.prompt, parts_.setup, parts_.workingFolder, parts_.ports)),
      linesPage_(new frmLines(parts_.prompt, parts_.messages, parts_.workingFolder, simulation,
                              controller, reports())),
      touchPage_(new frmTouchTest(parts_.clock, simulation, std::move(controller), measurement_,
                                  reports())),
      resultPage_(new frmMeasureResult(parts_.prompt, parts_.setup, parts_.workingFolder)) {
  if (parts_.stream != nullptr) {
    touch_.emplace(*this, parts_.clock, *parts_.stream, [this](const std::string& why) {
      parts_.prompt.message(
          tr("%1\n\nFrom now on the pointer is measured.").arg(shownText(why)).toStdString());
    });
  }
  setObjectName("frmMeasure");
  setWindowTitle(shownText(parts_.messages.at(LineProcedure::titleMessage)));
  setHelpChapter(*this, "Prove a panel is good");
  addHelpKey(*this);
  for (QWidget* const page :
       std::initializer_list<QWidget*>{startPage_, linesPage_, touchPage_, resultPage_})
    pages_->addWidget(page);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  // It is as large as the screen, and never larger: lines lie on the panel.
  layout->setSizeConstraint(QLayout::SetNoConstraint);
  layout->addWidget(pages_);

  const auto leaving = [this] { askToLeave(); };
  connect(startPage_, &frmMeasureStart::startRequested, this, &frmMeasure::start);
  connect(startPage_, &frmMeasureStart::openRequested, this, &frmMeasure::openStored);
  connect(startPage_, &frmMeasureStart::leaveRequested, this, leaving);
  connect(linesPage_, &frmLines::finished, this, [this] { begin(step_ + 1); });
  connect(linesPage_, &frmLines::resultsRequested, this, &frmMeasure::showResults);
  connect(linesPage_, &frmLines::leaveRequested, this, leaving);
  connect(linesPage_, &frmLines::screenChanged, this, [this] {
    std::erase_if(measurement_.traces,
                  [](const Trace& trace) { return findGuide(trace.task) != nullptr; });
    begin(0);
  });
  connect(linesPage_, &frmLines::kept, this, &frmMeasure::keep);
  connect(touchPage_, &frmTouchTest::changed, this, &frmMeasure::keep);
  connect(touchPage_, &frmTouchTest::done, this, [this] { begin(step_ + 1); });
  connect(touchPage_, &frmTouchTest::leaveRequested, this, leaving);
  connect(resultPage_, &frmMeasureResult::drawAgainRequested, this, [this](const Guide& guide) {
    const auto all = testsOf(measurement_.plan);
    const auto directions = std::ranges::find(all, TouchTest::directions) - all.begin();
    if (lineFileName(guide).empty()) return begin(static_cast<std::size_t>(directions));
    if (!listen()) return;
    step_ = 0;
    pages_->setCurrentWidget(linesPage_);
    linesPage_->drawAgain(guide);
  });
  connect(resultPage_, &frmMeasureResult::measureAnewRequested, this, &frmMeasure::measureAnew);
  connect(resultPage_, &frmMeasureResult::backRequested, this, &frmMeasure::back);
  connect(resultPage_, &frmMeasureResult::leaveRequested, this, leaving);
  connect(resultPage_, &frmMeasureResult::sizeCorrected, this, [this](const PanelSize& corrected) {
    measurement_.size = corrected;
    if (!isStored_ && measurement_.plan.lines) linesPage_->writeFiles();
  });
  connect(resultPage_, &frmMeasureResult::limitsChanged, this,
          [this] { measurement_.limits = parts_.setup.limits; });
}

frmMeasure::~frmMeasure() = default;

PanelSize frmMeasure::knownSize() const {
  if (const auto whole = physicalSizeOf(screen_)) {
    const QSizeF pixels = screen_.size();
    return {{whole->width() * width() / pixels.width()},
            {whole->height() * height() / pixels.height()},
            SizeSource::screenData};
  }
  return nominalSize(width(), height());
}

ReportSource frmMeasure::reports() const {
  return [this] { return touch_ ? touch_->source() : std::nullopt; };
}

/// Has the controller's own reports read, if the user wants them. False when they cannot be; the
/// user knows why then.
bool frmMeasure::listen() {
  const auto port = parts_.setup.reportPort;
  if (!touch_ || !port) return true;
  const auto begun = touch_->begin(*port);
  if (!begun) parts_.prompt.message(begun.error());
  return begun.has_value();
}

void frmMeasure::listenNoMore() {
  if (touch_) touch_->end();
}

/// Whoever guides has a copy of all that was taken.
void frmMeasure::keep() {
  if (!parts_.guided) return;
  if (const auto kept = parts_.guided->keep(measurement_); !kept)
    parts_.prompt.message(kept.error().describe());
}

void frmMeasure::started() {
  if (parts_.guided) {
    startPage_->askForSizeAlone();
    resultPage_->leadOn();
    // As it was entered when this measurement was begun.
    if (parts_.guided->begun.size.source == SizeSource::user)
      parts_.setup.size = parts_.guided->begun.size;
  }
  startPage_->offer(knownSize());
  startPage_->takeFocus();
}

void frmMeasure::start() {
  const MeasureSetup& setup = parts_.setup;
  if (!parts_.guided && testsOf(setup.plan).empty())
    return parts_.prompt.message(tr("Choose at least one test.").toStdString());
  if (!listen()) return;
  if (parts_.guided) {
    measurement_ = parts_.guided->begun;
  } else {
    measurement_ = {};
    measurement_.conditions = parts_.known;
    measurement_.conditions.panel = setup.panel;
    measurement_.conditions.serialNumber = setup.serialNumber;
    measurement_.conditions.person = setup.person;
    measurement_.conditions.date = dateOf(std::chrono::system_clock::now());
    measurement_.plan = setup.plan;
    measurement_.limits = setup.limits;
  }
  measurement_.conditions.screen = describe(screen_).toStdString();
  measurement_.size = startPage_->size();
  isStored_ = false;
  begin(0);
}

void frmMeasure::begin(std::size_t step) {
  const auto all = testsOf(measurement_.plan);
  if (step >= all.size()) return showResults();
  step_ = step;
  if (!listen()) return showResults();
  if (!all[step]) {
    pages_->setCurrentWidget(linesPage_);
    linesPage_->setGeometry(rect());
    if (!linesPage_->begin(measurement_)) leave();
    return;
  }
  pages_->setCurrentWidget(touchPage_);
  touchPage_->setGeometry(rect());
  touchPage_->begin(*all[step]);
  touchPage_->setFocus();
}

void frmMeasure::openStored() {
  const auto file =
      askFileToOpen(this, tr("Open a measurement"), parts_.workingFolder, "JSON (*.json)");
  if (!file) return;
  auto read = readMeasurement(*file);
  if (!read) return parts_.prompt.message(read.error().describe());
  measurement_ = std::move(*read);
  isStored_ = true;
  showResults();
}

void frmMeasure::measureAnew() {
  const QString question =
      tr("Measure everything anew? Single lines are kept as files, with \".old\" behind their "
         "names; everything else is lost.");
  if (parts_.prompt.choose(question.toStdString(), tr("Measure anew").toStdString(),
                           tr("Cancel").toStdString()) != Answer::yes)
    return;
  if (measurement_.plan.lines) linesPage_->putFilesAside();
  measurement_.traces.clear();
  begin(0);
}

void frmMeasure::showResults() {
  listenNoMore();
  keep();
  resultPage_->showResults(measurement_, isStored_);
  pages_->setCurrentWidget(resultPage_);
  resultPage_->takeFocus();
}

void frmMeasure::back() {
  if (isStored_) {
    pages_->setCurrentWidget(startPage_);
    startPage_->takeFocus();
    return;
  }
  if (!measurement_.plan.lines) return begin(step_);
  if (!listen()) return;
  step_ = 0;
  pages_->setCurrentWidget(linesPage_);
  linesPage_->comeBack();
}

void frmMeasure::askToLeave() {
  const bool losesAny = !std::ranges::all_of(measurement_.traces, isKeptAsFile);
  const QString question =
      tr("Leave without saving the measurement? Single "
         "lines are kept as files, everything else is "
         "lost.");
  const bool asks = losesAny && !isStored_ && !parts_.guided && !resultPage_->isSaved();
  if (!asks || parts_.prompt.choose(question.toStdString(), tr("Leave").toStdString(),
                                    tr("Stay").toStdString()) == Answer::yes)
    leave();
}

void frmMeasure::keyPressEvent(QKeyEvent* event) {
  // A key that is held would answer a box and then leave.
  if (event->isAutoRepeat()) return;
  if (event->key() == Qt::Key_Escape) return askToLeave();
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isEnter && pages_->currentWidget() == startPage_) return start();
  FullScreenWindow::keyPressEvent(event);
}

void frmMeasure::resizeEvent(QResizeEvent* event) {
  FullScreenWindow::resizeEvent(event);
  if (pages_->currentWidget() == startPage_) startPage_->offer(knownSize());
}

}  // namespace touch::measure
