#include "measure/judging/causes.h"

#include <Eigen/Cholesky>
#include <Eigen/LU>
#include <Eigen/QR>
#include <algorithm>
#include <array>
#include <cmath>

#include "measure/judging/field.h"
#include "measure/judging/orientation.h"
#include "support/text/language.h"

namespace touch::measure {

namespace {

constexpr CauseRow table[] = {
    {CauseId::offset, "offset", marked("measure", "Touches are shifted as a whole."),
     marked("measure", "Calibrate.")},
    {CauseId::scale, "scale", marked("measure", "Touches are spread out or pressed together."),
     marked("measure", "Calibrate.")},
    {CauseId::tilt, "tilt", marked("measure", "The panel lies aslant on the screen."),
     marked("measure", "Calibrate with 3 targets or more.")},
    {CauseId::turned, "turned", marked("measure", "Touches are turned or mirrored."),
     marked("measure", "Set the rotation, or turn the plug of the sensor, and calibrate.")},
    {CauseId::swapped, "swapped", marked("measure", "X and Y are exchanged."),
     marked("measure", "Exchange the wires of X and Y, and calibrate.")},
    {CauseId::bow, "bow", marked("measure", "The sheet is bowed: straight lines become bent."),
     marked("measure", "No calibration mends that. See what it leaves, or replace the sensor.")},
    {CauseId::noise, "noise", marked("measure", "Touches tremble."),
     marked("measure", "Check power supply, cable and earth, and measure again.")},
    {CauseId::deadStrip, "dead strip", marked("measure", "A strip of the sensor feels no touch."),
     marked("measure", "Replace the sensor.")},
    {CauseId::jump, "jump", marked("measure", "Touches jump at a line: the sheet is cracked."),
     marked("measure", "Replace the sensor.")},
    {CauseId::drift, "drift", marked("measure", "Touches wander while time passes."),
     marked("measure", "Let it warm up, check supply and plugs, and measure again.")},
    {CauseId::wires, "wires", marked("measure", "The panel does not tell X from Y: wrong wires."),
     marked("measure", "Check the order of the sensor's wires.")},
    {CauseId::hand, "hand", marked("measure", "Each line errs in another way, as hands do."),
     marked("measure", "Draw again, slowly and along a ruler.")},
};

/// Where the courses of the lines are explained as far as a panel can be the reason: by a smooth
/// field, by time, and by one straight crack.
class Model {
 public:
  static constexpr int fieldDegree = 3;

  Model(const PanelSize& size, std::vector<ErrorAt> errors, int degree, bool timed,
        std::size_t lines);

  bool isKnown() const { return count_ > terms(); }
  const Eigen::VectorXd& weights() const { return weights_; }
  /// The doubt of a weighted sum of weights: its standard error. Neighbouring stations err alike,
  /// so that a line counts as a few of them only.
  double doubt(const Eigen::VectorXd& sum) const {
    return std::sqrt(std::max(sum.dot(covariance_ * sum), 0.0));
  }
  Eigen::Index terms() const { return columns_.cols(); }
  Eigen::Index perDirection() const { return perDirection_; }
  double left() const { return std::sqrt(left_.squaredNorm() / static_cast<double>(count_)); }
  double duration() const { return duration_; }

  struct Crack {
    bool upright = false;  ///< at an x, else at a y
    double place = 0;      ///< mm
    double size = 0;       ///< mm by which touches jump there
    double explains = 0;   ///< part of what the field leaves, 0 to 1
    std::array<Eigen::VectorXd, 2> columns;
  };
  Crack findCrack() const;
  void add(const Crack& crack);

 private:
  void solve();

