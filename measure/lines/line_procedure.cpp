#include "measure/lines/line_procedure.h"

#include <algorithm>
#include <utility>

#include "drawing/stroke.h"

namespace touch::measure {

namespace {

constexpr std::size_t fewestSamples = 4;
constexpr std::size_t outsideLimitMessage = 22;
constexpr std::size_t tooManyPointsMessage = 24;

bool counts(const Trace& trace, const Guide& guide) {
  return trace.task == guide.name && trace.blame != Blame::hand && !trace.samples.empty();
}

std::size_t sourceIn(Measurement& measurement, const Source& source) {
  const auto found = std::ranges::find(measurement.sources, source);
  if (found == measurement.sources.end()) {
    measurement.sources.push_back(source);
    return measurement.sources.size() - 1;
  }
  return static_cast<std::size_t>(found - measurement.sources.begin());
}

Source pointerSource(TwipsSize screen, bool timed, std::string from) {
  return {SourceKind::pointer, static_cast<double>(screen.width),
          static_cast<double>(screen.height), timed, std::move(from)};
}

/// What a measurement says of one line when only these strokes of it are there.
LineFigures figuresOf(const Measurement& measurement, const Guide& guide,
                      std::vector<Trace> traces) {
  Measurement part;
  part.size = measurement.size;
  part.limits = measurement.limits;
  part.sources = measurement.sources;
  part.traces = std::move(traces);
  for (const Trace& trace : measurement.traces)
    if (trace.task == guide.name && trace.blame == Blame::hand) part.traces.push_back(trace);
  return measureLine(part, guide);
}

/// The others have a test of their own.
std::vector<const Guide*> straightGuidesOf(LineSet set) {
  auto guides = guidesOf(set);
  std::erase_if(guides, [](const Guide* guide) {
    return guide->back || (guide->from.x != guide->to.x && guide->from.y != guide->to.y);
  });
  return guides;
}

}  // namespace

std::optional<std::size_t> messageOf(StrokeVerdict verdict) {
  switch (verdict) {
    case StrokeVerdict::farOff:
      return outsideLimitMessage;
    case StrokeVerdict::tooManyPoints:
      return tooManyPointsMessage;
    case StrokeVerdict::usable:
    case StrokeVerdict::tooFewSamples:
      break;
  }
  return std::nullopt;
}

LineProcedure::LineProcedure(Measurement& measurement, TwipsSize screen)
    : measurement_(measurement),
      screen_(screen),
      source_(pointerSource(screen, true, "pointer")),
      guides_(straightGuidesOf(measurement.plan.lineSet)) {
  while (current_ < guides_.size() && !kept(*guides_[current_]).empty())
    ++current_;
}

void LineProcedure::use(const std::optional<Source>& reports) {
  source_ = reports.value_or(pointerSource(screen_, true, "pointer"));
}

void LineProcedure::penDown(const PenSample& sample) {
  if (current() == nullptr) return;
  penIsDown_ = true;
  drawn_.push_back(
      {std::string(current()->name), sourceIn(measurement_, source_), Blame::undecided, {}});
  penMove(sample);
}

void LineProcedure::penMove(const PenSample& sample) {
  if (!penIsDown_) return;
  tooMany_ = countDrawn() == Stroke::mostSamples;
  if (!tooMany_)
    drawn_.back().samples.push_back(sampleOf(source_, sample.time,
                                             static_cast<double>(sample.at.x / screen_.width),
                                             static_cast<double>(sample.at.y / screen_.height)));
}

StrokeVerdict LineProcedure::penUp() {
  if (!std::exchange(penIsDown_, false)) return StrokeVerdict::tooFewSamples;
  const auto judged = tooMany_                       ? StrokeVerdict::tooManyPoints
                      : countDrawn() < fewestSamples ? StrokeVerdict::tooFewSamples
                      : wantsBlame()                 ? StrokeVerdict::farOff
                                                     : StrokeVerdict::usable;
  if (judged == StrokeVerdict::tooManyPoints || judged == StrokeVerdict::tooFewSamples) giveUp();
  return judged;
}

void LineProcedure::blame(Blame who) {
  if (who == Blame::hand) return repeat();
  for (Trace& trace : drawn_)
    trace.blame = who;
}

bool LineProcedure::wantsBlame() const {
  return !drawn_.empty() && drawnFigures().farOff;
}

std::size_t LineProcedure::countDrawn() const {
  std::size_t count = 0;
  for (const Trace& trace : drawn_)
    count += trace.samples.size();
  return count;
}

std::vector<TwipsPoint> LineProcedure::samplesOf(const std::vector<Trace>& traces,
                                                 const Guide& guide) const {
  std::vector<TwipsPoint> samples;
  for (const Trace& trace : traces) {
    if (!counts(trace, guide)) continue;
    const Source& source = measurement_.sources[trace.source];
    const auto inTwips = [](double value, double steps, float length) {
      return static_cast<float>(value / steps * static_cast<double>(length));
    };
    for (const Sample& sample : trace.samples)
      samples.push_back({inTwips(sample.x, source.stepsX, screen_.width),
                         inTwips(sample.y, source.stepsY, screen_.height)});
  }
  return samples;
}

std::vector<TwipsPoint> LineProcedure::drawn() const {
  if (penIsDown_ || drawn_.empty()) return {};
  return samplesOf(drawn_, *current());
}

LineFigures LineProcedure::drawnFigures() const {
  return figuresOf(measurement_, *current(), drawn_);
}

std::vector<TwipsPoint> LineProcedure::kept(const Guide& guide) const {
  return samplesOf(measurement_.traces, guide);
}

LineFigures LineProcedure::keptFigures(const Guide& guide) const {
  return measureLine(measurement_, guide);
}

std::size_t LineProcedure::countKept() const {
  return static_cast<std::size_t>(std::ranges::count_if(guides_, [this](const Guide* guide) {
    return std::ranges::any_of(measurement_.traces,
                               [guide](const Trace& trace) { return counts(trace, *guide); });
  }));
}

void LineProcedure::keep() {
  // What was kept before has been drawn again.
  for (Trace& trace : measurement_.traces)
    if (counts(trace, *current())) trace.blame = Blame::hand;
  std::ranges::move(drawn_, std::back_inserter(measurement_.traces));
  giveUp();
  const auto open = [this](const Guide* guide) { return kept(*guide).empty(); };
  const auto next = guides_.begin() + static_cast<std::ptrdiff_t>(current_) + 1;
  auto found = std::find_if(next, guides_.end(), open);
  if (found == guides_.end()) found = std::ranges::find_if(guides_, open);
  current_ = static_cast<std::size_t>(found - guides_.begin());
}

void LineProcedure::giveUp() {
  drawn_.clear();
  penIsDown_ = false;
  tooMany_ = false;
}

void LineProcedure::repeat() {
  for (Trace& trace : drawn_) {
    trace.blame = Blame::hand;
    if (!trace.samples.empty()) measurement_.traces.push_back(std::move(trace));
  }
  giveUp();
}

void LineProcedure::next() {
  if (penIsDown_ || wantsBlame()) return;
  if (!drawn_.empty()) {
    keep();
  } else if (current_ < guides_.size()) {
    ++current_;
  }
}

void LineProcedure::back() {
  if (penIsDown_) return;
  repeat();
  if (current_ > 0) --current_;
}

void LineProcedure::goTo(const Guide& guide) {
  repeat();
  current_ = static_cast<std::size_t>(std::ranges::find(guides_, &guide) - guides_.begin());
}

void LineProcedure::restore(const Guide& guide, const std::vector<TwipsPoint>& samples,
                            const std::string& from) {
  const auto source = sourceIn(measurement_, pointerSource(screen_, false, from));
  // It was kept, so the hand was not to blame.
  Trace& trace =
      measurement_.traces.emplace_back(Trace{std::string(guide.name), source, Blame::panel, {}});
  for (const TwipsPoint& sample : samples)
    trace.samples.push_back({{}, static_cast<double>(sample.x), static_cast<double>(sample.y)});
  while (current_ < guides_.size() && !kept(*guides_[current_]).empty())
    ++current_;
}

}  // namespace touch::measure
