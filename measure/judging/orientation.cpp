#include "measure/judging/orientation.h"

#include <Eigen/Cholesky>
#include <Eigen/SVD>

#include "measure/figures/spread.h"

namespace touch::measure {

namespace {

PointMm middleOf(const Measurement& measurement, const Trace& trace) {
  const Source& source = measurement.sources[trace.source];
  std::vector<double> x;
  std::vector<double> y;
  for (const Sample& sample : trace.samples) {
    x.push_back(sample.x / source.stepsX);
    y.push_back(sample.y / source.stepsY);
  }
  const auto middle = [](const std::vector<double>& values) {
    constexpr double stray = 0.02;
    return (quantile(values, stray) + quantile(values, 1 - stray)) / 2 - 0.5;
  };
  return {middle(x), middle(y)};
}

}  // namespace

Orientation orientationOf(const Measurement& measurement) {
  Eigen::Matrix3d squares = Eigen::Matrix3d::Zero();
  Eigen::Matrix<double, 3, 2> products = Eigen::Matrix<double, 3, 2>::Zero();
  for (const Trace& trace : measurement.traces) {
    const Guide* guide = findGuide(trace.task);
    if (!guide || trace.blame == Blame::hand || trace.samples.empty()) continue;
    const Eigen::Vector3d wanted(1, (guide->from.x + guide->to.x - 1) / 2,
                                 (guide->from.y + guide->to.y - 1) / 2);
    squares += wanted * wanted.transpose();
    products += wanted * middleOf(measurement, trace).transpose();
  }
  Orientation orientation;
  constexpr double tooFew = 0.2;  // lines on one spot tell nothing
  if (squares(1, 1) < tooFew || squares(2, 2) < tooFew) return orientation;
  orientation.map = squares.ldlt().solve(products).bottomRows<2>().transpose();

  const Eigen::Vector2d spans = Eigen::JacobiSVD<Eigen::Matrix2d>(orientation.map).singularValues();
  orientation.independence = spans(0) > 0 ? spans(1) / spans(0) : 0;
  double nearest = 1e9;
  for (const bool crossed : {false, true})
    for (const double first : {1.0, -1.0})
      for (const double second : {1.0, -1.0}) {
        Eigen::Matrix2d whole;
        if (crossed)
          whole << 0, first, second, 0;
        else
          whole << first, 0, 0, second;
        const double distance = (orientation.map - whole).norm();
        if (distance >= nearest) continue;
        nearest = distance;
        orientation.whole = whole;
      }
  return orientation;
}

Measurement turnedBack(const Measurement& measurement, const Eigen::Matrix2d& whole) {
  Measurement turned = measurement;
  for (Trace& trace : turned.traces) {
    const Source& source = measurement.sources[trace.source];
    for (Sample& sample : trace.samples) {
      const Eigen::Vector2d part(sample.x / source.stepsX - 0.5, sample.y / source.stepsY - 0.5);
      const Eigen::Vector2d right = whole.transpose() * part;
      sample.x = (right.x() + 0.5) * source.stepsX;
      sample.y = (right.y() + 0.5) * source.stepsY;
    }
  }
  return turned;
}

}  // namespace touch::measure
