#include "calibration/frmCal.h"

#include <QKeyEvent>
#include <QLabel>

#include "ui/finger_style.h"
#include "ui/graphic.h"

namespace touch {

namespace {

// Where the controls lie, in parts of the window's height: between the rows of targets.
constexpr double instructionTop = 0.14;
constexpr double timeBarTop = 0.37;
constexpr double buttonsTop = 0.62;
constexpr int timeBarHeight = 8;
constexpr int buttonWidth = 116;
constexpr int gap = 12;

QPushButton* makeButton(QWidget* parent, const char* name, const QString& caption) {
  auto* const button = new QPushButton(caption, parent);
  button->setObjectName(name);
  button->setAutoDefault(true);
  makeFingerSized(*button);
  return button;
}

}  // namespace

frmCal::frmCal(const Access& access, Prompt& prompt, const std::optional<Simulation>& simulation,
               const QScreen& screen, const std::optional<QSize>& size,
               std::function<void()> onLeave, std::function<void(CalibrationOutcome)> onEnded)
    : FullScreenWindow(screen, size, [this] { onEnded_(outcome_); }),
      access_(access),
      prompt_(prompt),
      simulation_(simulation),
      onLeave_(std::move(onLeave)),
      onEnded_(std::move(onEnded)),
      canvas_(new CanvasWidget(this)),
      instruction_(new QLabel(this)),
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

  instruction_->setObjectName("instruction");
  instruction_->setText(
      tr("Touch each target as it pulses, in its centre,\n"
         "before the bar reaches the right edge.  Esc: give up"));
  instruction_->setAlignment(Qt::AlignCenter);
  instruction_->setStyleSheet("color: white; background: black; padding: 6px");
  instruction_->setAttribute(Qt::WA_TransparentForMouseEvents);

  timeBar_->setObjectName("Label3");
  timeBar_->setAccessibleName(tr("Time used of this target's"));
  timeBar_->setStyleSheet("background: #00c0ff");
  timeBar_->setAttribute(Qt::WA_TransparentForMouseEvents);
  timeBar_->hide();

  const QFont larger = resized(font(), isSmallScreen() ? 1 : 1.3);
  instruction_->setFont(larger);
  QFont exitFont = larger;
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
  const auto at = [this](double part) { return static_cast<int>(part * height()); };
  canvas_->setGeometry(rect());
  instruction_->adjustSize();
  instruction_->move((width() - instruction_->width()) / 2, at(instructionTop));
  timeBar_->setGeometry(0, at(timeBarTop), timeBar_->width(), timeBarHeight);

  std::vector<QPushButton*> shown;
  for (QPushButton* const button : {startButton_, cancelButton_, exitLabel_}) {
    if (!button->isHidden()) shown.push_back(button);
  }
  const int count = static_cast<int>(shown.size());
  int left = (width() - count * buttonWidth - (count - 1) * gap) / 2;
  for (QPushButton* const button : shown) {
    button->setGeometry(left, at(buttonsTop), buttonWidth, fingerSize());
    left += buttonWidth + gap;
  }
}

void frmCal::showButtons(bool start, bool cancel) {
  startButton_->setVisible(start);
  cancelButton_->setVisible(cancel);
  placeControls();
  // A hidden button must not keep the keyboard.
  (start ? startButton_ : cancel ? cancelButton_ : exitLabel_)->setFocus();
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
  if (simulation_) simulation_->lift();
  hide();
  onLeave_();
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
  if (simulation_) simulation_->touch(place.x() / width(), place.y() / height());
}

void frmCal::mousePressEvent(QMouseEvent* event) {
  touchAt(event->position());
}

void frmCal::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() != Qt::NoButton) touchAt(event->position());
}

void frmCal::mouseReleaseEvent(QMouseEvent*) {
  if (simulation_) simulation_->lift();
}

}  // namespace touch
