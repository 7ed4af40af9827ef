#include "console/panels/frmMonitorRow.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "ui/controls/finger_style.h"
#include "ui/screens/monitor_number.h"

namespace touch {

frmMonitorRow::frmMonitorRow(QWidget* parent) : QWidget(parent), monitors_(new QComboBox) {
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  monitors_->setObjectName("monitorList");
  monitors_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  monitors_->setMinimumContentsLength(6);
  monitors_->setAccessibleName(tr("Monitor that the panel covers"));
  auto* const identify = new QPushButton(tr("Identif&y"));
  identify->setObjectName("cmdIdentifyMonitors");
  identify->setToolTip(tr("Shows its number on each monitor"));
  auto* const assign = new QPushButton(tr("&Assign"));
  assign->setObjectName("cmdAssignMonitor");
  if (isSmallScreen()) {
    grid->addWidget(monitors_, 0, 0, 1, 2);
    grid->addWidget(identify, 1, 0);
    grid->addWidget(assign, 1, 1);
  } else {
    grid->addWidget(monitors_, 0, 0);
    grid->addWidget(identify, 0, 1);
    grid->addWidget(assign, 0, 2);
    grid->setColumnStretch(0, 1);
  }
  fill();
  connect(qApp, &QGuiApplication::screenAdded, this, &frmMonitorRow::fill);
  connect(qApp, &QGuiApplication::screenRemoved, this, &frmMonitorRow::fill);
  connect(identify, &QPushButton::clicked, this, [] { showMonitorNumbers(); });
  connect(assign, &QPushButton::clicked, this,
          [this] { emit assigned(monitors_->currentIndex() + 1); });
}

void frmMonitorRow::fill() {
  const int chosen = std::max(monitors_->currentIndex(), 0);
  monitors_->clear();
  int number = 0;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    monitors_->addItem(tr("%1: %2, %3 x %4")
                           .arg(QString::number(++number), screen->name(),
                                QString::number(screen->size().width()),
                                QString::number(screen->size().height())));
  }
  monitors_->setCurrentIndex(std::min(chosen, monitors_->count() - 1));
}

}  // namespace touch
