#include "commission/replay/replayed_panel.h"

#include <fmt/core.h>

#include <Eigen/QR>
#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "measure/judging/orientation.h"
#include "measure/judging/verdict.h"

namespace touch::commission {

namespace {

using namespace measure;

constexpr int stations = 80;           // along each line, without the first
constexpr int piecesBetweenLines = 4;  // the field is smooth there
constexpr double farthest = 4;         // fractions of the panel; the simulator takes no more
constexpr std::size_t mostDead = 2000;
constexpr double sure = 4;  // times the standard deviation

Place fractionOf(const PointMm& point, const PanelSize& size) {
  return {point.x() / size.width.value, point.y() / size.height.value};
}

/// One direction of the error: the smooth field, corrected on each line across which it is known to
/// the course that the line took. Between two lines the corrections pass into each other.
class DirectedError {
 public:
  /// `upright` lines tell the error to the right, the others the error downwards.
  DirectedError(bool upright, const Analysis& analysis, const PanelSize& size)
      : upright_(upright), size_(size), field_(analysis.field ? &*analysis.field : nullptr) {
    for (const LineFigures& line : analysis.lines)
      if (!line.course.empty() && isAcross(*line.guide)) add(line);
  }

  /// Where a line crosses `place`, which along it is the place that was reported.
  double at(const PointMm& place) const {
    const double smooth = field_ != nullptr ? component(field_->at(place)) : 0;
    if (curves_.empty()) return smooth;
    const double across = component(place);
    const double along = alongOf(place);
    const auto next = std::ranges::upper_bound(curves_, across, {}, &Curve::place);
    if (next == curves_.begin()) return smooth + next->at(along);
    const Curve& before = *(next - 1);
    if (next == curves_.end()) return smooth + before.at(along);
    const double part = (across - before.place) / (next->place - before.place);
    return smooth + std::lerp(before.at(along), next->at(along), part);
  }

  std::vector<double> columns() const { return upright_ ? nodesAcross() : nodesAlong(); }
  std::vector<double> rows() const { return upright_ ? nodesAlong() : nodesAcross(); }

 private:
  /// What is left at each station of a line, from edge to edge.
  struct Curve {
    double place;  // mm
    double step;
    std::vector<double> values;
    int lines = 1;

    double at(double along) const {
      const double station = std::clamp(along / step, 0.0, static_cast<double>(stations));
      const auto first = std::min(static_cast<std::size_t>(station), values.size() - 2);
      return std::lerp(values[first], values[first + 1], station - static_cast<double>(first));
    }
  };

  bool isAcross(const Guide& guide) const {
    return upright_ ? guide.from.x == guide.to.x : guide.from.y == guide.to.y;
  }
  double component(const PointMm& point) const { return upright_ ? point.x() : point.y(); }
  double alongOf(const PointMm& point) const { return upright_ ? point.y() : point.x(); }

  void add(const LineFigures& line) {
    const GuideFrame frame(*line.guide, size_);
    std::vector<std::pair<double, double>> known;
    for (const Station& station : line.course) {
      const PointMm at = frame.at(station.along);
      const double smooth = field_ != nullptr ? component(field_->at(at)) : 0;
      known.emplace_back(alongOf(at), station.across - smooth);
    }
    std::ranges::sort(known);
    const double length = upright_ ? size_.height.value : size_.width.value;
    Curve curve{component(frame.at(0)), length / stations, {}};
    for (int station = 0; station <= stations; ++station)
      curve.values.push_back(between(known, curve.step * station));
    const auto same = std::ranges::find_if(
        curves_, [&](const Curve& one) { return std::abs(one.place - curve.place) < 0.01; });
    if (same == curves_.end()) {
      curves_.insert(std::ranges::upper_bound(curves_, curve.place, {}, &Curve::place),
                     std::move(curve));
      return;
    }
    // A line and its way back.
    ++same->lines;
    for (std::size_t i = 0; i < same->values.size(); ++i)
      same->values[i] += (curve.values[i] - same->values[i]) / same->lines;
  }

