#pragma once

#include <QLocale>
#include <QString>
#include <filesystem>
#include <string_view>

#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

/// Text of the logic, of files or of a controller, as a window shows it.
inline QString shownText(std::string_view text) {
  return QString::fromStdString(toUtf8(text));
}

/// A text of one of the logic's tables, marked there, in the user's language.
inline QString spokenText(std::string_view context, std::string_view marked) {
  return QString::fromStdString(say(context, marked));
}

/// A number for the eye, with the user's decimal separator. Files have a point.
inline QString shownNumber(double value, int decimals) {
  QLocale locale;
  locale.setNumberOptions(QLocale::OmitGroupSeparator);
  return locale.toString(value, 'f', decimals);
}

/// The file that the user named in a window.
inline std::filesystem::path pathOf(const QString& file) {
  return file.toStdU16String();
}

}  // namespace touch
