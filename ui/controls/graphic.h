#pragma once

#include <QString>

class QWidget;

namespace touch {

/// Tells those who cannot see it that this widget is a picture, what it is called and what it
/// shows.
void presentAsGraphic(QWidget& widget, const QString& name, const QString& description);

}  // namespace touch
