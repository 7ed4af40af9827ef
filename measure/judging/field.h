#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "measure/figures/line.h"
#include "measure/figures/taps.h"
#include "measure/units.h"

namespace touch::measure {

/// What is known of the error at a place: how far it goes in one direction.
struct ErrorAt {
  PointMm at;
  PointMm direction;  ///< of length 1
  double error = 0;   ///< mm
  double time = 0;    ///< seconds
};

/// The error of a panel as a smooth field: a polynomial of both coordinates for each direction.
class ErrorField {
 public:
  static constexpr int highestDegree = 5;
  /// The least squares to what is known, of the highest degree that this many lines support.
  static std::optional<ErrorField> fit(std::span<const ErrorAt> known, const PanelSize& size,
                                       int degree);

  /// From where a touch was to where it was reported.
  PointMm at(const PointMm& place) const;
  /// How far touches are spread out at the edges, in each direction: the part that a scale
  /// explains.
  PointMm scale() const { return {weights_(1, 0), weights_(2, 1)}; }
  const PanelSize& size() const { return size_; }

 private:
  PanelSize size_;
  int degree_ = 0;
  Eigen::MatrixX2d weights_;
};

/// Products of Legendre polynomials up to this degree in both coordinates together, each coordinate
/// from -1 to 1 on the panel.
Eigen::VectorXd polynomials(const PointMm& place, const PanelSize& size, int degree);

/// The errors across the guides, at each station of each line.
std::vector<ErrorAt> errorsOf(std::span<const LineFigures> lines, const PanelSize& size);
/// Both directions of each tap's error.
std::vector<ErrorAt> errorsOf(const TapFigures& taps);

/// The highest degree that lines at so many different places support.
int supportedDegree(std::span<const LineFigures> lines);

struct MapPoint {
  PointMm at;
  PointMm error;
};
/// The field at the crossings of a grid over the whole panel, row by row; the worst of them.
struct ErrorMap {
  static constexpr std::size_t columns = 33;
  static constexpr std::size_t rows = 25;
  std::vector<MapPoint> points;
  MapPoint worst;
};
ErrorMap mapOf(const ErrorField& field);

/// "x mm,y mm,error x mm,error y mm,error mm" and a line for each point of the grid.
std::string mapCsv(const ErrorMap& map);

/// What is left of the error when the panel is calibrated with so many targets at best.
struct Reach {
  int targets = 0;
  double worst = 0;  ///< mm, anywhere on the panel
  double rms = 0;
};
struct Advice {
  std::vector<Reach> reaches;  ///< with 2, 3, 5 and 9 targets
  double floor = 0;            ///< mm at the worst place, below which no calibration comes
  double now = 0;              ///< the worst error of today
  int take = 0;                ///< the fewest targets that are about as good as any
};
Advice advise(const ErrorField& field);

}  // namespace touch::measure
