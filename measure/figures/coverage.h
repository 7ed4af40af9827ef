#pragma once

#include <array>
#include <vector>

#include "measure/measurement.h"

namespace touch::measure {

/// The panel in cells of about 5 mm, row by row.
class CellGrid {
 public:
  explicit CellGrid(const PanelSize& size);
  std::size_t columns() const { return columns_; }
  std::size_t rows() const { return rows_; }
  const PointMm& cell() const { return cell_; }
  std::size_t of(const PointMm& point) const;

 private:
  std::size_t columns_;
  std::size_t rows_;
  PointMm cell_;
};

/// A part of the panel that never reported a touch.
struct DeadSpot {
  PointMm corner;  ///< the upper left one of the smallest rectangle around it
  PointMm size;
  std::size_t cells = 0;
  std::size_t crossings = 0;  ///< how often the finger went over it
  /// The finger was there, and often enough.
  bool isProven() const { return crossings >= 3; }
};

/// Which of the cells reported a touch.
struct CoverageFigures {
  std::size_t columns = 0;
  std::size_t rows = 0;
  std::vector<bool> touched;        ///< row by row
  double part = 0;                  ///< of the cells, 0 to 1
  std::vector<DeadSpot> deadSpots;  ///< the largest first
  std::array<double, 4> reach{};    ///< mm that stay free at the left, top, right and bottom edge

  bool isTouched(std::size_t column, std::size_t row) const {
    return touched[row * columns + column];
  }
};

/// Of all strokes that rub the panel.
CoverageFigures measureCoverage(const Measurement& measurement);

}  // namespace touch::measure
