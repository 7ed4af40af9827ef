#pragma once

#include <QKeySequence>
#include <QString>

class QWidget;

namespace touch {

/// While `widget` is shown, the chapter `heading` of the user guide is what helps. The guide is in
/// English, and so is the heading.
void setHelpChapter(QWidget& widget, const char* heading);

/// The chapter of what `window` shows now: of the first visible widget in it that has one, else its
/// own. Empty when none has.
QString helpChapter(const QWidget& window);

/// Shows the user guide over `window`, at the chapter of what it shows.
void showHelp(QWidget& window);

/// The canvases have always shown their own keys on F1.
inline constexpr QKeyCombination helpKeyWhereF1IsTaken = Qt::CTRL | Qt::Key_F1;

/// `key` shows the user guide, wherever in `window` the focus is; not in the middle of a stroke,
/// which it would tear.
void addHelpKey(QWidget& window, const QKeySequence& key = Qt::Key_F1);

}  // namespace touch
