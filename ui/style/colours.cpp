#include "ui/style/colours.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <QToolTip>

namespace touch {

namespace {

const Colours& lightOnes() {
  static const Colours colours{
      .ground = 0xf5f6f8,
      .card = 0xffffff,
      .shade = 0xeceff3,
      .line = 0xd9dde3,
      .edge = 0x7d8793,
      .text = 0x1c232b,
      .quiet = 0x5a6572,
      .accent = 0x1a6fb5,
      .onAccent = 0xffffff,
      .accentSoft = 0xe3f0fa,
      .good = 0x1e7d3c,
      .goodSoft = 0xe4f4e8,
      .remark = 0x8a5a00,
      .remarkSoft = 0xfff2d6,
      .problem = 0xb3261e,
      .problemSoft = 0xfdeae8,
  };
  return colours;
}

const Colours& darkOnes() {
  static const Colours colours{
      .ground = 0x1b1f24,
      .card = 0x252a31,
      .shade = 0x2f353d,
      .line = 0x3a424c,
      .edge = 0x7b8794,
      .text = 0xe8ecf1,
      .quiet = 0xa3aebb,
      .accent = 0x6db3ef,
      .onAccent = 0x10202e,
      .accentSoft = 0x20384d,
      .good = 0x7bd196,
      .goodSoft = 0x1f3a28,
      .remark = 0xf0c36a,
      .remarkSoft = 0x3d3218,
      .problem = 0xff8a80,
      .problemSoft = 0x452522,
  };
  return colours;
}

bool isDark(const QPalette& window) {
  constexpr int middle = 128;
  return window.color(QPalette::Window).lightness() < middle;
}

QPalette paletteOf(const Colours& colours) {
  QPalette palette;
  const auto set = [&palette](std::initializer_list<QPalette::ColorRole> roles,
                              const QColor& colour) {
    for (const auto role : roles)
      palette.setColor(role, colour);
  };
  set({QPalette::Window}, colours.ground);
  set({QPalette::Base, QPalette::Button, QPalette::ToolTipBase}, colours.card);
  set({QPalette::AlternateBase, QPalette::Midlight}, colours.shade);
  set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
       QPalette::ToolTipText},
      colours.text);
  set({QPalette::Highlight, QPalette::Link, QPalette::LinkVisited}, colours.accent);
  set({QPalette::HighlightedText}, colours.onAccent);
  set({QPalette::PlaceholderText}, colours.quiet);
  set({QPalette::Light}, colours.card);
  set({QPalette::Mid, QPalette::Dark}, colours.line);
  set({QPalette::Shadow}, colours.edge);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, colours.quiet);
  palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.shade);
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, colours.quiet);
  return palette;
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
bool systemIsDark() {
  return QGuiApplication::styleHints()->colorScheme() == Qt::ColorScheme::Dark;
}
#else
bool systemIsDark() {
  return isDark(QGuiApplication::palette());
}
#endif

void apply(bool isDark) {
  const QPalette palette = paletteOf(isDark ? darkOnes() : lightOnes());
  QGuiApplication::setPalette(palette);
  QToolTip::setPalette(palette);
}

}  // namespace

const Colours& coloursOf(const QPalette& window) {
  return isDark(window) ? darkOnes() : lightOnes();
}

void applyTheme(std::optional<bool> dark) {
  if (dark) return apply(*dark);
  apply(systemIsDark());
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
  QObject::connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, qApp,
                   [](Qt::ColorScheme scheme) { apply(scheme == Qt::ColorScheme::Dark); });
#endif
}

}  // namespace touch
