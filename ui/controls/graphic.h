#pragma once

#include <QString>

class QLabel;
class QWidget;

namespace touch {

/// Tells those who cannot see it that this widget is a picture, what it is called and what it
/// shows.
void presentAsGraphic(QWidget& widget, const QString& name, const QString& description);

/// Shows one of the guide's drawings, 320 logical pixels wide. `file` is "rubbing", say; the rest
/// is for those who cannot see it.
void showDrawing(QLabel& label, const QString& file, const QString& name,
                 const QString& description);

}  // namespace touch
