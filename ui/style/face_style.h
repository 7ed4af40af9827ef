#pragma once

#include <cstdint>

#include "ui/controls/finger_style.h"

class QAbstractButton;

namespace touch {

/// What a button does, as its colours tell.
enum class ButtonKind : std::uint8_t {
  plain,
  primary,    ///< the next step of a page, which has one at most
  dangerous,  ///< takes something away
};
void setKind(QAbstractButton& button, ButtonKind kind);

/// How everything looks: flat, in `Colours`; group boxes as cards, check boxes as switches, scroll
/// bars that set a value as sliders, and a ring around what has the focus for whoever uses the
/// keyboard.
class FaceStyle final : public FingerStyle {
  Q_OBJECT

 public:
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option,
                       const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                     const QWidget* widget) const override;
  using FingerStyle::polish;
  void polish(QWidget* widget) override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace touch
