#include "ui/style/signs.h"

#include <QPushButton>
#include <set>

#include "tests/doubles/test.h"
#include "ui/style/colours.h"
#include "ui/style/face_style.h"

namespace touch::test {
namespace {

constexpr int side = 18;
constexpr int signs = static_cast<int>(Sign::usb) + 1;

QImage drawn(Sign sign, qreal ratio, QIcon::Mode mode = QIcon::Normal) {
  return signIcon(sign).pixmap(QSize(side, side), ratio, mode).toImage();
}

/// The colour of the pixel that is covered most.
QColor inkOf(const QImage& image) {
  QColor ink = Qt::transparent;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y).alpha() > ink.alpha()) ink = image.pixelColor(x, y);
  return ink;
}

TEST(Signs, AreDrawnAtEverySizeAndDifferFromEachOther) {
  for (const qreal ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
    std::set<QByteArray> seen;
    for (int i = 0; i < signs; ++i) {
      const QImage image = drawn(static_cast<Sign>(i), ratio);
      EXPECT_EQ(image.width(), qRound(side * ratio)) << i;
      EXPECT_GT(inkOf(image).alpha(), 0) << i;
      const QByteArray pixels(reinterpret_cast<const char*>(image.constBits()),
                              image.sizeInBytes());
      EXPECT_TRUE(seen.insert(pixels).second) << "sign " << i << " is drawn as another is";
    }
  }
}

TEST(Signs, StayWithinTheirSquare) {
  constexpr int margin = 20;
  for (int i = 0; i < signs; ++i) {
    QImage image(side + 2 * margin, side + 2 * margin, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawSign(painter, QRectF(margin, margin, side, side), static_cast<Sign>(i), Qt::black);
    painter.end();
    const QRect square(margin, margin, side, side);
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        EXPECT_TRUE(square.contains(x, y) || qAlpha(image.pixel(x, y)) == 0) << i << " beyond it";
  }
}

TEST(Signs, HaveTheColoursOfTheThemeThatIsShown) {
  for (const bool dark : {false, true}) {
    applyTheme(dark);
    const Colours& colours = coloursOf(QGuiApplication::palette());
    const std::pair<QIcon::Mode, QColor> modes[] = {{QIcon::Normal, colours.text},
                                                    {QIcon::Disabled, colours.quiet},
                                                    {QIcon::Selected, colours.onAccent}};
    for (const auto& [mode, colour] : modes)
      EXPECT_EQ(inkOf(drawn(Sign::controller, 3, mode)).name(), colour.name()) << dark << mode;
  }
  applyTheme(false);
}

TEST(Signs, ButtonsLookDifferentInEachState) {
  for (const ButtonKind kind : {ButtonKind::plain, ButtonKind::primary, ButtonKind::dangerous}) {
    QPushButton button("x");
    setKind(button, kind);
    giveSign(button, Sign::refresh);
    button.resize(120, 44);
    std::set<QByteArray> looks;
    const std::pair<const char*, QStyle::State> states[] = {
        {"at rest", QStyle::State_Enabled | QStyle::State_Raised},
        {"hovered", QStyle::State_Enabled | QStyle::State_Raised | QStyle::State_MouseOver},
        {"pressed", QStyle::State_Enabled | QStyle::State_Sunken},
        {"focused", QStyle::State_Enabled | QStyle::State_Raised | QStyle::State_HasFocus |
                        QStyle::State_KeyboardFocusChange},
        {"disabled", QStyle::State_None}};
    for (const auto& [name, state] : states) {
      QStyleOptionButton option;
      option.initFrom(&button);
      option.rect = button.rect();
      option.text = button.text();
      option.icon = button.icon();
      option.iconSize = button.iconSize();
      option.state = state;
      QImage image(button.size(), QImage::Format_ARGB32);
      image.fill(Qt::transparent);
      QPainter painter(&image);
      button.style()->drawControl(QStyle::CE_PushButton, &option, &painter, &button);
      painter.end();
      const QByteArray pixels(reinterpret_cast<const char*>(image.constBits()),
                              image.sizeInBytes());
      EXPECT_TRUE(looks.insert(pixels).second)
          << "a button of kind " << static_cast<int>(kind) << " does not show that it is " << name;
    }
  }
}

}  // namespace
}  // namespace touch::test
