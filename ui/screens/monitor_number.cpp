#include "ui/screens/monitor_number.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <chrono>

namespace touch {

void showMonitorNumbers() {
  constexpr std::chrono::seconds shown{3};
  // Under Wayland no program places its windows; it can only fill a screen.
  const bool fills = QGuiApplication::platformName().startsWith("wayland");
  int number = 0;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    auto* const label =
        new QLabel(QString::number(++number), nullptr,
                   (fills ? Qt::Window : Qt::ToolTip) | Qt::WindowTransparentForInput);
    label->setAttribute(Qt::WA_DeleteOnClose);
    label->setObjectName("monitorNumber");
    label->setAlignment(Qt::AlignCenter);
    label->setStyleSheet("background: #1f5fa8; color: white");
    const int side = std::min(screen->geometry().width(), screen->geometry().height()) / 3;
    QFont font = label->font();
    font.setPixelSize(side * 3 / 4);
    label->setFont(font);
    label->resize(side, side);
    label->move(screen->geometry().center() - label->rect().center());
    fills ? label->showFullScreen() : label->show();
    QTimer::singleShot(shown, label, &QWidget::close);
  }
}

}  // namespace touch
