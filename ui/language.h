#pragma once

#include <QStringList>

namespace touch {

/// The language of this system's user, of those that are `available`; the first of them when they
/// have none of them.
QString systemLanguage(const QStringList& available);

/// From now on windows and logic speak `language`, e.g. "de"; English is what they are written in.
/// Texts of Qt's own, such as those of file dialogs, follow where Qt's translation is installed.
/// False when there is no such translation: the program goes on in English then. The application
/// must be there.
bool speak(const QString& language);

}  // namespace touch
