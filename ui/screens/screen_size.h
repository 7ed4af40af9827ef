#pragma once

#include <QSizeF>
#include <QString>
#include <optional>

class QScreen;

namespace touch {

/// How large a screen says that it is, in mm, as it stands now; nothing when it says nothing, or
/// the system has made it up.
std::optional<QSizeF> physicalSizeOf(const QScreen& screen);

/// "1024x768", and the name that the screen has given itself.
QString describe(const QScreen& screen);

}  // namespace touch
