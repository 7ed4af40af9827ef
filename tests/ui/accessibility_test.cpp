#include "tests/ui/every_window.h"
#include "ui/style/colours.h"

namespace touch::test {
namespace {

/// A stop of the Tab key, without the parts that a control is made of.
bool isTabStop(const QWidget& widget) {
  // The arrow keys go on from the option that is chosen.
  const auto* const option = qobject_cast<const QRadioButton*>(&widget);
  return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
         widget.focusProxy() == nullptr && !widget.objectName().startsWith("qt_") &&
         (option == nullptr || option->isChecked());
}

/// A button that only the mouse reaches, and that is no part of a control with keys of its own.
bool needsMouse(const QWidget& widget) {
  const QWidget* const parent = widget.parentWidget();
  return widget.inherits("QAbstractButton") && widget.isVisible() &&
         widget.focusPolicy() == Qt::NoFocus && parent->focusProxy() == nullptr &&
         !parent->inherits("QTabBar") && !parent->inherits("QTableWidget");
}

class Accessibility : public EveryWindow {};

TEST_F(Accessibility, ControlsHaveNamesAndRoles) {
  visitAll([&](const std::string& where, QWidget& window) {
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
      ASSERT_NE(spoken, nullptr) << widget->objectName().toStdString();
      const QAccessible::Role role = spoken->role();
      const bool isGraphic = role == QAccessible::Graphic;
      if (isGraphic && spoken->text(QAccessible::Description).isEmpty())
        blame(where, *widget, "is a picture without a description");
      if (!isGraphic && !isTabStop(*widget)) continue;
      if (spoken->text(QAccessible::Name).isEmpty()) blame(where, *widget, "has no name");
      if (role == QAccessible::NoRole || role == QAccessible::Client)
        blame(where, *widget, "has no role of its own");
    }
  });
}

TEST_F(Accessibility, TabReachesEveryControlAndShowsWhereItIs) {
  visitAll([&](const std::string& where, QWidget& window) {
    if (where.starts_with("frmDraw, ")) return;  // a panel of commands: each has its key
    constexpr int enough = 200;                  // the links of a text are stops as well
    std::set<QWidget*> reached;
    for (int presses = 0; presses < enough; ++presses) {
      QWidget* const focus = QApplication::focusWidget();
      QTest::keyClick(focus != nullptr ? focus : &window, Qt::Key_Tab);
      reached.insert(QApplication::focusWidget());
    }
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
      if (needsMouse(*widget)) blame(where, *widget, "is reached only by mouse");
      if (!isTabStop(*widget)) continue;
      if (!reached.contains(widget)) blame(where, *widget, "is not reached by Tab");
      widget->clearFocus();
      const QImage without = widget->grab().toImage();
      widget->setFocus(Qt::TabFocusReason);
      QApplication::processEvents();
      if (widget->grab().toImage() == without) blame(where, *widget, "does not show the focus");
    }
  });
}

double luminance(QRgb colour) {
  const auto light = [](int part) { return std::pow(part / 255.0, 2.2); };
  return 0.2126 * light(qRed(colour)) + 0.7152 * light(qGreen(colour)) +
         0.0722 * light(qBlue(colour));
}

/// Of the text against what it stands on: the colour that covers most, and the one that differs
/// most from it.
double contrastIn(const QImage& image) {
  std::map<QRgb, int> counts;
  for (int pixel = 0; pixel < image.width() * image.height(); ++pixel)
    ++counts[image.pixel(pixel % image.width(), pixel / image.width())];
  const auto paper = std::ranges::max_element(counts, {}, [](const auto& c) { return c.second; });
  double best = 1;
  for (const auto& [colour, count] : counts) {
    const auto [darker, lighter] = std::minmax({luminance(colour), luminance(paper->first)});
    best = std::max(best, (lighter + 0.05) / (darker + 0.05));
  }
  return best;
}

TEST_F(Accessibility, TextsStandOutInLightAndDark) {
  for (const bool dark : {false, true}) {
    applyTheme(dark);
    visitAll([&](const std::string& where, QWidget& window) {
      for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || !widget->isEnabled()) continue;
        for (auto* const area : window.findChildren<QScrollArea*>())
          if (area->isAncestorOf(widget)) area->ensureWidgetVisible(widget);
        QString text;
        for (const char* const property : {"text", "currentText", "placeholderText", "plainText"})
          if (text.isEmpty()) text = widget->property(property).toString().trimmed();
        // Within the frame, which may stand out where the text does not.
        constexpr int frame = 4;
        const QRect inside = widget->rect().adjusted(frame, frame, -frame, -frame);
        const QRect place(widget->mapTo(&window, inside.topLeft()), inside.size());
        if (text.isEmpty() || contrastIn(window.grab(place).toImage()) >= 4.5) continue;
        blame(where + (dark ? ", dark" : ", light"), *widget, "is faint");
      }
    });
  }
  applyTheme(false);
}

}  // namespace
}  // namespace touch::test
