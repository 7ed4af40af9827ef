#include "measure/windows/frmTouchTest.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <algorithm>
#include <cmath>
#include <utility>

#include "measure/figures/line.h"
#include "measure/procedure/procedure_picture.h"
#include "measure/report/words.h"
#include "measure/windows/frmGuideBox.h"
#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/screens/touch_canvas.h"
#include "ui/text.h"

namespace touch::measure {

namespace {

// A finger that rests may be reported once and never again; it is where it was.
constexpr std::chrono::milliseconds readingInterval{10};
constexpr int gapAround = 8;
constexpr int widestBox = 420;
constexpr int heightForDrawing = 600;
constexpr int traceWidth = 4;

/// From the nearest point of a task to a rectangle, in logical pixels.
double distanceOf(const Task& task, const QRect& room, const QSize& screen) {
  constexpr int steps = 60;
  const Place from = task.guide == nullptr ? task.at : task.guide->from;
  const Place to = task.guide == nullptr ? task.at : task.guide->to;
  double nearest = 1e9;
  for (int step = 0; step <= steps; ++step) {
    const double part = static_cast<double>(step) / steps;
    const QPointF at(std::lerp(from.x, to.x, part) * screen.width(),
                     std::lerp(from.y, to.y, part) * screen.height());
    const double x = std::max({room.left() - at.x(), at.x() - room.right(), 0.0});
    const double y = std::max({room.top() - at.y(), at.y() - room.bottom(), 0.0});
    nearest = std::min(nearest, std::hypot(x, y));
  }
  return nearest;
}

}  // namespace

frmTouchTest::frmTouchTest(Clock& clock, const Simulation& simulation, std::string controller,
                           Measurement& measurement, ReportSource reports, QWidget* parent)
    : QWidget(parent),
      clock_(clock),
      measurement_(measurement),
      reports_(std::move(reports)),
      reading_(clock.makeTimer([this] { readAgain(); })),
      canvas_(new TouchCanvas(this)),
      box_(new frmGuideBox("touchTestPanel", "touchTestTitle", "touchTestInstruction", this)) {
  setObjectName("frmTouchTest");
  canvas_->setObjectName("touchTestCanvas");
  presentAsGraphic(*canvas_, tr("Places to touch"),
                   tr("The place to touch, or the line to draw, is white. The box beside it says "
                      "what to do."));
  canvas_->setFocusPolicy(Qt::StrongFocus);
  canvas_->touchThrough(simulation, std::move(controller));
  canvas_->installEventFilter(this);
  setFocusProxy(canvas_);
  addButtons();
  connect(canvas_, &TouchCanvas::penDown, this,
          [this](Qt::MouseButton, TwipsPoint at) { penDown(at); });
  connect(canvas_, &TouchCanvas::penMoved, this, &frmTouchTest::penMoved);
  connect(canvas_, &TouchCanvas::penUp, this, &frmTouchTest::penUp);
}

frmTouchTest::~frmTouchTest() = default;

void frmTouchTest::addButtons() {
  back_ = box_->addButton("cmdTestBack", tr("\u25C0 &Back"), tr("The place before (Left)"),
                          [this] { act(&Procedure::back); });
  next_ = box_->addButton("cmdTestNext", tr("&Next \u25B6"), tr("The next place (Right, Enter)"),
                          [this] { act(&Procedure::next); });
  repeat_ =
      box_->addButton("cmdTestRepeat", tr("&Repeat"), tr("Does the last place anew (Backspace)"),
                      [this] { act(&Procedure::repeat); });
  missed_ = box_->addButton("cmdNothingCame", tr("Nothing &came"),
                            tr("You have tapped, and the panel did not feel it (0)"),
                            [this] { nothingCame(); });
  byPanel_ = box_->addButton("cmdByPanel", tr("The &panel"), tr("The line fails (1)"),
                             [this] { decide(Blame::panel); });
  byHand_ = box_->addButton("cmdByHand", tr("My &hand"), tr("Draw it again (2)"),
                            [this] { decide(Blame::hand); });
  leave_ = box_->addButton("cmdTestLeave", tr("&Leave"), tr("Ends this test (Esc)"),
                           [this] { emit leaveRequested(); });
  QGridLayout& grid = box_->grid();
  grid.addWidget(&box_->head(), 0, 0, 1, 2);
  grid.addWidget(&box_->drawing(), 1, 0, 1, 2);
  grid.addWidget(&box_->instruction(), 2, 0, 1, 2);
  grid.addWidget(byPanel_, 3, 0);
  grid.addWidget(byHand_, 3, 1);
  grid.addWidget(missed_, 4, 0, 1, 2);
  grid.addWidget(back_, 5, 0);
  grid.addWidget(next_, 5, 1);
  grid.addWidget(repeat_, 6, 0);
  grid.addWidget(leave_, 6, 1);
}

void frmTouchTest::begin(TouchTest test) {
  reading_->stop();
  procedure_.emplace(measurement_, test);
  missed_->setVisible(test == TouchTest::taps);
  next_->setText(test == TouchTest::coverage ? tr("&Done") : tr("&Next \u25B6"));
  back_->setVisible(test != TouchTest::coverage);
  showTask();
}

Source frmTouchTest::source() const {
  if (auto reports = reports_()) return *reports;
  const qreal ratio = devicePixelRatioF();
  return {SourceKind::pointer, std::max(width(), 1) * ratio, std::max(height(), 1) * ratio, true,
          "pointer"};
}

Sample frmTouchTest::sampleAt(TwipsPoint at) const {
  const TwipsSize size = canvas_->sizeInTwips();
  const Source from = source();
  const bool isReport = from.kind == SourceKind::reports;
  return sampleOf(from, Seconds(isReport ? canvas_->eventTime() : pointer_.stamp),
                  static_cast<double>(at.x / size.width), static_cast<double>(at.y / size.height));
}

/// The canvas says where it is touched; when, only its events know.
bool frmTouchTest::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  const bool isOfPointer = type == QEvent::MouseButtonPress || type == QEvent::MouseMove ||
                           type == QEvent::MouseButtonRelease ||
                           type == QEvent::MouseButtonDblClick;
  if (watched == canvas_ && isOfPointer) {
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    const Clock::TimePoint now = clock_.now();
    const std::chrono::milliseconds stamp(static_cast<qint64>(mouse.timestamp()));
    pointer_ = {mouse.position(), mouse.buttons(),
                stamp.count() > 0
                    ? stamp
                    : std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()),
                now};
  }
  return QWidget::eventFilter(watched, event);
}

