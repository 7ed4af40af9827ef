#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "bench/figures/figures.h"

namespace touch::bench {

enum class Unit : std::uint8_t { seconds, bytes, share };

/// What a bar is about: how many times its baseline a quantity takes, how much more than that, or
/// the quantity itself.
enum class Measure : std::uint8_t { ratio, difference, itself };

/// For what is only shown.
inline constexpr double noBar = 1e9;

/// What is expected of a quantity: a measure of at most `most`.
struct Bar {
  std::string what;
  std::string baselineIs;  ///< empty: it is compared with nothing
  Quantity ours;
  Quantity baseline;
  double most;
  Unit unit = Unit::seconds;
  Measure measure = Measure::ratio;
};

std::vector<Bar> bars();

}  // namespace touch::bench