  std::vector<ErrorAt> errors_;
  PanelSize size_;
  Eigen::Index count_;
  Eigen::Index perDirection_;
  double fewer_ = 1;  ///< stations that count as one
  double duration_ = 0;
  Eigen::MatrixXd columns_;
  Eigen::VectorXd values_;
  Eigen::VectorXd weights_;
  Eigen::VectorXd left_;
  Eigen::MatrixXd covariance_;
};

Model::Model(const PanelSize& size, std::vector<ErrorAt> errors, int degree, bool timed,
             std::size_t lines)
    : errors_(std::move(errors)),
      size_(size),
      count_(static_cast<Eigen::Index>(errors_.size())),
      perDirection_((degree + 1) * (degree + 2) / 2) {
  constexpr double perLine = 6;
  const auto count = static_cast<double>(count_);
  fewer_ = std::max(count / (perLine * static_cast<double>(std::max<std::size_t>(lines, 1))), 1.0);
  columns_.resize(count_, 2 * perDirection_ + (timed ? 2 : 0));
  values_.resize(count_);
  if (!isKnown()) return;
  const auto [first, last] = std::ranges::minmax(errors_, {}, &ErrorAt::time);
  duration_ = last.time - first.time;
  for (Eigen::Index i = 0; i < count_; ++i) {
    const ErrorAt& error = errors_[static_cast<std::size_t>(i)];
    const Eigen::VectorXd field = polynomials(error.at, size, degree);
    columns_.row(i).head(perDirection_) = error.direction.x() * field.transpose();
    columns_.row(i).segment(perDirection_, perDirection_) = error.direction.y() * field.transpose();
    if (timed) {
      const double time = (error.time - first.time) / std::max(duration_, 1e-9) - 0.5;
      columns_.row(i).tail<2>() = time * error.direction.transpose();
    }
    values_(i) = error.error;
  }
  solve();
}

void Model::solve() {
  const Eigen::MatrixXd squares =
      columns_.transpose() * columns_ +
      1e-6 * Eigen::MatrixXd::Identity(columns_.cols(), columns_.cols());
  const Eigen::LDLT<Eigen::MatrixXd> solver(squares);
  weights_ = solver.solve(columns_.transpose() * values_);
  left_ = values_ - columns_ * weights_;
  const auto freedom = static_cast<double>(count_ - columns_.cols());
  covariance_ = solver.solve(Eigen::MatrixXd::Identity(squares.rows(), squares.cols())) *
                (fewer_ * left_.squaredNorm() / std::max(freedom, 1.0));
}

Model::Crack Model::findCrack() const {
  Crack best;
  if (!isKnown()) return best;
  const Eigen::MatrixXd squares =
      columns_.transpose() * columns_ +
      1e-6 * Eigen::MatrixXd::Identity(columns_.cols(), columns_.cols());
  const Eigen::LDLT<Eigen::MatrixXd> solver(squares);
  constexpr int places = 45;
  for (const bool upright : {true, false})
    for (int place = 1; place < places; ++place) {
      constexpr double margin = 0.08;  // beyond it few lines would be on the other side
      const double part = std::lerp(margin, 1 - margin, static_cast<double>(place) / places);
      const double at = part * (upright ? size_.width : size_.height).value;
      Eigen::MatrixX2d steps(count_, 2);
      for (Eigen::Index i = 0; i < count_; ++i) {
        const ErrorAt& error = errors_[static_cast<std::size_t>(i)];
        const double side = (upright ? error.at.x() : error.at.y()) < at ? -0.5 : 0.5;
        steps.row(i) = side * error.direction.transpose();
      }
      // Only what the others cannot explain counts.
      const Eigen::MatrixX2d apart = steps - columns_ * solver.solve(columns_.transpose() * steps);
      const Eigen::Vector2d jump = (apart.transpose() * apart + 1e-6 * Eigen::Matrix2d::Identity())
                                       .ldlt()
                                       .solve(apart.transpose() * left_);
      const double explains =
          jump.dot(apart.transpose() * left_) / std::max(left_.squaredNorm(), 1e-12);
      if (explains <= best.explains) continue;
      best = {upright, at, jump.norm(), explains, {steps.col(0), steps.col(1)}};
    }
  return best;
}

void Model::add(const Crack& crack) {
  columns_.conservativeResize(Eigen::NoChange, columns_.cols() + 2);
  columns_.rightCols<2>() << crack.columns[0], crack.columns[1];
  solve();
}

/// Gathers causes that break their limits.
class Suspects {
 public:
  /// `doubt` is a standard error; twice that is taken off.
  void add(CauseId id, double value, double doubt, double limit, std::vector<Sign> signs) {
    const double weight = limit > 0 ? (value - 2 * doubt) / limit : 0;
    if (weight >= 1) found_.push_back({id, weight, std::move(signs)});
  }
  std::vector<Cause> inOrder() && {
    std::ranges::stable_sort(found_, std::ranges::greater{}, &Cause::weight);
    return std::move(found_);
  }

