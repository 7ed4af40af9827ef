#include "serial/recording/frmReplayBar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <algorithm>
#include <chrono>

#include "serial/recording/replay_time.h"
#include "ui/controls/finger_style.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

// What a place of the slider is long: of the longest recording it has a hundred million.
constexpr ReplayPort::Time aPlace = 10ms;
constexpr ReplayPort::Time leap = 1s;
constexpr int pages = 10;
constexpr int stepsOfAShortOne = 100;
constexpr double speeds[] = {0.1, 0.5, 1, 2, 5, 10, 100};

double secondsOf(ReplayPort::Time time) {
  return std::chrono::duration<double>(time).count();
}

int placesIn(ReplayPort::Time time) {
  return static_cast<int>(time / aPlace);
}

}  // namespace

frmReplayBar::frmReplayBar(QWidget* parent)
    : QWidget(parent),
      pause_(new QPushButton(tr("Hold"))),
      step_(new QPushButton(tr("Next"))),
      place_(new QSlider(Qt::Horizontal)),
      time_(new QLabel),
      typed_(new QLineEdit),
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
  place_->setMinimumHeight(fingerSize());
  place_->setMinimumWidth(2 * fingerSize());
  time_->setObjectName("lblReplayTime");
  typed_->setObjectName("editReplayTime");
  typed_->setAccessibleName(tr("Time to go to"));
  typed_->setPlaceholderText(tr("h:mm:ss"));
  typed_->setToolTip(
      tr("A time since the beginning, as seconds or h:mm:ss; Enter goes there exactly"));
  typed_->setMinimumHeight(fingerSize());
  typed_->setFixedWidth(2 * fingerSize());
  speed_->setObjectName("comboReplaySpeed");
  speed_->setAccessibleName(tr("Speed of the replay"));
  for (const double speed : speeds)
    speed_->addItem(tr("%1x").arg(locale().toString(speed)), speed);

  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(pause_);
  row->addWidget(step_);
  row->addWidget(place_, 1);
  row->addWidget(makeLeap("cmdReplayBack", tr("\u2212"), tr("A second back"), -leap));
  row->addWidget(makeLeap("cmdReplayOn", tr("+"), tr("A second on"), leap));
  row->addWidget(time_);
  row->addWidget(typed_);
  row->addWidget(speed_);
  connect(pause_, &QPushButton::clicked, this, [this](bool on) {
    if (replay_) replay_->pause(on);
    show(replay_);
  });
  connect(step_, &QPushButton::clicked, this, [this] {
    if (replay_) replay_->step();
    show(replay_);
  });
  connect(place_, &QSlider::valueChanged, this, [this](int place) { seek(aPlace * place); });
  connect(typed_, &QLineEdit::returnPressed, this, &frmReplayBar::seekTyped);
  connect(typed_, &QLineEdit::textEdited, this, [this] { typed_->setStyleSheet({}); });
  connect(speed_, &QComboBox::activated, this, [this] {
    if (replay_) replay_->setSpeed(speed_->currentData().toDouble());
  });
  hide();
}

QPushButton* frmReplayBar::makeLeap(const char* name, const QString& caption,
                                    const QString& toolTip, ReplayPort::Time by) {
  auto* const button = new QPushButton(caption);
  button->setObjectName(name);
  button->setAccessibleName(toolTip);
  button->setToolTip(toolTip);
  button->setAutoRepeat(true);
  makeFingerSized(*button);
  connect(button, &QPushButton::clicked, this, [this, by] {
    if (replay_) seek(replay_->position() + by);
  });
  return button;
}

void frmReplayBar::show(ReplayPort* replay) {
  replay_ = replay;
  setVisible(replay_ != nullptr);
  if (!replay_) return;
  pause_->setChecked(replay_->isPaused());
  step_->setEnabled(replay_->isPaused());
  speed_->setCurrentIndex(speed_->findData(replay_->speed()));
  time_->setText(tr("%1 of %2 s")
                     .arg(locale().toString(secondsOf(replay_->position()), 'f', 1),
                          locale().toString(secondsOf(replay_->length()), 'f', 1)));
  // What the user is moving just now stays.
  if (!place_->isSliderDown()) showPlace();
}

void frmReplayBar::showPlace() {
  const QSignalBlocker silent(place_);
  const int places = std::max(1, placesIn(replay_->length()));
  place_->setRange(0, places);
  place_->setSingleStep(std::clamp(places / stepsOfAShortOne, 1, placesIn(leap)));
  place_->setPageStep(std::max(1, places / pages));
  place_->setValue(replay_->length() > aPlace ? placesIn(replay_->position()) : places);
}

void frmReplayBar::seek(ReplayPort::Time time) {
  if (!replay_) return;
  replay_->seek(std::clamp(time, ReplayPort::Time(0), replay_->length()));
  show(replay_);
  emit sought();
}

void frmReplayBar::seekTyped() {
  const auto time = parseReplayTime(typed_->text().toStdString());
  typed_->selectAll();
  if (time) return seek(*time);
  typed_->setStyleSheet("QLineEdit { border: 2px solid #c00000 }");
}

}  // namespace touch
