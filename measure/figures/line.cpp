#include "measure/figures/line.h"

#include <Eigen/QR>
#include <limits>

namespace touch::measure {

namespace {

// Samples within this of a place on the guide are averaged; more of them where they are sparse.
constexpr double leastWindow = 6;  // mm to each side
constexpr double samplesInWindow = 12;
constexpr double stationsPerMm = 1;
constexpr double mostStations = 200;
// A pause of this many usual intervals is one in which a report was lost.
constexpr double pause = 3;

struct Point {
  double along;
  double across;
  double time;
};

/// Where the straight line through the points of a window passes `along`, and how far that is in
/// doubt.
struct LocalLine {
  Station station;
  double leverage = 0;  ///< of the variance of one point
  double squares = 0;   ///< what the line leaves of the points
  double freedom = 0;
};

std::optional<LocalLine> localLine(std::span<const Point> window, double along) {
  if (window.size() < 3) return std::nullopt;
  const auto count = static_cast<double>(window.size());
  double a = 0, d = 0, t = 0, aa = 0, ad = 0, dd = 0;
  for (const Point& point : window) {
    const double at = point.along - along;
    a += at;
    d += point.across;
    t += point.time;
    aa += at * at;
    ad += at * point.across;
    dd += point.across * point.across;
  }
  const double spread = aa - a * a / count;
  const double shared = ad - a * d / count;
  constexpr double tiny = 1e-6;
  const double slope = spread > tiny ? shared / spread : 0;
  return LocalLine{.station = {along, (d - slope * a) / count, t / count},
                   .leverage = 1 / count + (spread > tiny ? a * a / (count * count * spread) : 0),
                   .squares = std::max(dd - d * d / count - slope * shared, 0.0),
                   .freedom = count - 2};
}

/// A smooth curve through all points of a line. At the line's ends it is known better than any
/// local one, which has points on one side alone.
class SmoothCurve {
 public:
  SmoothCurve(std::span<const Point> points, double length) : length_(length) {
    constexpr std::size_t highestDegree = 5;
    constexpr std::size_t pointsPerTerm = 20;
    const auto terms =
        static_cast<Eigen::Index>(1 + std::min(highestDegree, points.size() / pointsPerTerm));
    const auto count = static_cast<Eigen::Index>(points.size());
    Eigen::MatrixXd columns(count, terms);
    Eigen::VectorXd values(count);
    for (Eigen::Index i = 0; i < count; ++i) {
      const Point& point = points[static_cast<std::size_t>(i)];
      columns.row(i) = powers(point.along, terms);
      values(i) = point.across;
    }
    weights_ = columns.colPivHouseholderQr().solve(values);
  }
  double at(double along) const { return powers(along, weights_.size()).dot(weights_); }

 private:
  Eigen::RowVectorXd powers(double along, Eigen::Index count) const {
    Eigen::RowVectorXd values(count);
    const double place = 2 * along / length_ - 1;
    double power = 1;
    for (double& value : values) {
      value = power;
      power *= place;
    }
    return values;
  }

