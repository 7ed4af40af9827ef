#include "linetest/linearity/linearity.h"

#include <algorithm>
#include <cmath>

namespace touch {

namespace {

constexpr double twipsPerInch = 1440;
constexpr double mmPerInch = 25.4;
constexpr double tiltLength = 100;  // mm
// A stroke that is nearer to the perpendicular than to its guide follows it nowhere; its direction
// says nothing.
constexpr double steepest = 1;

/// A sample as seen from its guide, in mm.
struct Place {
  double along;
  double across;
  bool inEdgeZone;
};

class Frame {
 public:
  Frame(const GuidedLine& guide, const MeasuredPanel& panel)
      : guide_(guide),
        panel_(panel),
        mmPerX_(panel.widthMm / static_cast<double>(panel.screen.width)),
        mmPerY_(panel.heightMm / static_cast<double>(panel.screen.height)) {}

  Place place(TwipsPoint sample) const {
    const double x = static_cast<double>(sample.x) * mmPerX_;
    const double y = static_cast<double>(sample.y) * mmPerY_;
    const double toEdge = std::min({x, y, panel_.widthMm - x, panel_.heightMm - y});
    const bool inEdgeZone = toEdge < edgeZoneMm;
    const auto position = static_cast<double>(guide_.position);
    if (guide_.orientation == Orientation::vertical) return {y, x - position * mmPerX_, inEdgeZone};
    return {x, y - position * mmPerY_, inEdgeZone};
  }

 private:
  const GuidedLine& guide_;
  const MeasuredPanel& panel_;
  double mmPerX_;
  double mmPerY_;
};

class FiguresOf {
 public:
  void add(double deviation) {
    if (figures_.count++ == 0) figures_.maximum = figures_.minimum = deviation;
    figures_.maximum = std::max(figures_.maximum, deviation);
    figures_.minimum = std::min(figures_.minimum, deviation);
    figures_.absoluteMaximum = std::max(figures_.absoluteMaximum, std::abs(deviation));
    sum_ += deviation;
    squares_ += deviation * deviation;
  }
  DeviationFigures figures() const {
    DeviationFigures figures = figures_;
    if (figures.count == 0) return figures;
    const auto count = static_cast<double>(figures.count);
    figures.average = sum_ / count;
    figures.rms = std::sqrt(squares_ / count);
    return figures;
  }

 private:
  DeviationFigures figures_;
  double sum_ = 0;
  double squares_ = 0;
};

/// The best-fitting line: through the samples' centre, at an angle to the guide.
struct Fit {
  double along = 0;
  double across = 0;
  double angle = 0;

  double distance(const Place& place) const {
    return (place.across - across) * std::cos(angle) - (place.along - along) * std::sin(angle);
  }
};

Fit fitLine(std::span<const Place> places) {
  Fit fit;
  const auto count = static_cast<double>(places.size());
  for (const Place& place : places) {
    fit.along += place.along / count;
    fit.across += place.across / count;
  }
  double alongSquares = 0;
  double acrossSquares = 0;
  double products = 0;
  for (const Place& place : places) {
    const double a = place.along - fit.along;
    const double d = place.across - fit.across;
    alongSquares += a * a;
    acrossSquares += d * d;
    products += a * d;
  }
  fit.angle = std::atan2(2 * products, alongSquares - acrossSquares) / 2;
  return fit;
}

void measureCourse(LineFigures& figures, std::span<const Place> places, double length) {
  std::vector<double> along;
  for (const Place& place : places)
    along.push_back(place.along);
  std::sort(along.begin(), along.end());
  figures.coverage = std::min((along.back() - along.front()) / length, 1.0);
  for (std::size_t i = 1; i < along.size(); ++i)
    figures.largestGap = std::max(figures.largestGap, along[i] - along[i - 1]);
}

}  // namespace

MeasuredPanel MeasuredPanel::ofNominalSize(TwipsSize screen) {
  return {screen, static_cast<double>(screen.width) * mmPerInch / twipsPerInch,
          static_cast<double>(screen.height) * mmPerInch / twipsPerInch};
}

LineFigures measureLine(const GuidedLine& guide, std::span<const TwipsPoint> samples,
                        const MeasuredPanel& panel) {
  const Frame frame(guide, panel);
  std::vector<Place> places;
  FiguresOf all;
  FiguresOf centre;
  FiguresOf edge;
  for (const TwipsPoint& sample : samples) {
    const Place place = frame.place(sample);
    places.push_back(place);
    all.add(place.across);
    (place.inEdgeZone ? edge : centre).add(place.across);
  }
  LineFigures figures{.all = all.figures(), .centre = centre.figures(), .edge = edge.figures()};
  if (places.empty()) return figures;

  const Fit fit = fitLine(places);
  FiguresOf distances;
  for (const Place& place : places)
    distances.add(fit.distance(place));
  figures.straightness = distances.figures().absoluteMaximum;
  figures.straightnessRms = distances.figures().rms;

  const double length = panel.alongMm(guide.orientation);
  const double slope = std::tan(fit.angle);
  const bool follows = std::abs(slope) <= steepest;
  figures.tilt = follows ? slope * tiltLength : 0;
  figures.offset = fit.across + (follows ? (length / 2 - fit.along) * slope : 0);
  measureCourse(figures, places, length);
  return figures;
}

double limitMm(double limit, LimitUnit unit, const MeasuredPanel& panel, Orientation orientation) {
  return unit == LimitUnit::millimetres ? limit : limit * panel.acrossMm(orientation) / 100;
}

LineVerdict judge(const LineFigures& figures, const LinearityLimits& limits,
                  const MeasuredPanel& panel, Orientation orientation) {
  const auto passes = [&](const DeviationFigures& zone, double limit) {
    // Twips become millimetres with a remainder far below what a panel resolves.
    constexpr double remainder = 1e-9;
    return zone.absoluteMaximum <= limitMm(limit, limits.unit, panel, orientation) + remainder;
  };
  return {passes(figures.centre, limits.centre), passes(figures.edge, limits.edge)};
}

std::string lineLabel(Orientation orientation, int number) {
  return (orientation == Orientation::vertical ? "V-" : "H-") + std::to_string(number);
}

}  // namespace touch
