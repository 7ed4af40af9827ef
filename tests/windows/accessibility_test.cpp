#include <algorithm>
#include <cmath>
#include <set>

#include "tests/windows/every_window.h"

namespace touch::test {
namespace {

/// A stop of the Tab key, without the parts that a control is made of.
bool isTabStop(const QWidget& widget) {
  return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
         widget.focusProxy() == nullptr && !widget.objectName().startsWith("qt_");
}

/// A button that only the mouse reaches, and that is no part of a control with keys of its own.
bool needsMouse(const QWidget& widget) {
  return qobject_cast<const QAbstractButton*>(&widget) != nullptr && widget.isVisible() &&
         widget.focusPolicy() == Qt::NoFocus && widget.parentWidget()->focusProxy() == nullptr &&
         qobject_cast<const QTabBar*>(widget.parentWidget()) == nullptr &&
         qobject_cast<const QTableWidget*>(widget.parentWidget()) == nullptr;
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
      if (isTabStop(*widget) || isGraphic) {
        if (spoken->text(QAccessible::Name).isEmpty()) blame(where, *widget, "has no name");
        if (role == QAccessible::NoRole || role == QAccessible::Client)
          blame(where, *widget, "has no role of its own");
      }
      if (isGraphic && spoken->text(QAccessible::Description).isEmpty())
        blame(where, *widget, "is a picture without a description");
      if (widget->objectName().endsWith("Canvas") && !isGraphic)
        blame(where, *widget, "is no picture");
      if (auto* const table = qobject_cast<QTableWidget*>(widget)) {
        for (int column = 0; column < table->columnCount(); ++column) {
          if (spoken->tableInterface()->columnDescription(column).trimmed().size() < 2)
            blame(where, *widget, "has a column without a header");
        }
      }
    }
  });
}

TEST_F(Accessibility, TabReachesEveryControlAndShowsWhereItIs) {
  visitAll([&](const std::string& where, QWidget& window) {
    if (where.starts_with("frmDraw, ")) return;  // a panel of commands: each has its key
    std::set<const QWidget*> reached;
    for (int presses = 0; presses < 400; ++presses) {
      QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window,
                      Qt::Key_Tab);
      const QWidget* const focus = QApplication::focusWidget();
      if (focus == nullptr || !reached.insert(focus).second) {
        // The links of a text are stops as well.
        if (presses > 0 && qobject_cast<const QTextBrowser*>(focus) == nullptr) break;
      }
    }
    for (QWidget* const widget : window.findChildren<QWidget*>()) {
      if (needsMouse(*widget)) blame(where, *widget, "is reached only by mouse");
      if (!isTabStop(*widget) || reached.contains(widget)) continue;
      // The arrow keys go on from the option that is chosen.
      const auto* const option = qobject_cast<const QRadioButton*>(widget);
      const bool byArrows =
          option != nullptr && std::ranges::any_of(reached, [&](const QWidget* other) {
            return other->parentWidget() == option->parentWidget() &&
                   qobject_cast<const QRadioButton*>(other) != nullptr;
          });
      if (!byArrows) blame(where, *widget, "is not reached by Tab");
    }
    for (const QWidget* const widget : reached) {
      auto* const control = const_cast<QWidget*>(widget);
      control->clearFocus();
      const QImage without = control->grab().toImage();
      control->setFocus(Qt::TabFocusReason);
      QApplication::processEvents();
      if (control->grab().toImage() == without) blame(where, *control, "does not show the focus");
    }
  });
}

double luminance(QRgb colour) {
  const auto linear = [](int part) {
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
         0.0722 * linear(qBlue(colour));
}

/// Of the text against what it stands on: the colour that covers most, and the one that differs most from it.
double contrastIn(const QImage& image) {
  std::map<QRgb, int> counts;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      ++counts[image.pixel(x, y)];
  const auto paper = std::ranges::max_element(counts, {}, [](const auto& c) { return c.second; });
  double best = 1;
  for (const auto& [colour, count] : counts) {
    const auto [darker, lighter] = std::minmax({luminance(colour), luminance(paper->first)});
    best = std::max(best, (lighter + 0.05) / (darker + 0.05));
  }
  return best;
}

QPalette darkPalette() {
  QPalette dark(QColor(50, 50, 50), QColor(45, 45, 45));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
  dark.setColor(QPalette::HighlightedText, Qt::black);
  return dark;
}

TEST_F(Accessibility, TextsStandOutInLightAndDark) {
  constexpr double least = 4.5;
  const QPalette before = QApplication::palette();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    visitAll([&](const std::string& where, QWidget& window) {
      const auto check = [&](const QWidget& widget, const QImage& image, const QString& text) {
        if (image.isNull() || text.trimmed().isEmpty() || contrastIn(image) >= least) return;
        blame(where + (dark ? ", dark" : ", light"), widget, "is faint at " + text.toStdString());
      };
      for (QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || !widget->isEnabled()) continue;
        for (QWidget* above = widget; above != nullptr; above = above->parentWidget()) {
          if (auto* const area = qobject_cast<QScrollArea*>(above))
            area->ensureWidgetVisible(widget);
        }
        QString text;
        for (const char* const property : {"text", "currentText", "placeholderText", "plainText"})
          if (text.isEmpty()) text = widget->property(property).toString();
        // Within the frame, which may stand out where the text does not.
        constexpr int frame = 4;
        const QRect inside = widget->rect().adjusted(frame, frame, -frame, -frame);
        const QRect place(widget->mapTo(&window, inside.topLeft()), inside.size());
        if (!text.isEmpty()) check(*widget, window.grab(place).toImage(), text);

        auto* const view = qobject_cast<QAbstractItemView*>(widget);
        if (view == nullptr || view->inherits("QHeaderView") || view->model() == nullptr) continue;
        const QImage image = view->viewport()->grab().toImage();
        for (int row = 0; row < view->model()->rowCount(); ++row) {
          for (int column = 0; column < view->model()->columnCount(); ++column) {
            const QModelIndex index = view->model()->index(row, column);
            const QRect cell = view->visualRect(index);
            // Of a cell at the edge there may be too little for its letters.
            if (cell.bottom() > image.rect().bottom() && cell.top() > 0) continue;
            if (cell.right() > image.rect().right() && cell.left() > 0) continue;
            const QRect seen = cell.intersected(image.rect());
            if (!seen.isEmpty()) check(*view, image.copy(seen), index.data().toString());
          }
        }
      }
    });
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace touch::test
