#include "measure/judging/field.h"

#include <fmt/core.h>

#include <Eigen/Cholesky>
#include <Eigen/LU>
#include <Eigen/QR>
#include <algorithm>
#include <array>
#include <set>

#include "drawing/target_places.h"

namespace touch::measure {

namespace {

// So little that it moves no figure, and enough where nothing is known of a coefficient.
constexpr double ridge = 1e-6;
// Targets that leave this much more than the best are not worth their effort.
constexpr double worthIt = 0.1;  // mm

std::array<double, ErrorField::highestDegree + 1> legendre(double x) {
  std::array<double, ErrorField::highestDegree + 1> values{1, x};
  for (std::size_t n = 1; n + 1 < values.size(); ++n) {
    const auto order = static_cast<double>(n);
    values[n + 1] = ((2 * order + 1) * x * values[n] - order * values[n - 1]) / (order + 1);
  }
  return values;
}

/// What the controller is calibrated with.
constexpr int targetCounts[] = {2, 3, 5, 9};

/// From a reported place to the one that it is corrected to, as a matrix on (1, x, y).
using Correction = Eigen::Matrix<double, 2, 3>;

/// The best map through the pairs: two of them set each axis by itself, more all six numbers.
Correction correctionOf(std::span<const MapPoint> pairs) {
  const auto count = static_cast<Eigen::Index>(pairs.size());
  Eigen::MatrixX3d reported(count, 3);
  Eigen::MatrixX2d wanted(count, 2);
  for (Eigen::Index i = 0; i < count; ++i) {
    const auto& [at, error] = pairs[static_cast<std::size_t>(i)];
    reported.row(i) << 1, at.x() + error.x(), at.y() + error.y();
    wanted.row(i) = at.transpose();
  }
  Correction correction = Correction::Zero();
  if (count > 2) {
    correction = reported.colPivHouseholderQr().solve(wanted).transpose();
    return correction;
  }
  for (const Eigen::Index axis : {0, 1}) {
    const double span = reported(1, axis + 1) - reported(0, axis + 1);
    const double scale = std::abs(span) > 1 ? (wanted(1, axis) - wanted(0, axis)) / span : 1;
    correction(axis, axis + 1) = scale;
    correction(axis, 0) = wanted(0, axis) - scale * reported(0, axis + 1);
  }
  return correction;
}

std::vector<double> leftBy(const Correction& correction, const ErrorMap& map) {
  std::vector<double> left;
  for (const auto& [at, error] : map.points) {
    const Eigen::Vector3d reported(1, at.x() + error.x(), at.y() + error.y());
    left.push_back((correction * reported - at).norm());
  }
  return left;
}

}  // namespace

Eigen::VectorXd polynomials(const PointMm& place, const PanelSize& size, int degree) {
  const auto x = legendre(2 * place.x() / size.width.value - 1);
  const auto y = legendre(2 * place.y() / size.height.value - 1);
  Eigen::VectorXd values((degree + 1) * (degree + 2) / 2);
  Eigen::Index next = 0;
  for (int total = 0; total <= degree; ++total)
    for (int ofY = 0; ofY <= total; ++ofY)
      values(next++) = x[static_cast<std::size_t>(total - ofY)] * y[static_cast<std::size_t>(ofY)];
  return values;
}

std::optional<ErrorField> ErrorField::fit(std::span<const ErrorAt> known, const PanelSize& size,
                                          int degree) {
  if (degree < 1) return std::nullopt;
  const Eigen::Index terms = (degree + 1) * (degree + 2) / 2;
  if (static_cast<Eigen::Index>(known.size()) < 2 * terms) return std::nullopt;
  Eigen::MatrixXd squares = Eigen::MatrixXd::Identity(2 * terms, 2 * terms) * ridge;
  Eigen::VectorXd products = Eigen::VectorXd::Zero(2 * terms);
  Eigen::VectorXd row(2 * terms);
  for (const ErrorAt& error : known) {
    const Eigen::VectorXd values = polynomials(error.at, size, degree);
    row << error.direction.x() * values, error.direction.y() * values;
    squares.selfadjointView<Eigen::Lower>().rankUpdate(row);
    products += error.error * row;
  }
  const Eigen::VectorXd weights = squares.selfadjointView<Eigen::Lower>().ldlt().solve(products);
  ErrorField field;
  field.size_ = size;
  field.degree_ = degree;
  field.weights_.resize(terms, 2);
  field.weights_ << weights.head(terms), weights.tail(terms);
  return field;
}

PointMm ErrorField::at(const PointMm& place) const {
  return weights_.transpose() * polynomials(place, size_, degree_);
}

std::vector<ErrorAt> errorsOf(std::span<const LineFigures> lines, const PanelSize& size) {
  std::vector<ErrorAt> errors;
  for (const LineFigures& line : lines) {
    const GuideFrame frame(*line.guide, size);
    for (const Station& station : line.course)
      errors.push_back({frame.at(station.along), frame.normal(), station.across, station.time});
  }
  return errors;
}

std::vector<ErrorAt> errorsOf(const TapFigures& taps) {
  std::vector<ErrorAt> errors;
  for (const TapTarget& target : taps.targets)
    for (const PointMm& tap : target.taps)
      for (const PointMm& direction : {PointMm(1, 0), PointMm(0, 1)})
        errors.push_back({target.at, direction, (tap - target.at).dot(direction)});
  return errors;
}

int supportedDegree(std::span<const LineFigures> lines) {
  std::set<double> vertical;
  std::set<double> horizontal;
  for (const LineFigures& line : lines) {
    if (line.course.empty()) continue;
    const auto& [name, from, to, back] = *line.guide;
    if (from.x == to.x) vertical.insert(from.x);
    if (from.y == to.y) horizontal.insert(from.y);
  }
  const auto fewest = static_cast<int>(std::min(vertical.size(), horizontal.size()));
  return fewest < 2 ? 0 : std::min((fewest + 1) / 2, ErrorField::highestDegree);
}

ErrorMap mapOf(const ErrorField& field) {
  ErrorMap map;
  for (std::size_t row = 0; row < ErrorMap::rows; ++row)
    for (std::size_t column = 0; column < ErrorMap::columns; ++column) {
      const PointMm at = field.size().point({static_cast<double>(column) / (ErrorMap::columns - 1),
                                             static_cast<double>(row) / (ErrorMap::rows - 1)});
      map.points.push_back({at, field.at(at)});
    }
  map.worst = *std::ranges::max_element(map.points, {},
                                        [](const MapPoint& point) { return point.error.norm(); });
  return map;
}

std::string mapCsv(const ErrorMap& map) {
  std::string text = "x mm,y mm,error x mm,error y mm,error mm\r\n";
  for (const auto& [at, error] : map.points)
    text += fmt::format("{:.2f},{:.2f},{:.3f},{:.3f},{:.3f}\r\n", at.x(), at.y(), error.x(),
                        error.y(), error.norm());
  return text;
}

Advice advise(const ErrorField& field) {
  const ErrorMap map = mapOf(field);
  Advice advice;
  advice.now = map.worst.error.norm();
  advice.floor = spreadOf(leftBy(correctionOf(map.points), map)).maximum;
  for (const int count : targetCounts) {
    std::vector<MapPoint> pairs;
    for (const TwipsPoint target : calibrationTargets(count, {1, 1})) {
      const PointMm at = field.size().point({target.x, target.y});
      pairs.push_back({at, field.at(at)});
    }
    const Spread left = spreadOf(leftBy(correctionOf(pairs), map));
    advice.reaches.push_back({count, left.maximum, left.rms});
  }
  const double best = std::ranges::min(advice.reaches, {}, &Reach::worst).worst;
  advice.floor = std::min(advice.floor, best);
  advice.take = std::ranges::find_if(advice.reaches, [&](const Reach& reach) {
                  return reach.worst <= best + worthIt;
                })->targets;
  return advice;
}

}  // namespace touch::measure
