#include "ui/finger_style.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPen>
#include <QScreen>
#include <QStyleOption>
#include <QWidget>

namespace touch {

bool isSmallScreen() {
  constexpr int smallHeight = 400;
  return QGuiApplication::primaryScreen()->size().height() < smallHeight;
}

int fingerSize() {
  return isSmallScreen() ? 30 : 44;
}

void makeFingerSized(QWidget& control) {
  control.setMinimumHeight(fingerSize());
  control.setMinimumWidth(fingerSize());
}

FingerStyle::FingerStyle() : QProxyStyle("Fusion") {}

int FingerStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
  switch (metric) {
    case PM_ScrollBarExtent:
      return 28;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return 24;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

QSize FingerStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                    const QSize& size, const QWidget* widget) const {
  QSize needed = QProxyStyle::sizeFromContents(type, option, size, widget);
  const int besideCaption = isSmallScreen() ? 4 : 20;
  switch (type) {
    case CT_PushButton:
      needed = QSize(needed.width() + besideCaption, std::max(needed.height(), fingerSize()));
      break;
    case CT_CheckBox:
    case CT_RadioButton:
    case CT_ComboBox:
    case CT_LineEdit:
    case CT_SpinBox:
    case CT_TabBarTab:
      needed.setHeight(std::max(needed.height(), fingerSize()));
      break;
    default:
      break;
  }
  return needed;
}

void FingerStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                QPainter* painter, const QWidget* widget) const {
  if (element != PE_FrameFocusRect) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  painter->save();
  painter->setPen(QPen(option->palette.color(QPalette::Highlight), 2));
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(option->rect.adjusted(1, 1, -1, -1));
  painter->restore();
}

}  // namespace touch
