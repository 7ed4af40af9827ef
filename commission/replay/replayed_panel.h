#pragma once

#include <optional>
#include <string>
#include <vector>

#include "measure/measurement.h"

namespace touch::commission {

/// What a measurement says of its panel, apart from the hand that touched it. Places are fractions
/// of the panel.
struct ReplayedPanel {
  /// An error in one direction, where columns and rows cross, row by row.
  struct Error {
    std::vector<double> columns, rows, values;
  };
  struct Dead {
    measure::Place from, to;
  };
  Error errorX, errorY;
  bool hasError = false;  ///< enough was drawn or tapped to know it
  Eigen::Matrix2d directions = Eigen::Matrix2d::Identity();  ///< around the panel's middle
  std::optional<Eigen::Vector2d> noise;                      ///< standard deviation
  Eigen::Vector2d drift = Eigen::Vector2d::Zero();           ///< a second
  std::vector<Dead> dead;
  bool hasCoverage = false;    ///< it was rubbed
  std::optional<double> rate;  ///< reports a second
};

ReplayedPanel replayedPanel(const measure::Measurement& measurement);

/// Adds it to the properties of a Replay.
void describePanel(const ReplayedPanel& panel, std::vector<std::string>& properties);

}  // namespace touch::commission
