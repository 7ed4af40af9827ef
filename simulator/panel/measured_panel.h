#pragma once

#include <vector>

#include "simulator/panel/touch_map.h"

namespace touch::simulator {

/// Numbers over the panel: known where its columns and rows cross, linear between them, constant
/// beyond them. One without numbers is 0 everywhere.
struct Grid {
  std::vector<double> columns;  ///< ascending
  std::vector<double> rows;     ///< ascending
  std::vector<double> values;   ///< row by row

  double at(Point place) const;
};

/// A rectangle that feels no touch.
struct DeadArea {
  Point from;
  Point to;
};

/// A panel that was measured: where it reports a finger with the calibration that was in force
/// then. All lengths are fractions of the panel.
struct MeasuredPanel {
  Grid errorX;                      ///< from the finger to where it is reported
  Grid errorY;                      ///< the same downwards
  Point noise;                      ///< standard deviation of a report
  Point drift;                      ///< by which reports wander in a second
  TouchMap directions;              ///< turned and mirrored panels; follows the error
  std::vector<DeadArea> deadAreas;  ///< in the finger's places

  /// Without noise, `seconds` after the panel was first touched.
  Point reported(Point finger, double seconds) const;
  bool feels(Point finger) const;
};

}  // namespace touch::simulator
