#include "calibration/frmCheck.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/screens/touch_canvas.h"
#include "ui/text.h"

namespace touch {

namespace {

constexpr int timeBarHeight = 8;
constexpr qreal largerText = 1.3;
// Parts of the window's width and height: between the crosses, and out of the way of their touches.
constexpr double roomLeft = 0.31;
constexpr double instructionTop = 0.05;
constexpr double instructionBottom = 0.42;
constexpr double buttonsTop = 0.6;
constexpr int gap = 8;
// Of a cross, in logical pixels.
constexpr int arm = 17;
constexpr int besideCross = arm + 5;

QLabel* makeLabel(QWidget* parent, const char* name) {
  auto* const label = new QLabel(parent);
  label->setObjectName(name);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  label->setStyleSheet("color: white");
  return label;
}

QPushButton* makeButton(QWidget* parent, const char* name, const QString& caption) {
  auto* const button = new QPushButton(caption, parent);
  button->setObjectName(name);
  makeFingerSized(*button);
  // Else Enter on "Put back" would be the window's, and keep.
  button->setAutoDefault(true);
  button->setEnabled(false);
  return button;
}

}  // namespace

frmCheck::frmCheck(Parts parts, const QScreen& screen, const std::optional<QSize>& size,
                   std::function<void(const CheckResult&)> onEnded)
    : FullScreenWindow(screen, size, [this] { onEnded_(result_); }),
      onEnded_(std::move(onEnded)),
      wayBack_(std::move(parts.wayBack)),
      canvas_(new TouchCanvas(this)),
      instruction_(makeLabel(this, "instruction")),
      timeBar_(makeLabel(this, "timeBar")),
      keepButton_(makeButton(this, "cmdKeep", tr("&Keep (Enter)"))),
      putBackButton_(
          makeButton(this, "cmdPutBack",
                     wayBack_->whyNone().empty() ? tr("&Put back (Esc)") : tr("&Close (Esc)"))) {
  setObjectName("frmCheck");
  setWindowTitle(tr("Check of the calibration"));
  setFocusPolicy(Qt::StrongFocus);
  canvas_->setObjectName("checkCanvas");
  presentAsGraphic(*canvas_, tr("Crosses to touch"), tr("The cross to touch has a yellow ring."));
  canvas_->touchThrough(parts.simulation, parts.controller);

  instruction_->setWordWrap(true);
  instruction_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  instruction_->setFont(resized(font(), isSmallScreen() ? 1 : largerText));
  timeBar_->setAccessibleName(tr("Time used for this touch"));
  timeBar_->setStyleSheet("background: #00c0ff");

  connect(canvas_, &TouchCanvas::penDown, this,
          [this](Qt::MouseButton, TwipsPoint at) { check_->touch(at); });
  connect(keepButton_, &QPushButton::clicked, this, [this] { check_->keep(); });
  connect(putBackButton_, &QPushButton::clicked, this, [this] { check_->putBack(); });

  // A hidden window hears of its size only when it is shown, and the crosses are placed before.
  placeControls();
  check_ =
      std::make_unique<Check>(parts.clock, *this, canvas_->sizeInTwips(), parts.limit, *wayBack_);
}

frmCheck::~frmCheck() = default;

void frmCheck::started() {
  setFocus();
  check_->begin();
}

void frmCheck::askToLeave() {
  check_->putBack();
}

void frmCheck::resizeEvent(QResizeEvent*) {
  placeControls();
}

void frmCheck::placeControls() {
  const auto across = [this](double part) { return static_cast<int>(part * width()); };
  const auto down = [this](double part) { return static_cast<int>(part * height()); };
  canvas_->setGeometry(rect());
  timeBar_->setGeometry(0, 0, timeBar_->width(), timeBarHeight);
  const int room = width() - 2 * across(roomLeft);
  instruction_->setGeometry(across(roomLeft), down(instructionTop), room,
                            down(instructionBottom) - down(instructionTop));
  // One below the other: no finger that means one hits the other.
  int top = down(buttonsTop);
  for (QPushButton* const button : {keepButton_, putBackButton_}) {
    const QSize wanted = button->sizeHint().expandedTo({fingerSize(), fingerSize()});
    const int widest = std::max(wanted.width(), std::min(room, 4 * fingerSize()));
    button->setGeometry((width() - widest) / 2, top, widest, wanted.height());
    top += wanted.height() + gap;
  }
}

Surface& frmCheck::surface() {
  return *canvas_;
}

void frmCheck::tell(const std::string& text) {
  instruction_->setText(shownText(text));
  // Before the controller is asked, which may not answer for a while.
  instruction_->repaint();
}

void frmCheck::showResidual(const Residual& residual) {
  auto* const label = makeLabel(this, "residual");
  const QString figure = shownNumber(residual.off.value, 1) + " %";
  label->setText(residual.good ? figure : tr("%1: too far").arg(figure));
  label->adjustSize();
  const QPoint cross(static_cast<int>(residual.cross.x / twipsPerPixel),
                     static_cast<int>(residual.cross.y / twipsPerPixel));
  // Away from the middle, where there is more to read.
  const int left = cross.x() < width() / 2 ? cross.x() + arm - label->width() : cross.x() - arm;
  label->move(left, cross.y() + besideCross);
  if (label->geometry().intersects(keepButton_->geometry()))
    label->move(cross.x() - besideCross - label->width(), cross.y() - label->height() / 2);
  label->show();
}

void frmCheck::showTimeBar(float width) {
  timeBar_->resize(static_cast<int>(width / twipsPerPixel), timeBarHeight);
}

void frmCheck::allow(bool keep, bool putBack) {
  keepButton_->setEnabled(keep);
  putBackButton_->setEnabled(putBack);
}

void frmCheck::ended(const CheckResult& result) {
  result_ = result;
  leave();
}

void frmCheck::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      return check_->putBack();
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return check_->keep();
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace touch