void frmTouchTest::readAgain() {
  if (!procedure_->isTouched()) return reading_->stop();
  const auto since =
      std::chrono::duration_cast<std::chrono::milliseconds>(clock_.now() - pointer_.arrived);
  if (since < readingInterval) return;
  QMouseEvent again(QEvent::MouseMove, pointer_.place, canvas_->mapToGlobal(pointer_.place),
                    Qt::NoButton, pointer_.buttons, Qt::NoModifier);
  again.setTimestamp(static_cast<quint64>((pointer_.stamp + since).count()));
  QCoreApplication::sendEvent(canvas_, &again);
}

void frmTouchTest::penDown(TwipsPoint at) {
  if (!procedure_ || procedure_->current() == nullptr) return;
  pen_ = at;
  procedure_->use(source());
  procedure_->down(sampleAt(at));
  switch (procedure_->test()) {
    case TouchTest::rest:
      if (!reports_()) reading_->start(readingInterval);
      break;
    case TouchTest::coverage:
      box_->hide();  // there are cells below it
      penMoved(at);
      break;
    case TouchTest::directions:
      canvas_->point(at, yellow, traceWidth);
      break;
    case TouchTest::taps:
      break;
  }
}

void frmTouchTest::penMoved(TwipsPoint at) {
  if (!procedure_ || !procedure_->isTouched()) return;
  const auto cell = procedure_->move(sampleAt(at));
  if (cell) drawCell(*canvas_, *cell, *procedure_, canvas_->sizeInTwips());
  if (procedure_->test() == TouchTest::directions) canvas_->line(pen_, at, yellow, traceWidth);
  pen_ = at;
  if (procedure_->test() != TouchTest::rest) return;
  drawRing(*canvas_, *procedure_, measurement_, canvas_->sizeInTwips());
  if (procedure_->rested() >= 1) box_->instruction().setText(tr("Lift the finger."));
}

void frmTouchTest::penUp() {
  if (!procedure_ || !procedure_->isTouched()) return;
  reading_->stop();
  const TouchResult result = procedure_->up();
  box_->show();
  if (result != TouchResult::tooShort) emit changed();
  showTask(result == TouchResult::tooShort
               ? tr("Too short. Rest the finger until the ring is full.")
           : result == TouchResult::doubled ? tr("One tap was reported twice.")
                                            : QString());
}

void frmTouchTest::act(void (Procedure::*command)()) {
  if (!procedure_ || procedure_->isTouched()) return;
  ((*procedure_).*command)();
  if (command == &Procedure::repeat || command == &Procedure::nothingCame) emit changed();
  showTask();
}

void frmTouchTest::nothingCame() {
  if (!procedure_ || procedure_->test() != TouchTest::taps) return;
  procedure_->use(source());
  act(&Procedure::nothingCame);
}

void frmTouchTest::decide(Blame blame) {
  if (!procedure_ || !procedure_->asksWhoDidThat()) return;
  procedure_->decide(blame);
  emit changed();
  showTask(blame == Blame::hand ? tr("Draw the line again.") : QString());
}

QString frmTouchTest::title() const {
  const auto number = static_cast<int>(procedure_->number()) + 1;
  const auto count = static_cast<int>(procedure_->tasks().size());
  switch (procedure_->test()) {
    case TouchTest::rest:
      return tr("Resting finger: place %1 of %2").arg(number).arg(count);
    case TouchTest::taps:
      return tr("Taps: target %1 of %2").arg(number).arg(count);
    case TouchTest::coverage:
      return tr("Coverage: %1 %").arg(std::floor(procedure_->cells().part * 100));
    case TouchTest::directions:
      break;
  }
  return tr("Line %1 (%2 of %3)")
      .arg(shownText(lineName(*procedure_->current()->guide)))
      .arg(number)
      .arg(count);
}

