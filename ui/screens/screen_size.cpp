#include "ui/screens/screen_size.h"

#include <QScreen>
#include <cmath>

#include "support/screen_data.h"

namespace touch {

namespace {

// A system that knows no size makes one of 96 pixels to the inch, in whole millimetres, and Qt one
// of 100, exactly. Many a real screen has about 100, too.
bool isMadeUp(const QSizeF& size, const QSizeF& pixels) {
  constexpr double mmPerInch = 25.4;
  const auto has = [&](double perInch, double rounding) {
    const auto near = [=](double mm, double count) {
      return std::abs(count * mmPerInch / perInch - mm) < rounding;
    };
    return near(size.width(), pixels.width()) && near(size.height(), pixels.height());
  };
  constexpr double wholeMillimetres = 0.6;
  constexpr double exactly = 0.01;
  return has(96, wholeMillimetres) || has(100, exactly);
}

}  // namespace

std::optional<QSizeF> physicalSizeOf(const QScreen& screen) {
  const QSizeF pixels = QSizeF(screen.size()) * screen.devicePixelRatio();
  QSizeF size = screen.physicalSize();
  if (const auto data = readScreenData(screen.name().toStdString())) {
    size = QSizeF(data->widthMm, data->heightMm);
  } else if (size.isEmpty() || isMadeUp(size, pixels) || isMadeUp(size, screen.size())) {
    return std::nullopt;
  }
  // The screen's data does not know that it has been turned.
  const bool isUpright = pixels.height() > pixels.width();
  if (isUpright != (size.height() > size.width())) size.transpose();
  return size;
}

QString describe(const QScreen& screen) {
  const QSize pixels = screen.size() * screen.devicePixelRatio();
  return QStringLiteral("%1x%2 %3")
      .arg(pixels.width())
      .arg(pixels.height())
      .arg(screen.model().isEmpty() ? screen.name() : screen.model())
      .trimmed();
}

}  // namespace touch
