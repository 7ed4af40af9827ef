#pragma once

#include <cstdint>

#include "support/quantity.h"

namespace touch {

/// A coordinate as a controller counts it: from 0 to the greatest that its reports can say. It is
/// no place on the screen before the calibration.
using RawCounts = Quantity<struct RawCountsUnit, std::uint16_t>;

/// Which part of the way from 0 to `greatest` it is: 0 to 1.
constexpr double fractionOf(RawCounts count, RawCounts greatest) {
  return static_cast<double>(count.value) / greatest.value;
}

}  // namespace touch
