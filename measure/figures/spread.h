#pragma once

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace touch::measure {

/// How far values are from zero, whichever side; all 0 for none.
struct Spread {
  double maximum = 0;
  double rms = 0;
  double p95 = 0;  ///< 95 of 100 are nearer
};

/// The value below which `part` of them lie.
inline double quantile(std::vector<double> values, double part) {
  if (values.empty()) return 0;
  const auto place = static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), values.begin() + place, values.end());
  return values[static_cast<std::size_t>(place)];
}

inline Spread spreadOf(std::vector<double> values) {
  if (values.empty()) return {};
  Spread spread;
  double squares = 0;
  for (double& value : values) {
    value = std::abs(value);
    squares += value * value;
    spread.maximum = std::max(spread.maximum, value);
  }
  spread.rms = std::sqrt(squares / static_cast<double>(values.size()));
  spread.p95 = quantile(std::move(values), 0.95);
  return spread;
}

}  // namespace touch::measure
