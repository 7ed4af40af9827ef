#pragma once

#include <QString>
#include <string_view>

#include "core/text_encoding.h"

namespace touch {

/// Text of the logic, of files or of a controller, as a window shows it.
inline QString shownText(std::string_view text) {
  return QString::fromStdString(toUtf8(text));
}

}  // namespace touch
