#include "console/panels/frmCalibrationPage.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <iterator>

#include "console/actions/main_model.h"
#include "console/main/frmWindows.h"
#include "console/panels/targets_button.h"
#include "ui/controls/finger_spin_box.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/signs.h"
#include "ui/text.h"

namespace touch {

namespace {

struct Choice {
  int points;
  const char* name;
  const char* caption;
  const char* purpose;
};

constexpr Choice choices[] = {
    {2, "cmd2pts", QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "&2 points"),
     QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "Quick: corrects position and size only.")},
    {3, "cmd3pts", QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "&3 points"),
     QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "Also corrects a tilted panel.")},
    {5, "cmd5pts", QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "&5 points"),
     QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "The usual choice for a new panel.")},
    {9, "cmd9pts", QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "&9 points"),
     QT_TRANSLATE_NOOP("touch::frmCalibrationPage", "For large panels and the highest accuracy.")},
};

constexpr double smallestLimit = 0.1;  // of the diagonal, in percent
constexpr double limitStep = 0.5;

QString inPercent(double fraction) {
  return shownNumber(fraction * 100, 2) + " %";
}

}  // namespace

frmCalibrationPage::frmCalibrationPage(MainModel& model, frmWindows& windows)
    : panelError_(new QLabel),
      checkAfterwards_(new QCheckBox(tr("Check &after calibrating"))),
      checkLimit_(new FingerSpinBox(
          "checkLimit", tr("How far a good touch may land from its cross, of the diagonal"))) {
  setHelpChapter(*this, "Calibrate a new panel");
  auto* const introduction = new QLabel(
      tr("Touch the targets one after the other. If you don't touch a target before the bar "
         "reaches the right edge, calibration stops and nothing is saved."));
  introduction->setWordWrap(true);

  panelError_->setObjectName("lblPanelError");
  panelError_->setWordWrap(true);
  panelError_->hide();

  auto* const layout = new QVBoxLayout(this);
  // On a small screen what is read would take the place of what is pressed.
  if (!isSmallScreen()) layout->addWidget(introduction);
  layout->addLayout(makeChoices(windows));
  layout->addLayout(makeCheck(windows));
  if (isSmallScreen()) layout->addWidget(introduction);
  layout->addWidget(panelError_);
  layout->addStretch();
  model.watch([this, &model](Part part) {
    if (part == Part::controllers) setEnabled(model.selected.has_value());
    if (part == Part::panelErrors) showPanelErrors(model.panelErrors);
  });
}

QLayout* frmCalibrationPage::makeChoices(frmWindows& windows) {
  auto* const grid = new QGridLayout;
  grid->setContentsMargins(0, 0, 0, 0);
  const bool isSmall = isSmallScreen();
  int place = 0;
  for (const Choice& choice : choices) {
    const QString caption = tr(choice.caption);
    auto* const button =
        isSmall ? new QPushButton(caption) : new TargetsButton(caption, choice.points);
    button->setObjectName(choice.name);
    const QString purpose = tr(choice.purpose);
    button->setAccessibleDescription(purpose);
    connect(button, &QPushButton::clicked, this,
            [this, &windows, points = choice.points] { calibrate(windows, points); });
    auto* const told =
        new QLabel(isSmall ? QString(caption).remove('&') + ": " + purpose : purpose);
    told->setWordWrap(true);
    grid->addWidget(button, 0, place);
    if (isSmall) {
      grid->addWidget(told, place + 1, 0, 1, static_cast<int>(std::size(choices)));
    } else {
      told->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
      grid->addWidget(told, 1, place);
      grid->setColumnStretch(place, 1);
    }
    ++place;
  }
  return grid;
}

QLayout* frmCalibrationPage::makeCheck(frmWindows& windows) {
  const QString purpose =
      tr("You touch five crosses. If touches land too far off, the calibration from before is put "
         "back: also when you can no longer press anything.");
  checkAfterwards_->setObjectName("checkAfterCalibrating");
  checkAfterwards_->setAccessibleDescription(purpose);
  checkLimit_->box().setRange(smallestLimit, nowhereNear.value);
  checkLimit_->box().setDecimals(1);
  checkLimit_->box().setSingleStep(limitStep);
  checkLimit_->box().setSuffix(" %");
  checkLimit_->box().setValue(usualCheckLimit.value);
  auto* const limitCaption = new QLabel(tr("Li&mit, of the diagonal:"));
  limitCaption->setBuddy(&checkLimit_->box());
  auto* const button = new QPushButton(tr("&Check"));
  button->setObjectName("cmdCheck");
  giveSign(*button, Sign::tick);
  const QString checksNow = tr("Checks the calibration that the controller has now.");
  button->setAccessibleDescription(checksNow);
  button->setToolTip(checksNow);
  connect(button, &QPushButton::clicked, this,
          [this, &windows] { windows.check({checkLimit_->value()}); });
  auto* const told = new QLabel(purpose);
  told->setWordWrap(true);

  auto* const limit = new QHBoxLayout;
  limit->addWidget(limitCaption);
  limit->addWidget(checkLimit_);
  limit->addStretch();
  auto* const grid = new QGridLayout;
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(button, 0, 0);
  grid->addWidget(checkAfterwards_, 0, 1);
  if (isSmallScreen()) {
    grid->addWidget(told, 1, 0, 1, 2);
    grid->addLayout(limit, 2, 0, 1, 2);
  } else {
    button->setMinimumWidth(3 * fingerSize());
    grid->addWidget(told, 1, 1);
    grid->addLayout(limit, 2, 1);
  }
  grid->setColumnStretch(1, 1);
  return grid;
}

void frmCalibrationPage::calibrate(frmWindows& windows, int points) const {
  std::optional<DiagonalPercent> limit;
  if (checkAfterwards_->isChecked()) limit = DiagonalPercent{checkLimit_->value()};
  windows.calibrate(points, limit);
}

void frmCalibrationPage::showPanelErrors(const PanelErrors& errors) {
  const auto& [before, now] = errors;
  panelError_->setVisible(now.has_value());
  if (!now) return;
  const auto words = [](const Simulation::PanelError& error) {
    return tr("mean %1, at most %2 of the panel's width")
        .arg(inPercent(error.mean), inPercent(error.greatest));
  };
  panelError_->setText(
      before ? tr("Simulated panel's error before: %1\nSimulated panel's error now: %2")
                   .arg(words(*before), words(*now))
             : tr("Simulated panel's error: %1").arg(words(*now)));
}

}  // namespace touch
