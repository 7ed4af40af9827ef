#pragma once

#include <string>

#include "serial/port/line_settings.h"
#include "simulator/port/line_format.h"

namespace touch::simulator {

/// "7E1", or all of "9600,e,7,1". The error says what was expected.
Result<LineSettings, std::string> lineNamed(const std::string& text);

LineFormat formatOf(const LineSettings& line);
LineSettings settingsOf(const LineFormat& format, int baud);

}  // namespace touch::simulator
