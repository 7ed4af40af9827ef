#include "ui/screens/panel_monitor.h"

#include <QGuiApplication>
#include <QWidget>

namespace touch {

namespace {

/// Null when there are fewer.
QScreen* monitorNumbered(int number) {
  return QGuiApplication::screens().value(number - 1);
}

}  // namespace

void PanelMonitor::assign(int number) {
  assigned_ = monitorNumbered(number);
}

const QScreen& PanelMonitor::of(const QWidget& window) const {
  if (assigned_) return *assigned_;
  const QScreen* const wanted = number_ ? monitorNumbered(*number_) : nullptr;
  return wanted != nullptr ? *wanted : *window.screen();
}

}  // namespace touch