 private:
  std::vector<Cause> found_;
};

constexpr const char* mm = "mm";

/// What the field's lowest and higher terms mean.
void judgeField(const Model& model, const Measurement& measurement, Suspects& suspects) {
  const Eigen::VectorXd& weights = model.weights();
  const Eigen::Index y = model.perDirection();
  const Millimetres side = std::min(measurement.size.width, measurement.size.height);
  const auto limit = [&](Length length) { return measurement.limits[length].on(side).value; };
  // Term 0 is constant, term 1 goes with x, term 2 with y.
  const auto pair = [&](CauseId id, Eigen::Index first, Eigen::Index second, double most,
                        const char* ofX, const char* ofY) {
    Eigen::VectorXd sum = Eigen::VectorXd::Zero(weights.size());
    const double value = std::hypot(weights(first), weights(second));
    if (value <= 0) return;
    sum(first) = weights(first) / value;
    sum(second) = weights(second) / value;
    suspects.add(id, value, model.doubt(sum), most,
                 {{ofX, weights(first), mm}, {ofY, weights(second), mm}});
  };
  pair(CauseId::offset, 0, y, limit(Length::offset), marked("measure", "to the right"),
       marked("measure", "downwards"));
  pair(CauseId::scale, 1, y + 2, limit(Length::scale), marked("measure", "in x, at the edge"),
       marked("measure", "in y, at the edge"));
  // A line drifts from one edge to the other by twice its weight.
  pair(CauseId::tilt, 2, y + 1, limit(Length::tilt) / 2,
       marked("measure", "upright lines, at their ends"),
       marked("measure", "level lines, at their ends"));

  double most = 0;
  double doubt = 0;
  for (int step = 0; step < 81; ++step) {
    const int row = step / 9;
    const PointMm at = measurement.size.point({step % 9 / 8.0, row / 8.0});
    Eigen::VectorXd bent = polynomials(at, measurement.size, Model::fieldDegree);
    bent.head<3>().setZero();
    const Eigen::Vector2d error(bent.dot(weights.head(y)), bent.dot(weights.segment(y, y)));
    if (error.norm() <= most) continue;
    most = error.norm();
    Eigen::VectorXd sum = Eigen::VectorXd::Zero(weights.size());
    sum.head(y) = bent * (error.x() / most);
    sum.segment(y, y) = bent * (error.y() / most);
    doubt = model.doubt(sum);
  }
  suspects.add(CauseId::bow, most, doubt, limit(Length::straightness),
               {{marked("measure", "bent by up to"), most, mm}});
}

/// From the first line to the last.
struct Drift {
  PointMm by = PointMm::Zero();
  double doubt = 0;  ///< standard error of its length
};

Drift driftOf(const Model& model, bool timed) {
  if (!timed || !model.isKnown()) return {};
  const Eigen::Index at = 2 * model.perDirection();
  const PointMm by = model.weights().segment<2>(at);
  if (by.norm() <= 0) return {};
  Eigen::VectorXd sum = Eigen::VectorXd::Zero(model.terms());
  sum.segment<2>(at) = by.normalized();
  return {by, model.doubt(sum)};
}

void judgeTime(const Model& model, bool timed, const Measurement& measurement,
               std::span<const RestFigures> rests, Suspects& suspects) {
  const double limit = measurement.limits[Length::drift].mm.value_or(Millimetres{}).value;
  const auto [by, doubt] = driftOf(model, timed);
  const double value = by.norm();
  std::vector<double> drifts;
  for (const RestFigures& rest : rests)
    drifts.push_back(rest.drift);
  const double rest = quantile(drifts, 0.5);
  if (rest > value - 2 * doubt)
    suspects.add(CauseId::drift, rest, 0, limit,
                 {{marked("measure", "during a resting touch"), rest, mm}});
  else
    suspects.add(CauseId::drift, value, doubt, limit,
                 {{marked("measure", "while the lines were drawn"), value, mm}});
}

void judgeNoise(const Measurement& measurement, std::span<const LineFigures> lines,
                std::span<const RestFigures> rests, Suspects& suspects) {
  std::vector<double> figures;
  for (const RestFigures& rest : rests)
    if (rest.samples > 2) figures.push_back(rest.noiseRms);
  const bool rested = !figures.empty();
  if (!rested)
    for (const LineFigures& line : lines)
      if (!line.course.empty()) figures.push_back(line.scatter);
  const double noise = quantile(figures, 0.5);
  const LengthLimit& limit = measurement.limits[rested ? Length::restNoise : Length::scatter];
  const Millimetres side = std::min(measurement.size.width, measurement.size.height);
  suspects.add(
      CauseId::noise, noise, 0, limit.on(side).value,
      {{rested ? marked("measure", "RMS at rest") : marked("measure", "RMS on lines"), noise, mm}});
}

/// A strip shows as gaps at the same place of neighbouring lines.
void judgeGaps(const Measurement& measurement, std::span<const LineFigures> lines,
               Suspects& suspects) {
  for (const bool upright : {true, false}) {
    const double length = (upright ? measurement.size.height : measurement.size.width).value;
    const double limit = measurement.limits[Length::gap].on({length}).value;
    std::vector<const LineFigures*> row;
    for (const LineFigures& line : lines) {
      const bool vertical = line.guide->from.x == line.guide->to.x;
      const bool horizontal = line.guide->from.y == line.guide->to.y;
      if ((upright ? vertical : horizontal) && !line.guide->back && !line.course.empty())
        row.push_back(&line);
    }
    const auto silentAt = [&](const LineFigures& line, double place) {
      return std::ranges::any_of(line.gaps, [&](const Gap& gap) {
        return gap.width() > limit && !gap.reportsKeptComing && gap.from <= place &&
               place <= gap.to;
      });
    };
    std::size_t most = 0;
    Gap widest;
    for (const LineFigures* line : row)
      for (const Gap& gap : line->gaps) {
        const double place = (gap.from + gap.to) / 2;
        std::size_t run = 0;
        for (const LineFigures* other : row) {
          run = silentAt(*other, place) ? run + 1 : 0;
          if (run > most || (run == most && gap.width() > widest.width())) {
            most = run;
            widest = gap;
          }
        }
      }
    constexpr std::size_t fewest = 3;  // lines in a row; two may be the hand's
    if (most < fewest) continue;
    const double share = static_cast<double>(most) / static_cast<double>(row.size());
    suspects.add(CauseId::deadStrip, 1 + 3 * share, 0, 1,
                 {{upright ? marked("measure", "from the upper edge")
                           : marked("measure", "from the left edge"),
                   widest.from, mm},
                  {marked("measure", "wide"), widest.width(), mm},
                  {marked("measure", "lines with a gap there"), static_cast<double>(most), ""}});
  }
}

void judgeDirections(const Orientation& orientation, Suspects& suspects) {
  if (orientation.independence < tooAlike) {
    suspects.add(CauseId::wires, tooAlike * 10 / (orientation.independence + 0.02), 0, 1,
                 {{marked("measure", "of both directions told apart"),
                   orientation.independence * 100, "%"}});
    return;
  }
  const Eigen::Matrix2d straight = Eigen::Matrix2d::Identity();
  if (orientation.whole == straight) return;
  // It is nearer to that than to what it should be; a whole turn is 2 away.
  const double against = (orientation.map - straight).norm();
  const double rest = (orientation.map - orientation.whole).norm();
  const bool exchanged = orientation.whole(0, 1) == 1 && orientation.whole(1, 0) == 1;
  suspects.add(exchanged ? CauseId::swapped : CauseId::turned, 10 * against / (rest + 1), 0, 1,
               {{marked("measure", "x follows x by"), orientation.map(0, 0) * 100, "%"},
                {marked("measure", "y follows y by"), orientation.map(1, 1) * 100, "%"}});
}

std::vector<ErrorAt> thinned(std::span<const LineFigures> lines, const PanelSize& size) {
  constexpr std::size_t every = 4;
  std::vector<ErrorAt> some;
  const auto all = errorsOf(lines, size);
  for (std::size_t i = 0; i < all.size(); i += every)
    some.push_back(all[i]);
  return some;
}

/// Only a line that was drawn twice tells time from place.
bool tellsTime(const Measurement& measurement, std::span<const LineFigures> lines) {
  const bool again = std::ranges::any_of(
      lines, [](const LineFigures& line) { return line.guide->back && !line.course.empty(); });
  return again && measurement.sources.size() == 1 && measurement.sources[0].timed;
}

std::size_t countDrawn(std::span<const LineFigures> lines) {
  return static_cast<std::size_t>(
      std::ranges::count_if(lines, [](const LineFigures& line) { return !line.course.empty(); }));
}

void judgeCourses(const Measurement& measurement, std::span<const LineFigures> lines,
                  std::span<const RestFigures> rests, Suspects& suspects) {
  const std::size_t drawn = countDrawn(lines);
  const int degree = supportedDegree(lines);
  const bool timed = tellsTime(measurement, lines);
  const auto errors = thinned(lines, measurement.size);
  if (degree < Model::fieldDegree) return;
  Model model(measurement.size, errors, Model::fieldDegree, timed, drawn);
  if (!model.isKnown()) return;
  Model finest(measurement.size, errors, degree, timed, drawn);

  const Millimetres side = std::min(measurement.size.width, measurement.size.height);
  const double straightness = measurement.limits[Length::straightness].on(side).value;
  constexpr double clearly = 0.5;
  // Of the limit, RMS. Where few lines are nearly straight, steps of the pointer look like a large
  // jump that a bow hides; what nobody sees is no crack.
  constexpr double seen = 0.1;
  const auto crack = model.findCrack();
  if (crack.explains >= clearly && crack.size >= straightness &&
      std::sqrt(crack.explains) * model.left() >= seen * straightness) {
    suspects.add(CauseId::jump, crack.size, 0, straightness,
                 {{crack.upright ? marked("measure", "from the left edge")
                                 : marked("measure", "from the upper edge"),
                   crack.place, mm},
                  {marked("measure", "jump"), crack.size, mm}});
    model.add(crack);
    finest.add(crack);
  }
  judgeField(model, measurement, suspects);
  judgeTime(model, timed, measurement, rests, suspects);
  if (!finest.isKnown()) return;
  suspects.add(CauseId::hand, finest.left(), 0,
               measurement.limits[Length::straightnessRms].on(side).value,
               {{marked("measure", "RMS that differs from line to line"), finest.left(), mm}});
}

}  // namespace

std::span<const CauseRow> causeTable() {
  return table;
}

const CauseRow& rowOf(CauseId id) {
  return table[static_cast<std::size_t>(id)];
}

std::optional<PointMm> driftOfLines(const Measurement& measurement,
                                    std::span<const LineFigures> lines) {
  if (!tellsTime(measurement, lines) || supportedDegree(lines) < Model::fieldDegree)
    return std::nullopt;
  const Model model(measurement.size, thinned(lines, measurement.size), Model::fieldDegree, true,
                    countDrawn(lines));
  const auto [by, doubt] = driftOf(model, true);
  constexpr double sure = 3;       // standard errors
  constexpr double noticed = 0.1;  // mm; less is no drift to anybody
  if (by.norm() <= std::max(sure * doubt, noticed) || model.duration() <= 0) return std::nullopt;
  return by / model.duration();
}

std::vector<Cause> findCauses(const Measurement& measurement, std::span<const LineFigures> lines,
                              std::span<const RestFigures> rests) {
  Suspects suspects;
  const Orientation orientation = orientationOf(measurement);
  judgeDirections(orientation, suspects);
  judgeNoise(measurement, lines, rests, suspects);
  // Where the directions are mixed, nothing else can be told.
  if (orientation.independence < tooAlike) return std::move(suspects).inOrder();
  if (orientation.whole == Eigen::Matrix2d::Identity()) {
    judgeGaps(measurement, lines, suspects);
    judgeCourses(measurement, lines, rests, suspects);
    return std::move(suspects).inOrder();
  }
  const Measurement turned = turnedBack(measurement, orientation.whole);
  std::vector<LineFigures> again;
  for (const LineFigures& line : lines)
    again.push_back(measureLine(turned, *line.guide));
  judgeGaps(turned, again, suspects);
  judgeCourses(turned, again, rests, suspects);
  return std::move(suspects).inOrder();
}

}  // namespace touch::measure
