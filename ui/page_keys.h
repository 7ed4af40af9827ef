#pragma once

#include <QShortcut>
#include <QTabWidget>

namespace touch {

/// Ctrl+Tab and Ctrl+Shift+Tab turn `pages` wherever in `window` the focus is; by themselves they
/// do only inside the pages.
inline void addPageKeys(QWidget& window, QTabWidget& pages) {
  const auto turn = [&pages](int step) {
    if (!pages.isEnabled()) return;
    int page = pages.currentIndex();
    do {
      page = (page + step + pages.count()) % pages.count();
    } while (!pages.isTabVisible(page));
    pages.setCurrentIndex(page);
  };
  const std::pair<QKeyCombination, int> keys[] = {
      {Qt::ControlModifier | Qt::Key_Tab, 1},
      {Qt::ControlModifier | Qt::ShiftModifier | Qt::Key_Backtab, -1}};
  for (const auto& [key, step] : keys) {
    auto* const shortcut = new QShortcut(QKeySequence(key), &window);
    QObject::connect(shortcut, &QShortcut::activated, &pages, [turn, by = step] { turn(by); });
  }
}

}  // namespace touch
