#include "calibration/frmCal.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLabel>
#include <algorithm>

#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"

namespace touch {

namespace {

// Between the targets of two points and the second line of the grid, on every screen.
constexpr double timeBarTop = 0.205;  // of the window's height
constexpr int timeBarHeight = 8;
constexpr int buttonWidth = 116;
constexpr int fromLine = 4;         // logical pixels that controls keep away from the grid's lines
constexpr int targetRadius = 17;    // logical pixels
constexpr int smallestLetters = 8;  // logical pixels
constexpr qreal largerText = 1.3;
constexpr int textFlags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;

/// What lies between the grid's lines, each counted from 0. A control there interrupts none of
/// them.
QRect cellOf(const CalibrationGrid& grid, std::size_t column, std::size_t row) {
  const auto at = [](float twips) { return static_cast<int>(twips / twipsPerPixel); };
  return {QPoint(at(grid.x[column]) + fromLine, at(grid.y[row]) + fromLine),
          QPoint(at(grid.x[column + 1]) - fromLine, at(grid.y[row + 1]) - fromLine)};
}

/// The largest font up to `largest` in which `text` keeps within `room`.
QFont fitting(const QFont& largest, const QSize& room, const QString& text) {
  QFont font = largest;
  for (int size = QFontInfo(largest).pixelSize(); size > smallestLetters; --size) {
    const QRect needed = QFontMetrics(font).boundingRect(QRect(QPoint(), room), textFlags, text);
    if (needed.width() <= room.width() && needed.height() <= room.height()) break;
    font.setPixelSize(size - 1);
  }
  return font;
}

QLabel* makeInstruction(QWidget* parent, const char* name, const QString& text) {
  auto* const label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  label->setWordWrap(true);
  label->setStyleSheet("color: white");
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  return label;
}

QPushButton* makeButton(QWidget* parent, const char* name, const QString& caption) {
  auto* const button = new QPushButton(caption, parent);
  button->setObjectName(name);
  button->setAutoDefault(true);
  return button;
}

}  // namespace

frmCal::frmCal(const Access& access, Prompt& prompt, const Simulation& simulation,
               const QScreen& screen, const std::optional<QSize>& size,
               std::function<void()> onLeave, std::function<void(CalibrationOutcome)> onEnded)
    : FullScreenWindow(screen, size, [this] { onEnded_(outcome_); }),
      access_(access),
      prompt_(prompt),
      simulation_(simulation),
      onLeave_(std::move(onLeave)),
      onEnded_(std::move(onEnded)),
      canvas_(new CanvasWidget(this)),
      instructions_{
          makeInstruction(this, "instruction",
                          tr("Touch the centre of the pulsing target until it turns yellow.")),
          makeInstruction(this, "timeNote", tr("The bar shows the time used. Esc cancels."))},
      timeBar_(new QLabel(this)),
      startButton_(makeButton(this, "Command1", tr("&Start"))),
      cancelButton_(makeButton(this, "Command2", tr("&Cancel"))),
      exitLabel_(makeButton(this, "Label1", tr("EXIT"))) {
  setObjectName("frmCal");
  setWindowTitle(tr("Calibration"));
  canvas_->setObjectName("calibrationCanvas");
  presentAsGraphic(*canvas_, tr("Calibration targets"),
                   tr("The target to touch pulses; the others are still."));
  canvas_->setAttribute(Qt::WA_TransparentForMouseEvents);

  timeBar_->setObjectName("Label3");
  timeBar_->setAccessibleName(tr("Time used of this target's"));
  timeBar_->setStyleSheet("background: #00c0ff");
  timeBar_->setAttribute(Qt::WA_TransparentForMouseEvents);
  timeBar_->hide();

  setFocusPolicy(Qt::StrongFocus);
  QFont exitFont = resized(font(), isSmallScreen() ? 1 : largerText);
  exitFont.setFamily("Times New Roman");
  exitLabel_->setFont(exitFont);

  connect(startButton_, &QPushButton::clicked, this, [this] { calibration_->start(); });
  connect(cancelButton_, &QPushButton::clicked, this, [this] { calibration_->cancel(); });
  connect(exitLabel_, &QPushButton::clicked, this, [this] { calibration_->cancel(); });

  // A hidden window hears of its size only when it is shown, and the targets are placed before.
  placeControls();
  calibration_ = std::make_unique<Calibration>(access_, prompt_, *this, canvas_->sizeInTwips());
}

void frmCal::started() {
  startButton_->setFocus();
  calibration_->activate();
}

void frmCal::resizeEvent(QResizeEvent*) {
  placeControls();
}

void frmCal::placeControls() {
  canvas_->setGeometry(rect());
  timeBar_->setGeometry(0, static_cast<int>(timeBarTop * height()), timeBar_->width(),
                        timeBarHeight);
  const CalibrationGrid grid(canvas_->sizeInTwips());
  const QFont larger = resized(font(), largerText);
  std::size_t column = 1;
  for (QLabel* const instruction : instructions_) {
    const QRect cell = cellOf(grid, column++, 1);
    const int margin = cell.width() / 20;
    const QRect room = cell.adjusted(margin, margin, -margin, 0);
    instruction->setFont(fitting(larger, room.size(), instruction->text()));
    instruction->setGeometry(room);
  }
  // Each in a place of its own, whichever are shown: nothing moves under a finger.
  column = 1;
  for (QPushButton* const button : {startButton_, cancelButton_, exitLabel_}) {
    const QRect cell = cellOf(grid, column++, 2).adjusted(0, targetRadius, 0, 0);
    QRect place(0, 0, std::min(buttonWidth, cell.width()), std::min(fingerSize(), cell.height()));
    place.moveCenter(cell.center());
    button->setGeometry(place);
  }
}

void frmCal::showButtons(bool start, bool cancel) {
  startButton_->setVisible(start);
  cancelButton_->setVisible(cancel);
  // Whoever presses Enter means "Start", which may have given way a moment ago: no way out is to
  // have the keyboard then.
  (start ? startButton_ : static_cast<QWidget*>(this))->setFocus();
}

void frmCal::showTimeBar(float width) {
  timeBar_->resize(static_cast<int>(width / twipsPerPixel), timeBarHeight);
  timeBar_->show();
}

void frmCal::allowExit(bool allowed) {
  exitLabel_->setText(allowed ? tr("EXIT") : tr("Storing …"));
  exitLabel_->setEnabled(allowed);
  cancelButton_->setEnabled(allowed);
}

void frmCal::leave() {
  hide();
  onLeave_();
  simulation_.lift();
}

void frmCal::ended(CalibrationOutcome outcome) {
  outcome_ = outcome;
  FullScreenWindow::leave();
}

void frmCal::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    calibration_->escape();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void frmCal::touchAt(const QPointF& place) {
  simulation_.touch(place.x() / width(), place.y() / height());
}

void frmCal::mousePressEvent(QMouseEvent* event) {
  touchAt(event->position());
}

void frmCal::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() != Qt::NoButton) touchAt(event->position());
}

void frmCal::mouseReleaseEvent(QMouseEvent*) {
  simulation_.lift();
}

}  // namespace touch
