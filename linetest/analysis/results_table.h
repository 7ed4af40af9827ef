#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>

#include "drawing/surface.h"
#include "linetest/analysis/line_analysis.h"

namespace touch {

/// The last measurement of a guide line.
struct ResultsRow {
  std::string average;  ///< percent, two decimals, as are the next two
  std::string maximum;
  std::string minimum;
  std::size_t quantity = 0;
  float start = 0;  ///< y of the first sample, for both orientations: it tells where on the panel
                    ///< the stroke began
  float end = 0;    ///< y of the last sample
};

/// The results table as it is shown.
struct ResultsSheet {
  static constexpr std::size_t rows = 11;
  static constexpr std::size_t columns = 7;
  struct Cell {
    std::string text;
    Colour colour = palette[0];
    friend bool operator==(const Cell&, const Cell&) = default;
  };
  static constexpr Colour beyondTolerance = {255, 0, 0};
  /// In twips.
  static constexpr std::array<float, columns> columnWidths = {600,  1000, 1000, 1000,
                                                              1000, 1000, 1000};
  std::array<std::array<Cell, columns>, rows> cells;
};

class ResultsTable {
 public:
  static constexpr std::size_t rows = 19;

  /// Keeps a stroke's measurement as the row of its line.
  void store(std::span<const TwipsPoint> samples, const LineMatch& line, TwipsSize screen);
  /// Row = index of the guide line; nothing while that was not measured.
  const std::optional<ResultsRow>& row(std::size_t index) const { return rows_.at(index); }

  /// Figures beyond the tolerance stand in red, the others in blue.
  ResultsSheet sheet(Percent tolerance) const;

 private:
  std::array<std::optional<ResultsRow>, rows> rows_;
};

}  // namespace touch
