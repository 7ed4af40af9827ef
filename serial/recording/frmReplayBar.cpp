#include "serial/recording/frmReplayBar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <chrono>

#include "serial/recording/recording_ports.h"
#include "ui/controls/finger_style.h"

namespace touch {

namespace {

constexpr int places = 1000;
constexpr double speeds[] = {0.1, 0.5, 1, 2, 5, 10, 100};

double secondsOf(ReplayPort::Time time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

frmReplayBar::frmReplayBar(QWidget* parent)
    : QWidget(parent),
      pause_(new QPushButton(tr("Hold"))),
      step_(new QPushButton(tr("Next"))),
      place_(new QSlider(Qt::Horizontal)),
      time_(new QLabel),
      speed_(new QComboBox) {
  setObjectName("replayBar");
  pause_->setObjectName("cmdHoldReplay");
  pause_->setCheckable(true);
  // No letter of its caption is free in both windows.
  pause_->setShortcut(QKeySequence("Alt+J"));
  pause_->setToolTip(tr("Holds the replay and lets it go on (Alt+J)"));
  step_->setObjectName("cmdStepReplay");
  step_->setShortcut(QKeySequence("Alt+9"));
  step_->setToolTip(tr("Lets the next bytes pass while the replay is held (Alt+9)"));
  place_->setObjectName("sliderReplay");
  place_->setAccessibleName(tr("Place in the recording"));
  place_->setRange(0, places);
  place_->setPageStep(places / 10);
  place_->setMinimumHeight(fingerSize());
  place_->setMinimumWidth(2 * fingerSize());
  time_->setObjectName("lblReplayTime");
  speed_->setObjectName("comboReplaySpeed");
  speed_->setAccessibleName(tr("Speed of the replay"));
  for (const double speed : speeds)
    speed_->addItem(tr("%1x").arg(locale().toString(speed)), speed);

  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(pause_);
  row->addWidget(step_);
  row->addWidget(place_, 1);
  row->addWidget(time_);
  row->addWidget(speed_);
  connect(pause_, &QPushButton::clicked, this, [this](bool on) {
    if (replay_) replay_->pause(on);
    show(replay_);
  });
  connect(step_, &QPushButton::clicked, this, [this] {
    if (replay_) replay_->step();
    show(replay_);
  });
  connect(place_, &QSlider::valueChanged, this, &frmReplayBar::seek);
  connect(speed_, &QComboBox::activated, this, [this] {
    if (replay_) replay_->setSpeed(speed_->currentData().toDouble());
  });
  hide();
}

void frmReplayBar::show(ReplayPort* replay) {
  replay_ = replay;
  setVisible(replay_ != nullptr);
  if (!replay_) return;
  pause_->setChecked(replay_->isPaused());
  step_->setEnabled(replay_->isPaused());
  speed_->setCurrentIndex(speed_->findData(replay_->speed()));
  const double length = secondsOf(replay_->length());
  const double position = secondsOf(replay_->position());
  time_->setText(
      tr("%1 of %2 s").arg(locale().toString(position, 'f', 1), locale().toString(length, 'f', 1)));
  // What the user is moving just now stays.
  if (place_->isSliderDown()) return;
  const QSignalBlocker silent(place_);
  place_->setValue(length > 0 ? static_cast<int>(position / length * places) : places);
}

void frmReplayBar::seek() {
  if (!replay_) return;
  replay_->seek(replay_->length() / places * place_->value());
  show(replay_);
  emit sought();
}

}  // namespace touch
