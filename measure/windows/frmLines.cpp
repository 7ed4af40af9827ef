#include "measure/windows/frmLines.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <cmath>
#include <utility>

#include "linetest/files/damaged_files.h"
#include "measure/lines/guide_picture.h"
#include "measure/lines/line_files.h"
#include "measure/report/conditions.h"
#include "measure/windows/frmGuideBox.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/screens/touch_canvas.h"
#include "ui/text.h"

namespace touch::measure {

namespace {

constexpr int inkWidth = 3;
constexpr int pageGap = 8;
constexpr int widestBox = 560;
constexpr int heightForDrawing = 760;  // a box above a horizontal line has half of that
constexpr std::size_t mostReasons = 3;

bool isVertical(const Guide& guide) {
  return guide.from.x == guide.to.x;
}

}  // namespace

frmLines::frmLines(Prompt& prompt, const MessageTable& messages, std::filesystem::path folder,
                   const Simulation& simulation, std::string controller, ReportSource reports,
                   QWidget* parent)
    : QWidget(parent),
      prompt_(prompt),
      messages_(messages),
      folder_(std::move(folder)),
      reports_(std::move(reports)),
      canvas_(new TouchCanvas(this)),
      box_(new frmGuideBox("guidePanel", "lineTitle", "instruction", this)) {
  addButtons();
  setObjectName("frmLines");
  canvas_->setObjectName("linesCanvas");
  presentAsGraphic(*canvas_, tr("Lines to follow"),
                   tr("The line to draw along is white; its name stands in the "
                      "panel beside it."));
  canvas_->setFocusPolicy(Qt::StrongFocus);
  canvas_->touchThrough(simulation, std::move(controller));
  connect(canvas_, &TouchCanvas::penDown, this,
          [this](Qt::MouseButton, TwipsPoint at) { penDown(at); });
  connect(canvas_, &TouchCanvas::penMoved, this, &frmLines::penMoved);
  connect(canvas_, &TouchCanvas::penUp, this, &frmLines::penUp);
}

void frmLines::addButtons() {
  backButton_ = box_->addButton("cmdBack", tr("\u25C0 &Back"), tr("The line before (Left)"),
                                [this] { back(); });
  box_->addButton("cmdNext", tr("&Next \u25B6"),
                  tr("Keeps what is drawn and goes on (Right, Enter)"), [this] { next(); });
  repeatButton_ = box_->addButton("cmdRepeat", tr("&Repeat"),
                                  tr("Draws this line anew (Backspace)"), [this] { repeat(); });
  box_->addButton("cmdResults", tr("Re&sults"), tr("What has been measured so far"), [this] {
    if (!isBusy()) emit resultsRequested();
  });
  box_->addButton("cmdLeave", tr("&Leave"), tr("Back to the main window (Esc)"),
                  [this] { emit leaveRequested(); });
}

// Tall beside a vertical line, flat above or below a horizontal one.
void frmLines::arrangeBox(int columns) {
  QGridLayout& grid = box_->grid();
  grid.addWidget(&box_->head(), 0, 0, 1, columns);
  grid.addWidget(&box_->drawing(), 1, 0, 1, columns);
  grid.addWidget(&box_->instruction(), 2, 0, 1, columns);
  int place = 0;
  for (QPushButton* const button : box_->buttons()) {
    const bool alone = button == box_->buttons().back() && place % columns == 0;
    grid.addWidget(button, 3 + place / columns, place % columns, 1, alone ? columns : 1);
    ++place;
  }
}

bool frmLines::begin(Measurement& measurement) {
  measurement_ = &measurement;
  placeBox();
  procedure_.emplace(measurement, canvas_->sizeInTwips());
  if (!takeUpEarlierLines()) return false;
  showLine();
  return true;
}

bool frmLines::takeUpEarlierLines() {
  EarlierLines earlier = readLineFiles(folder_, *procedure_, measurement_->size);
  if (!earlier.damaged.empty()) {
    prompt_.message(damagedFilesText(earlier.damaged) + "\n\n" +
                    tr("Draw the lines of such files again. Each file is then kept beside "
                       "the new one, with \".old\" behind its name.")
                        .toStdString());
  }
  const auto measured = earlier.lines.size();
  const bool allAreKept = std::ranges::all_of(earlier.lines, [this](const LineFile& line) {
    return !procedure_->kept(*line.guide).empty();
  });
  if (allAreKept) return true;
  const auto goOn = [&] {
    return prompt_.choose(tr("%1 of %2 lines have been measured.")
                              .arg(measured)
                              .arg(procedure_->guides().size())
                              .toStdString(),
                          tr("Continue").toStdString(), tr("Start over").toStdString());
  };
  switch (measured == procedure_->guides().size() ? Answer::yes : goOn()) {
    case Answer::yes:
      for (const LineFile& line : earlier.lines)
        if (procedure_->kept(*line.guide).empty())
          procedure_->restore(*line.guide, line.samples, lineFileName(*line.guide));
      return true;
    case Answer::no:
      putAside(earlier.guides());
      return true;
    case Answer::none:
      break;
  }
  return false;
}

void frmLines::putAside(std::span<const Guide* const> guides) {
  if (const auto aside = setAside(folder_, guides); !aside)
    prompt_.message(aside.error().describe());
}

void frmLines::putFilesAside() {
  putAside(readLineFiles(folder_, *procedure_, measurement_->size).guides());
}

void frmLines::writeFiles() {
  for (const Guide* guide : procedure_->guides()) {
    auto samples = procedure_->kept(*guide);
    if (samples.empty() || lineFileName(*guide).empty()) continue;
    const auto written = writeLineFile(
        folder_, lineFileOf(*guide, procedure_->screen(), measurement_->size, std::move(samples)));
    if (!written) return prompt_.message(written.error().describe());
  }
}

void frmLines::next() {
  if (procedure_->current() != nullptr && !isBusy() && procedure_->wantsBlame()) askForBlame();
  if (const auto written = keepAndGoOn(folder_, *procedure_, measurement_->size); !written)
    prompt_.message(written.error().describe());
  emit kept();
  showLine();
}

void frmLines::back() {
  procedure_->back();
  showLine();
}

void frmLines::comeBack() {
  if (procedure_->current() == nullptr) procedure_->back();
  showLine();
}

void frmLines::drawAgain(const Guide& guide) {
  procedure_->goTo(guide);
  showLine();
}

void frmLines::repeat() {
  if (isBusy()) return;
  procedure_->repeat();
  showLine();
}

PenSample frmLines::sampleAt(TwipsPoint at) const {
  return {at, canvas_->eventTime()};
}

void frmLines::penDown(TwipsPoint at) {
  procedure_->use(reports_());
  procedure_->penDown(sampleAt(at));
  pen_ = at;
  canvas_->point(at, tracedColour, inkWidth);
}

void frmLines::penMoved(TwipsPoint at) {
  procedure_->penMove(sampleAt(at));
  canvas_->line(std::exchange(pen_, at), at, tracedColour, inkWidth);
}

void frmLines::penUp() {
  const StrokeVerdict verdict = procedure_->penUp();
  if (verdict == StrokeVerdict::farOff) {
    askForBlame();
  } else if (const auto message = messageOf(verdict)) {
    prompt_.message(messages_.at(*message), messages_.at(LineProcedure::titleMessage));
  }
  const bool counts = verdict == StrokeVerdict::usable || verdict == StrokeVerdict::farOff;
  showLine(counts ? QString()
                  : tr("Stroke too short. Draw the whole line again, from edge to edge."));
}

void frmLines::askForBlame() {
  const auto figures = procedure_->drawnFigures();
  const QString off =
      shownNumber(figures.off.maximum, 1) + shownText(unitText(measurement_->size, "mm"));
  const QString question = shownText(messages_.at(*messageOf(StrokeVerdict::farOff))) + "\n\n" +
                           tr("The stroke left its line by up to %1. Who did that?").arg(off);
  const Answer answer = prompt_.choose(
      question.toStdString(), tr("The panel did that").toStdString(), tr("My hand").toStdString());
  if (answer != Answer::none) procedure_->blame(answer == Answer::yes ? Blame::panel : Blame::hand);
}

std::optional<Outcome> frmLines::outcomeOf(const Guide& guide) const {
  if (!procedure_->drawn().empty())
    return judgeLine(*measurement_, procedure_->drawnFigures()).outcome();
  if (procedure_->kept(guide).empty()) return std::nullopt;
  return judgeLine(*measurement_, procedure_->keptFigures(guide)).outcome();
}

QString frmLines::instructionFor(const Guide& guide) const {
  const bool isDrawn = !procedure_->drawn().empty();
  if (!isDrawn && procedure_->kept(guide).empty())
    return tr("Draw along the white line, from edge to edge.");
  const LineFigures figures = isDrawn ? procedure_->drawnFigures() : procedure_->keptFigures(guide);
  const Subject subject = judgeLine(*measurement_, figures);
  const auto inMm = [this](double value) {
    return shownNumber(value, 2) + shownText(unitText(measurement_->size, "mm"));
  };
  QString text =
      tr("%1 %2: at most %3 off, straight to %4.")
          .arg(isDrawn ? tr("Drawn:") : tr("Measured before:"), wordOf(subject.outcome()),
               inMm(figures.off.maximum), inMm(figures.straightness.maximum));
  std::size_t reasons = 0;
  for (const Check& check : subject.checks)
    if (check.outcome != Outcome::pass && reasons++ < mostReasons)
      text += '\n' + shownText(textOf(check, measurement_->size));
  // Taps go on by themselves; a line may be drawn in several strokes.
  if (isDrawn && !isSmallScreen())
    text += '\n' + tr("\"Next\" goes on, \"Repeat\" draws it again.");
  return text;
}

void frmLines::showLine(const QString& note) {
  if (isBusy()) return;  // the stroke's ink stays
  const Guide* const guide = procedure_->current();
  if (guide == nullptr) {
    emit finished();
    return;
  }
  drawGuides(*canvas_, *procedure_);
  box_->title().setText(tr("%1   %2 of %3 measured")
                            .arg(shownText(guide->name))
                            .arg(procedure_->countKept())
                            .arg(procedure_->guides().size()));
  box_->instruction().setText(note.isEmpty() ? instructionFor(*guide) : note);
  const bool isFirst = procedure_->drawn().empty();
  box_->showOutcome(outcomeOf(*guide));
  box_->showDrawing(isFirst && height() >= heightForDrawing ? "straight-edge" : "",
                    tr("A ruler lies beside the line, held on the panel's frame."));
  repeatButton_->setEnabled(!isFirst);
  backButton_->setEnabled(guide != procedure_->guides().front());
  placeBox();
  canvas_->setFocus();
}

// Where the current line does not cross.
void frmLines::placeBox() {
  canvas_->setGeometry(rect());
  const Guide* const guide = procedure_ ? procedure_->current() : nullptr;
  const bool vertical = guide == nullptr || isVertical(*guide);
  constexpr int tallColumns = 2;
  arrangeBox(vertical ? tallColumns : static_cast<int>(box_->buttons().size()));

  const int half = (vertical ? width() : height()) / 2;
  const int room = (vertical ? half : width()) - 2 * pageGap;
  const int boxWidth = std::min(room, widestBox);
  box_->fit(boxWidth);
  const QSize free(width() - box_->width(), height() - box_->height());
  box_->raise();
  // The middle of the half that the line does not cross.
  const bool inFirstHalf = guide == nullptr || (vertical ? guide->from.x : guide->from.y) <= 0.5;
  const int thickness = vertical ? box_->width() : box_->height();
  const int place = (inFirstHalf ? half : 0) + (half - thickness) / 2;
  box_->move(vertical ? QPoint(place, free.height() / 2) : QPoint(free.width() / 2, place));
}

bool frmLines::event(QEvent* event) {
  // A held mnemonic comes as a held key, too, and not as a row of clicks.
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->isAutoRepeat()) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void frmLines::keyPressEvent(QKeyEvent* event) {
  switch (event->isAutoRepeat() ? 0 : event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Right:
      return next();
    case Qt::Key_Left:
      return back();
    case Qt::Key_Backspace:
      return repeat();
    default:
      return QWidget::keyPressEvent(event);
  }
}

void frmLines::resizeEvent(QResizeEvent*) {
  placeBox();
  if (procedure_ && !isBusy() && canvas_->sizeInTwips() != procedure_->screen())
    emit screenChanged();
}

}  // namespace touch::measure
