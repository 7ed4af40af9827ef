#pragma once

#include <cstdint>
#include <vector>

#include "simulator/panel/panel.h"

namespace touch::simulator {

/// The form in which a controller reports touches over its serial line.
enum class ReportFormat : std::uint8_t {
  tablet,       ///< 5 bytes, low 7 bits first, places on the screen
  raw,          ///< 5 bytes, high 7 bits first, readings of the converter
  decimal,      ///< "T08191,08191" or "R..." with a carriage return
  hexadecimal,  ///< the same in four digits
  packet,       ///< 10 bytes, 16 bits a coordinate
};

/// Whether a report wants what the converter reads instead of the place on the screen.
constexpr bool wantsRaw(ReportFormat format) {
  return format == ReportFormat::raw;
}

/// One report of a touch at `place`, or of its end there.
std::vector<std::uint8_t> encodeReport(ReportFormat format, Point place, bool touching);

}  // namespace touch::simulator