  static double between(std::span<const std::pair<double, double>> known, double along) {
    const auto next = std::ranges::upper_bound(known, along, {}, &std::pair<double, double>::first);
    if (next == known.begin()) return known.front().second;
    if (next == known.end()) return known.back().second;
    const auto& before = *(next - 1);
    const double part = (along - before.first) / (next->first - before.first);
    return std::lerp(before.second, next->second, part);
  }

  std::vector<double> nodesAlong() const {
    std::vector<double> nodes;
    for (int station = 0; station <= stations; ++station)
      nodes.push_back(static_cast<double>(station) / stations);
    return nodes;
  }

  /// On each line, at the edges, and some between.
  std::vector<double> nodesAcross() const {
    std::vector<double> lines{0};
    for (const Curve& curve : curves_)
      lines.push_back(curve.place / (upright_ ? size_.width.value : size_.height.value));
    lines.push_back(1);
    // Without lines the field alone is known.
    const int pieces = curves_.empty() ? stations / 2 : piecesBetweenLines;
    std::vector<double> nodes;
    for (std::size_t i = 0; i + 1 < lines.size(); ++i)
      for (int piece = 0; piece < pieces; ++piece)
        nodes.push_back(std::lerp(lines[i], lines[i + 1], static_cast<double>(piece) / pieces));
    nodes.push_back(1);
    return nodes;
  }

  bool upright_;
  PanelSize size_;
  const ErrorField* field_;
  std::vector<Curve> curves_;
};

/// From the finger to where it is reported, and back. Each direction is known of the finger's own
/// place across a line, but of the reported one along it.
class PanelError {
 public:
  PanelError(const Analysis& analysis, const PanelSize& size)
      : size_(size), right_(true, analysis, size), down_(false, analysis, size) {}

  PointMm at(const PointMm& finger) const {
    PointMm error = PointMm::Zero();
    for (int step = 0; step < rounds; ++step)
      error = {right_.at({finger.x(), finger.y() + error.y()}),
               down_.at({finger.x() + error.x(), finger.y()})};
    return error;
  }
  PointMm fingerAt(const PointMm& reported) const {
    PointMm finger = reported;
    for (int step = 0; step < rounds; ++step)
      finger = reported -
               PointMm(right_.at({finger.x(), reported.y()}), down_.at({reported.x(), finger.y()}));
    return finger;
  }
  ReplayedPanel::Error gridX() const { return grid(right_, 0); }
  ReplayedPanel::Error gridY() const { return grid(down_, 1); }

 private:
  static constexpr int rounds = 4;  // the error changes little on the way that it goes

  ReplayedPanel::Error grid(const DirectedError& directed, Eigen::Index direction) const {
    ReplayedPanel::Error error{directed.columns(), directed.rows(), {}};
    const double side = size_.point({1, 1})(direction);
    for (const double row : error.rows)
      for (const double column : error.columns) {
        const double value = at(size_.point({column, row}))(direction) / side;
        error.values.push_back(std::isfinite(value) ? std::clamp(value, -farthest, farthest) : 0);
      }
    return error;
  }

