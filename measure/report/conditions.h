#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "measure/measurement.h"

namespace touch::measure {

/// A unit behind a number, "mm nominal" for a length that rests on a guess; with a blank before it
/// where there is a unit.
std::string unitText(const PanelSize& size, std::string_view unit);

/// Local time with its zone, as conditions have it: "2026-12-31T23:59:59+0100".
std::string dateOf(std::chrono::system_clock::time_point time);

/// What a figure was taken on, for people.
struct Condition {
  std::string_view name;  ///< in files
  std::string caption;
  std::string text;
};
/// Those that are known.
std::vector<Condition> conditionsOf(const Measurement& measurement);

}  // namespace touch::measure
