#pragma once

#include <QFont>
#include <QProxyStyle>

class QWidget;

namespace touch {

/// A screen on which every line counts: 800 x 480 at a scale of 200 %, for one.
bool isSmallScreen();

/// The least height and width, in logical pixels, of what a finger is to hit: never below 7.5 mm at
/// 96 an inch. A small screen that is not scaled up has its pixels closer together, so there is no
/// less where there is room.
int fingerSize();

void makeFingerSized(QWidget& control);

/// `font` at `factor` times its size, whether a desktop's theme gives that in points or in pixels.
QFont resized(QFont font, qreal factor);

/// For links in a text on `colours`'s base, bright or deep enough to be read.
QColor linkColour(const QPalette& colours);

/// The Fusion style with check marks, scroll bars and tabs that a finger hits, and a focus frame
/// around lists and texts that is seen from afar.
class FingerStyle : public QProxyStyle {
  Q_OBJECT

 public:
  FingerStyle();
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  /// A highlight that is too faint for the text on it is deepened, and so are the hints in empty
  /// fields.
  void polish(QPalette& colours) override;
  /// Labels show their text as it stands: much of it comes from controllers and files, and none of
  /// it is HTML.
  void polish(QWidget* widget) override;
  using QProxyStyle::polish;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace touch