  PanelSize size_;
  DirectedError right_;
  DirectedError down_;
};

/// By how many mm a second a resting finger's place wanders; zero where chance may have done that.
PointMm driftOfRests(const Measurement& measurement) {
  constexpr double noticed = 0.1;  // mm in a rest; less is no drift to anybody
  PointMm sum = PointMm::Zero();
  double squares = 0;  // of the doubt
  double longest = 0;
  int rests = 0;
  for (const Target& target : restTargets())
    for (const Trace& trace : measurement.traces) {
      constexpr std::size_t fewest = 10;
      if (trace.task != target.name || trace.blame == Blame::hand ||
          trace.samples.size() < fewest || !measurement.isTimed(trace))
        continue;
      const auto count = static_cast<Eigen::Index>(trace.samples.size());
      Eigen::MatrixX2d times(count, 2);
      Eigen::MatrixX2d places(count, 2);
      for (Eigen::Index i = 0; i < count; ++i) {
        const Sample& sample = trace.samples[static_cast<std::size_t>(i)];
        times.row(i) << 1, (sample.time - trace.samples.front().time).count();
        places.row(i) = measurement.point(trace, sample).transpose();
      }
      const Eigen::Matrix2d line = times.colPivHouseholderQr().solve(places);
      const double spread = (times.col(1).array() - times.col(1).mean()).square().sum();
      if (!(spread > 0)) continue;
      sum += line.row(1).transpose();
      squares += (places - times * line).squaredNorm() / (2 * static_cast<double>(count)) / spread;
      longest = std::max(longest, times(count - 1, 1));
      ++rests;
    }
  if (rests == 0) return PointMm::Zero();
  const PointMm drift = sum / rests;
  const double doubt = std::sqrt(squares) / rests;
  return drift.norm() > sure * doubt && drift.norm() * longest > noticed ? drift : PointMm::Zero();
}

/// In mm a second. The lines tell a drift that is too slow for a rest.
PointMm driftOf(const Measurement& measurement) {
  PointMm drift = driftOfRests(measurement);
  if (drift.norm() > 0) return drift;
  return driftOfLines(measurement, analyse(measurement).lines).value_or(PointMm::Zero());
}

/// As if the panel had not drifted since it was first touched.
Measurement withoutDrift(const Measurement& measurement, const PointMm& drift) {
  Measurement still = measurement;
  const auto first = std::ranges::find_if(
      measurement.traces, [](const Trace& trace) { return !trace.samples.empty(); });
  const Seconds start = first->samples.front().time;  // of a panel that drifts there is one
  const Place part = fractionOf(drift, measurement.size);
  for (Trace& trace : still.traces)
    for (Sample& sample : trace.samples) {
      const double seconds = (sample.time - start).count();
      sample.x -= part.x * seconds * still.sources[trace.source].stepsX;
      sample.y -= part.y * seconds * still.sources[trace.source].stepsY;
    }
  return still;
}

/// Standard deviation in mm. A finger that rests tells it best.
std::optional<PointMm> noiseOf(const Analysis& analysis) {
  if (!analysis.rests.empty()) {
    const double noise = restNoise(analysis.rests);
    return PointMm(noise, noise);
  }
  PointMm squares = PointMm::Zero();
  PointMm count = PointMm::Zero();
  for (const LineFigures& line : analysis.lines) {
    const auto& [name, from, to, back] = *line.guide;
    if (line.course.empty() || (from.x != to.x && from.y != to.y)) continue;
    const Eigen::Index direction = from.x == to.x ? 0 : 1;
    squares(direction) += line.scatter * line.scatter;
    ++count(direction);
  }
  if (count.minCoeff() < 1) return std::nullopt;
  return PointMm(squares.cwiseQuotient(count).cwiseSqrt());
}

/// Gathers what feels no touch, in the finger's places.
class DeadPlaces {
 public:
  DeadPlaces(const PanelSize& size, std::vector<ReplayedPanel::Dead>& dead)
      : size_(size), dead_(dead) {}

  void add(const PointMm& from, const PointMm& to) {
    if (dead_.size() < mostDead && from.x() < to.x() && from.y() < to.y())
      dead_.push_back({corner(from), corner(to)});
  }

 private:
  Place corner(const PointMm& point) const {
    const Place place = fractionOf(point, size_);
    return {std::clamp(place.x, -1.0, 2.0), std::clamp(place.y, -1.0, 2.0)};
  }

  PanelSize size_;
  std::vector<ReplayedPanel::Dead>& dead_;
};

/// A piece of a line along which nothing came although the finger was on its way.
struct Silence {
  double place;  // of the line, mm
  double from;
  double to;

