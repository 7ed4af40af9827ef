#include "ui/controls/finger_style.h"

#include <QAbstractScrollArea>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPen>
#include <QScreen>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace touch {

namespace {

constexpr double leastContrast = 4.5;

/// Of a colour's light as an eye sees it, from 0 to 1.
double luminance(const QColor& colour) {
  const auto linear = [](float part) {
    const auto value = static_cast<double>(part);
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

void drawFocus(const QStyleOption& option, QPainter& painter, const QColor& colour) {
  painter.save();
  painter.setPen(QPen(colour, 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(option.rect.adjusted(1, 1, -1, -1));
  painter.restore();
}

}  // namespace

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

QFont resized(QFont font, qreal factor) {
  if (font.pointSizeF() > 0) {
    font.setPointSizeF(font.pointSizeF() * factor);
  } else {
    font.setPixelSize(qRound(font.pixelSize() * factor));
  }
  return font;
}

QColor linkColour(const QPalette& colours) {
  constexpr float step = 0.03F;
  const QColor paper = colours.color(QPalette::Base);
  const bool isDark = luminance(paper) < luminance(colours.color(QPalette::Text));
  QColor link = colours.color(QPalette::Link);
  float lightness = link.lightnessF();
  while (contrast(link, paper) < leastContrast && lightness >= 0 && lightness <= 1) {
    link.setHslF(link.hslHueF(), link.hslSaturationF(), lightness);
    lightness += isDark ? step : -step;
  }
  return link;
}

FingerStyle::FingerStyle() : QProxyStyle("Fusion") {}

int FingerStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                             const QWidget* widget) const {
  switch (metric) {
    case PM_DefaultFrameWidth:
      // Room for the frame of the focus.
      return qobject_cast<const QAbstractScrollArea*>(widget) != nullptr
                 ? 2
                 : QProxyStyle::pixelMetric(metric, option, widget);
    case PM_ScrollBarExtent:
      return 28;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
      return 24;
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
      return isSmallScreen() ? 4 : QProxyStyle::pixelMetric(metric, option, widget);
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
  const QColor highlight = option->palette.color(QPalette::Highlight);
  const auto* const frame = qstyleoption_cast<const QStyleOptionFocusRect*>(option);
  const bool isOnHighlight = frame != nullptr && frame->backgroundColor == highlight;
  drawFocus(*option, *painter,
            isOnHighlight ? option->palette.color(QPalette::HighlightedText) : highlight);
}

void FingerStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  const bool isFramed =
      element == CE_ShapedFrame && qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
  if (isFramed && option->state.testFlag(State_HasFocus)) {
    drawFocus(*option, *painter, option->palette.color(QPalette::Highlight));
  }
}

void FingerStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  auto* const label = qobject_cast<QLabel*>(widget);
  if (label != nullptr && label->textFormat() == Qt::AutoText) label->setTextFormat(Qt::PlainText);
}

void FingerStyle::polish(QPalette& colours) {
  QProxyStyle::polish(colours);
  for (const auto group : {QPalette::Active, QPalette::Inactive}) {
    const QColor text = colours.color(group, QPalette::HighlightedText);
    QColor highlight = colours.color(group, QPalette::Highlight);
    const bool isLightText = luminance(text) > luminance(highlight);
    constexpr int steps = 20;
    for (int i = 0; i < steps && contrast(text, highlight) < leastContrast; ++i)
      highlight = isLightText ? highlight.darker(105) : highlight.lighter(105);
    colours.setColor(group, QPalette::Highlight, highlight);
    QColor hint = colours.color(group, QPalette::Text);
    constexpr int hintAlpha = 165;  // of 255: black on white is then 6 to 1
    hint.setAlpha(hintAlpha);
    colours.setColor(group, QPalette::PlaceholderText, hint);
  }
}

}  // namespace touch