  double length_;
  Eigen::VectorXd weights_;
};

/// `points` in their order along the guide. What the smooth curve leaves counts only as far as it
/// is more than noise: of many stations one would always seem to lie far off.
std::vector<Station> courseOf(std::span<const Point> points, double length) {
  const SmoothCurve smooth(points, length);
  std::vector<Point> rest(points.begin(), points.end());
  for (Point& point : rest)
    point.across -= smooth.at(point.along);
  const double half =
      std::max(leastWindow, samplesInWindow / 2 * length / static_cast<double>(points.size()));
  const double stations = std::min(std::round(length * stationsPerMm), mostStations);
  std::vector<LocalLine> details;
  double squares = 0;
  double freedom = 0;
  auto first = rest.begin();
  auto last = rest.begin();
  for (double station = 0; station <= stations; ++station) {
    const double along = length * station / stations;
    while (first != rest.end() && first->along < along - half)
      ++first;
    while (last != rest.end() && last->along <= along + half)
      ++last;
    // Between samples, but not beyond them, and not in the middle of nothing.
    const bool inside = first != last && first->along <= along + half / samplesInWindow &&
                        (last - 1)->along >= along - half / samplesInWindow;
    if (!inside) continue;
    const auto found = localLine({first, last}, along);
    if (!found) continue;
    squares += found->squares;
    freedom += found->freedom;
    details.push_back(*found);
  }
  constexpr double sure = 3;  // times the standard error
  const double noise = sure * sure * squares / std::max(freedom, 1.0);
  std::vector<Station> course;
  for (const LocalLine& detail : details) {
    Station& station = course.emplace_back(detail.station);
    const double square = station.across * station.across;
    const double part = square > 0 ? std::max(1 - noise * detail.leverage / square, 0.0) : 0;
    station.across = smooth.at(station.along) + part * station.across;
  }
  return course;
}

/// What a station stands for: the way half to each neighbour.
Eigen::VectorXd lengthsOf(std::span<const Station> course) {
  Eigen::VectorXd lengths = Eigen::VectorXd::Zero(static_cast<Eigen::Index>(course.size()));
  for (std::size_t i = 1; i < course.size(); ++i) {
    const double half = (course[i].along - course[i - 1].along) / 2;
    lengths(static_cast<Eigen::Index>(i - 1)) += half;
    lengths(static_cast<Eigen::Index>(i)) += half;
  }
  return lengths;
}

void fitLine(LineFigures& figures, double length) {
  const auto count = static_cast<Eigen::Index>(figures.course.size());
  if (count < 2) return;
  const Eigen::VectorXd lengths = lengthsOf(figures.course);
  Eigen::MatrixX2d places(count, 2);
  Eigen::VectorXd across(count);
  for (Eigen::Index i = 0; i < count; ++i) {
    const Station& station = figures.course[static_cast<std::size_t>(i)];
    places.row(i) << 1, station.along - length / 2;
    across(i) = station.across;
  }
  const Eigen::VectorXd weights = lengths.cwiseSqrt();
  const Eigen::MatrixX2d weighted = weights.asDiagonal() * places;
  const Eigen::Vector2d line = weighted.colPivHouseholderQr().solve(weights.cwiseProduct(across));
  figures.offset = line(0);
  figures.tilt = line(1) * length;
  const double cosine = 1 / std::hypot(1, line(1));
  const Eigen::VectorXd left = (across - places * line) * cosine;
  figures.straightness = spreadOf({left.begin(), left.end()});
  figures.straightness.rms = std::sqrt(left.cwiseAbs2().dot(lengths) / lengths.sum());
}

void measureScatter(LineFigures& figures, std::span<const Point> points) {
  double squares = 0;
  double count = 0;
  auto next = figures.course.begin();
  for (const Point& point : points) {
    while (next != figures.course.end() && next->along < point.along)
      ++next;
    if (next == figures.course.begin() || next == figures.course.end()) continue;
    const Station& before = *(next - 1);
    const double part = (point.along - before.along) / (next->along - before.along);
    const double off = point.across - std::lerp(before.across, next->across, part);
    squares += off * off;
    ++count;
  }
  if (count > 0) figures.scatter = std::sqrt(squares / count);
}

/// Speed, rate and lost time of strokes in the order of their reports; the usual interval.
std::optional<double> measureTime(LineFigures& figures,
                                  std::span<const std::vector<Point>> strokes) {
  std::vector<double> intervals;
  double way = 0;
  double time = 0;
  for (const auto& stroke : strokes)
    for (std::size_t i = 1; i < stroke.size(); ++i) {
      intervals.push_back(stroke[i].time - stroke[i - 1].time);
      way += std::hypot(stroke[i].along - stroke[i - 1].along,
                        stroke[i].across - stroke[i - 1].across);
      time += intervals.back();
    }
  const double usual = quantile(intervals, 0.5);
  if (usual <= 0 || time <= 0) return std::nullopt;
  figures.speed = way / time;
  figures.reportRate = 1 / usual;
  figures.lost = 0;
  for (const double interval : intervals)
    if (interval > pause * usual) *figures.lost += interval - usual;
  return usual;
}

void measureGaps(LineFigures& figures, std::span<const Point> points, double limit, double length,
                 std::optional<double> usualInterval) {
  double covered = 0;
  Gap largest;
  for (std::size_t i = 1; i < points.size(); ++i) {
    Gap gap{points[i - 1].along, points[i].along};
    gap.reportsKeptComing =
        usualInterval && std::abs(points[i].time - points[i - 1].time) <= pause * *usualInterval;
    if (gap.width() > largest.width()) largest = gap;
    if (gap.width() <= limit)
      covered += gap.width();
    else
      figures.gaps.push_back(gap);
  }
  if (figures.gaps.empty()) figures.gaps.push_back(largest);
  figures.largestGap = largest.width();
  figures.coverage = std::min(covered / length, 1.0);
}

}  // namespace

LineFigures measureLine(const Measurement& measurement, const Guide& guide) {
  const GuideFrame frame(guide, measurement.size);
  LineFigures figures;
  figures.guide = &guide;
  figures.side = frame.side();
  figures.length = frame.length();
  const double farOff = measurement.limits[Length::farOff].on(figures.side).value;

  std::vector<std::vector<Point>> strokes;
  std::vector<Point> points;
  std::vector<double> deviations;
  bool timed = true;
  for (const Trace& trace : measurement.traces) {
    if (trace.task != guide.name || trace.samples.empty()) continue;
    if (trace.blame == Blame::hand) {
      ++figures.byHand;
      continue;
    }
    std::vector<Point> stroke;
    bool leaves = false;
    for (const Sample& sample : trace.samples) {
      const PointMm at = measurement.point(trace, sample);
      stroke.push_back({frame.along(at), frame.across(at), sample.time.count()});
      deviations.push_back(stroke.back().across);
      leaves = leaves || std::abs(deviations.back()) > farOff;
    }
    if (leaves && trace.blame == Blame::undecided) {
      figures.farOff = true;
      continue;
    }
    figures.blamesPanel = figures.blamesPanel || leaves;
    timed = timed && measurement.isTimed(trace);
    points.insert(points.end(), stroke.begin(), stroke.end());
    strokes.push_back(std::move(stroke));
  }
  figures.samples = points.size();
  figures.off = spreadOf(std::move(deviations));
  if (points.empty()) return figures;

  std::ranges::sort(points, {}, &Point::along);
  figures.course = courseOf(points, frame.length());
  fitLine(figures, frame.length());
  measureScatter(figures, points);
  const auto usualInterval = timed ? measureTime(figures, strokes) : std::nullopt;
  measureGaps(figures, points, measurement.limits[Length::gap].on({frame.length()}).value,
              frame.length(), usualInterval);

  // A diagonal crosses the zone aslant.
  const double zone = measurement.limits.edgeZone.value / frame.direction().cwiseAbs().maxCoeff();
  figures.reachesStart = points.front().along <= zone;
  figures.reachesEnd = points.back().along >= frame.length() - zone;
  const PointMm corner(measurement.size.width.value, measurement.size.height.value);
  for (const Station& station : figures.course) {
    const PointMm at = frame.at(station.along);
    const double toEdge = std::min(at.minCoeff(), (corner - at).minCoeff());
    double& worst = toEdge < measurement.limits.edgeZone.value ? figures.edge : figures.centre;
    worst = std::max(worst, std::abs(station.across));
  }
  return figures;
}

std::optional<double> hysteresis(const LineFigures& there, const LineFigures& back) {
  constexpr double samePlace = 0.5;  // mm
  std::optional<double> widest;
  auto other = back.course.rbegin();
  for (const Station& station : there.course) {
    const double along = there.length - station.along;
    while (other != back.course.rend() && other->along > along + samePlace)
      ++other;
    if (other == back.course.rend()) break;
    if (along - other->along > samePlace) continue;
    widest = std::max(widest.value_or(0), std::abs(station.across - other->across));
  }
  return widest;
}

}  // namespace touch::measure