  bool meets(const Silence& other) const { return from < other.to && other.from < to; }
};

/// Where neighbouring lines are silent at the same place, so is all between them.
void addSilences(const Measurement& measurement, const Analysis& analysis, const PanelError& error,
                 bool upright, DeadPlaces& dead) {
  constexpr double around = 2.5;  // mm to each side of a line that is silent by itself
  const PanelSize& size = measurement.size;
  const double width = (upright ? size.width : size.height).value;
  std::vector<std::pair<double, std::vector<Silence>>> lines;
  for (const LineFigures& line : analysis.lines) {
    const auto& [name, start, end, back] = *line.guide;
    if (line.course.empty() || back || (upright ? start.x != end.x : start.y != end.y)) continue;
    auto& [place, silences] = lines.emplace_back();
    place = upright ? size.point(start).x() : size.point(start).y();
    const double limit = measurement.limits[Length::gap].on({line.length}).value;
    // Between two reports the finger went on.
    const double margin = line.length / static_cast<double>(line.samples) / 2;
    const auto fingerAlong = [&, at = place](double along) {
      return upright ? error.fingerAt({at, along}).y() : error.fingerAt({along, at}).x();
    };
    for (const Gap& gap : line.gaps)
      if (gap.width() > limit && !gap.reportsKeptComing)
        silences.push_back({place, fingerAlong(gap.from + margin), fingerAlong(gap.to - margin)});
  }
  std::ranges::sort(lines, {}, [](const auto& line) { return line.first; });
  for (std::size_t i = 0; i < lines.size(); ++i)
    for (const Silence& silence : lines[i].second) {
      const auto goesOnAt = [&](std::size_t neighbour) {
        return neighbour < lines.size() &&
               std::ranges::any_of(lines[neighbour].second,
                                   [&](const Silence& other) { return silence.meets(other); });
      };
      const bool before = i > 0 && goesOnAt(i - 1);
      const bool after = goesOnAt(i + 1);
      double least = silence.place - around;
      double most = silence.place + around;
      if (before) least = (lines[i - 1].first + silence.place) / 2;
      if (after) most = (silence.place + lines[i + 1].first) / 2;
      // A strip goes on to the edge.
      if (after && i == 0) least = 0;
      if (before && i + 1 == lines.size()) most = width;
      if (upright)
        dead.add({least, silence.from}, {most, silence.to});
      else
        dead.add({silence.from, least}, {silence.to, most});
    }
}

/// The cells that never reported a touch, neither when rubbed nor otherwise.
void addCells(const Measurement& measurement, const CoverageFigures& coverage,
              const PanelError& error, double noise, DeadPlaces& dead) {
  const CellGrid cells(measurement.size);
  std::vector<bool> alive = coverage.touched;
  for (const Trace& trace : measurement.traces)
    for (const Sample& sample : trace.samples)
      alive[cells.of(measurement.point(trace, sample))] = true;
  const double margin = sure * noise + 0.1;
  for (std::size_t row = 0; row < coverage.rows; ++row)
    for (std::size_t column = 0; column < coverage.columns; ++column) {
      const std::size_t first = column;
      while (column < coverage.columns && !alive[row * coverage.columns + column])
        ++column;
      if (column == first) continue;
      const PointMm& cell = cells.cell();
      const PointMm from(static_cast<double>(first), static_cast<double>(row));
      const PointMm to(static_cast<double>(column), static_cast<double>(row + 1));
      const PointMm more(margin, margin);
      dead.add(error.fingerAt(from.cwiseProduct(cell)) - more,
               error.fingerAt(to.cwiseProduct(cell)) + more);
    }
}

void addSilentTargets(const Measurement& measurement, const TapFigures& taps, DeadPlaces& dead) {
  const PointMm around(2.5, 2.5);
  for (const TapTarget& target : taps.targets)
    if (target.taps.empty() && target.missed > 0) {
      const PointMm at = target.at.cwiseMin(measurement.size.point({1, 1}));
      dead.add(at - around, at + around);
    }
}

/// The usual time between two reports of a touch, as a rate.
std::optional<double> usualRate(const Measurement& measurement) {
  std::vector<double> intervals;
  for (const Trace& trace : measurement.traces) {
    if (!measurement.isTimed(trace)) continue;
    for (std::size_t i = 1; i < trace.samples.size(); ++i)
      intervals.push_back((trace.samples[i].time - trace.samples[i - 1].time).count());
  }
  const double usual = quantile(std::move(intervals), 0.5);
  return usual > 0 ? std::optional(1 / usual) : std::nullopt;
}

std::string numbers(std::span<const double> values) {
  std::string text;
  for (const double value : values)
    text += fmt::format(" {:.6g}", value);
  return text;
}

void describeError(std::string_view name, const ReplayedPanel::Error& error,
                   std::vector<std::string>& properties) {
  properties.push_back(fmt::format("{} columns{}", name, numbers(error.columns)));
  std::span<const double> values = error.values;
  for (const double row : error.rows) {
    properties.push_back(
        fmt::format("{} row {:.6g}{}", name, row, numbers(values.first(error.columns.size()))));
    values = values.subspan(error.columns.size());
  }
}

}  // namespace

ReplayedPanel replayedPanel(const Measurement& original) {
  ReplayedPanel panel;
  panel.rate = usualRate(original);
  const PointMm corner = original.size.point({1, 1});
  const auto takeNoise = [&](const Analysis& analysis) {
    if (const auto noise = noiseOf(analysis)) panel.noise = noise->cwiseQuotient(corner);
  };
  const Orientation orientation = orientationOf(original);
  if (orientation.independence < tooAlike) {
    // Nothing else can be told of it.
    panel.directions = orientation.map;
    takeNoise(analyse(original));
    panel.hasError = panel.hasCoverage = true;
    return panel;
  }
  panel.directions = orientation.whole;
  Measurement measurement = turnedBack(original, orientation.whole);
  // Times of several sources have nothing in common.
  const PointMm drift = measurement.sources.size() == 1 ? driftOf(measurement) : PointMm::Zero();
  panel.drift = drift.cwiseQuotient(corner);
  if (drift.norm() > 0) measurement = withoutDrift(measurement, drift);
  const Analysis analysis = analyse(measurement);
  takeNoise(analysis);

  const PanelError error(analysis, measurement.size);
  panel.errorX = error.gridX();
  panel.errorY = error.gridY();
  panel.hasError = analysis.field.has_value();
  DeadPlaces dead(measurement.size, panel.dead);
  for (const bool upright : {true, false})
    addSilences(measurement, analysis, error, upright, dead);
  if (analysis.taps) addSilentTargets(measurement, *analysis.taps, dead);
  if (analysis.coverage && analysis.coverage->part > 0) {
    panel.hasCoverage = true;
    const double noise = panel.noise ? panel.noise->cwiseProduct(corner).maxCoeff() : 0;
    addCells(measurement, *analysis.coverage, error, noise, dead);
  }
  return panel;
}

void describePanel(const ReplayedPanel& panel, std::vector<std::string>& properties) {
  const auto clamped = [](double value, double least, double most) {
    return std::isfinite(value) ? std::clamp(value, least, most) : least;
  };
  // The simulator's own limits; what is beyond them no panel does.
  if (panel.rate) properties.push_back(fmt::format("rate {:.6g}", clamped(*panel.rate, 1, 1000)));
  if (panel.noise)
    properties.push_back(fmt::format("noise {:.6g} {:.6g}", clamped(panel.noise->x(), 0, 1),
                                     clamped(panel.noise->y(), 0, 1)));
  if (panel.drift.norm() > 0)
    properties.push_back(fmt::format("drift {:.6g} {:.6g}", clamped(panel.drift.x(), -1, 1),
                                     clamped(panel.drift.y(), -1, 1)));
  const Eigen::Matrix2d& map = panel.directions;
  if (map != Eigen::Matrix2d::Identity()) {
    const auto factor = [&](double value) { return clamped(value, -farthest, farthest); };
    const Eigen::Vector2d half(0.5, 0.5);
    const Eigen::Vector2d shift = half - map * half;
    properties.push_back(fmt::format("directions {:.6g} {:.6g} {:.6g} {:.6g} {:.6g} {:.6g}",
                                     factor(map(0, 0)), factor(map(0, 1)), factor(shift.x()),
                                     factor(map(1, 0)), factor(map(1, 1)), factor(shift.y())));
  }
  if (!panel.errorX.values.empty()) {
    describeError("error-x", panel.errorX, properties);
    describeError("error-y", panel.errorY, properties);
  }
  for (const auto& [from, to] : panel.dead)
    properties.push_back(
        fmt::format("dead {:.6g} {:.6g} {:.6g} {:.6g}", from.x, from.y, to.x, to.y));
}

}  // namespace touch::commission