QString frmTouchTest::instruction() const {
  const Task& task = *procedure_->current();
  switch (procedure_->test()) {
    case TouchTest::rest:
      return tr("Rest a finger in the ring until it is full.");
    case TouchTest::taps:
      return tr("Tap the middle of the cross three times. Tap %1 of 3 comes next.")
          .arg(procedure_->tapsMade() + 1);
    case TouchTest::coverage: {
      if (procedure_->isDone(task)) return tr("Every cell was touched.");
      return tr("Rub the whole panel, up to its edges. Small dots were not touched yet.");
    }
    case TouchTest::directions:
      break;
  }
  if (procedure_->asksWhoDidThat()) return tr("This stroke went far off its line. Who did that?");
  const LineFigures line = measureLine(measurement_, *task.guide);
  if (line.samples == 0) return tr("Draw along the line from the circle on, to the other end.");
  return tr("Drawn: %1 % covered, straightness %2.")
      .arg(std::floor(line.coverage * 100))
      .arg(shownText(lengthText(line.straightness.maximum, measurement_.size)));
}

void frmTouchTest::showTask(const QString& note) {
  if (procedure_->current() == nullptr) {
    emit done();
    return;
  }
  box_->title().setText(title());
  box_->instruction().setText(note.isEmpty() ? instruction() : note);
  const bool asks = procedure_->asksWhoDidThat();
  byPanel_->setVisible(asks);
  byHand_->setVisible(asks);
  back_->setEnabled(procedure_->number() > 0);
  repeat_->setEnabled(procedure_->number() > 0 || procedure_->wasTouched(*procedure_->current()));
  const bool isBeforeRubbing = height() >= heightForDrawing &&
                               procedure_->test() == TouchTest::coverage &&
                               !procedure_->wasTouched(*procedure_->current());
  box_->showDrawing(isBeforeRubbing ? "rubbing" : "",
                    tr("Rub around the edges first, then back and forth over all."));
  drawProcedure(*canvas_, *procedure_, measurement_, canvas_->sizeInTwips());
  placeBox();
  canvas_->setFocus();
}

/// Where it is farthest from what is to be touched; when everything is, where it hides the fewest
/// untouched cells.
void frmTouchTest::placeBox() {
  canvas_->setGeometry(rect());
  if (!procedure_ || procedure_->current() == nullptr) return;
  // Not quite half of the width: beside it there is always room for a target.
  const int room =
      std::max(std::min(width() * 9 / 20, widestBox), box_->layout()->minimumSize().width());
  box_->resize(room, box_->layout()->totalHeightForWidth(room));
  const QSize free(width() - box_->width(), height() - box_->height());
  QPoint best;
  double most = -1e9;
  for (const QPoint place : {QPoint(1, 2), QPoint(1, 0), QPoint(2, 1), QPoint(0, 1), QPoint(2, 0),
                             QPoint(0, 2), QPoint(0, 0), QPoint(2, 2), QPoint(1, 1)}) {
    const auto along = [](int part, int span) {
      return std::clamp(part * span / 2, std::min(gapAround, span / 2),
                        std::max(span - gapAround, span / 2));
    };
    const QRect candidate(QPoint(along(place.x(), free.width()), along(place.y(), free.height())),
                          box_->size());
    const double merit = procedure_->test() == TouchTest::coverage
                             ? -static_cast<double>(untouchedBelow(candidate))
                             : distanceOf(*procedure_->current(), candidate, size());
    if (merit <= most) continue;
    most = merit;
    best = candidate.topLeft();
  }
  box_->move(best);
  box_->raise();
}

std::size_t frmTouchTest::untouchedBelow(const QRect& place) const {
  const CoverageFigures& cells = procedure_->cells();
  std::size_t count = 0;
  for (std::size_t cell = 0; cell < cells.touched.size(); ++cell) {
    const std::size_t row = cell / cells.columns;
    const QPointF middle(
        (static_cast<double>(cell % cells.columns) + 0.5) * width() /
            static_cast<double>(cells.columns),
        (static_cast<double>(row) + 0.5) * height() / static_cast<double>(cells.rows));
    if (!cells.touched[cell] && QRectF(place).contains(middle)) ++count;
  }
  return count;
}

void frmTouchTest::resizeEvent(QResizeEvent*) {
  canvas_->setGeometry(rect());
  if (!procedure_ || procedure_->isTouched()) return;
  showTask();
}

void frmTouchTest::keyPressEvent(QKeyEvent* event) {
  if (event->isAutoRepeat()) return;
  switch (event->key()) {
    case Qt::Key_Right:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return act(&Procedure::next);
    case Qt::Key_Left:
      return act(&Procedure::back);
    case Qt::Key_Backspace:
      return act(&Procedure::repeat);
    case Qt::Key_0:
      return nothingCame();
    case Qt::Key_1:
      return decide(Blame::panel);
    case Qt::Key_2:
      return decide(Blame::hand);
    case Qt::Key_Escape:
      emit leaveRequested();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace touch::measure
