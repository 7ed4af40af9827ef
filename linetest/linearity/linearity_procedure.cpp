#include "linetest/linearity/linearity_procedure.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "drawing/stroke.h"

namespace touch {

namespace {

constexpr std::size_t fewestSamples = 4;
constexpr std::size_t outsideLimitMessage = 22;
constexpr std::size_t tooManyPointsMessage = 24;

float length(const TestLine& line, TwipsSize screen) {
  return line.orientation == Orientation::vertical ? screen.width : screen.height;
}

float spacing(float length) {
  const float margin = length / 32;
  return (length - 2 * margin) / (TestLine::perOrientation - 1);
}

std::size_t indexOf(const TestLine& line) {
  const int first = line.orientation == Orientation::vertical ? 0 : TestLine::perOrientation;
  return static_cast<std::size_t>(first + line.number - 1);
}

TestLine lineAt(std::size_t index) {
  constexpr std::size_t vertical = TestLine::perOrientation;
  return {index < vertical ? Orientation::vertical : Orientation::horizontal,
          static_cast<int>(index % vertical) + 1};
}

}  // namespace

GuidedLine guideOf(const TestLine& line, TwipsSize screen) {
  const float across = length(line, screen);
  return {line.orientation, across / 32 + spacing(across) * static_cast<float>(line.number - 1)};
}

std::string labelOf(const TestLine& line) {
  return lineLabel(line.orientation, line.number);
}

std::optional<TestLine> testLineOf(std::string_view label) {
  for (std::size_t index = 0; index < LinearityProcedure::lines; ++index)
    if (labelOf(lineAt(index)) == label) return lineAt(index);
  return std::nullopt;
}

std::optional<std::size_t> messageOf(StrokeVerdict verdict) {
  switch (verdict) {
    case StrokeVerdict::outsideLimit:
      return outsideLimitMessage;
    case StrokeVerdict::tooManyPoints:
      return tooManyPointsMessage;
    case StrokeVerdict::usable:
    case StrokeVerdict::tooFewSamples:
      break;
  }
  return std::nullopt;
}

std::optional<TestLine> LinearityProcedure::current() const {
  if (current_ == lines) return std::nullopt;
  return lineAt(current_);
}

void LinearityProcedure::penDown(TwipsPoint at) {
  if (current_ == lines) return;
  penIsDown_ = true;
  penMove(at);
}

void LinearityProcedure::penMove(TwipsPoint at) {
  if (!penIsDown_) return;
  tooMany_ = samples_.size() == Stroke::mostSamples;
  if (!tooMany_) samples_.push_back(at);
}

StrokeVerdict LinearityProcedure::penUp() {
  if (!std::exchange(penIsDown_, false)) return StrokeVerdict::tooFewSamples;
  const StrokeVerdict judged = verdict();
  if (judged != StrokeVerdict::usable) repeat();
  return judged;
}

StrokeVerdict LinearityProcedure::verdict() const {
  if (tooMany_) return StrokeVerdict::tooManyPoints;
  if (samples_.size() < fewestSamples) return StrokeVerdict::tooFewSamples;
  const TestLine line = lineAt(current_);
  const GuidedLine guide = guideOf(line, panel_.screen);
  const float furthest = spacing(length(line, panel_.screen)) / 2;
  const bool isOutside =
      std::any_of(samples_.begin(), samples_.end(), [&](const TwipsPoint& sample) {
        return std::abs(across(line.orientation, sample) - guide.position) > furthest;
      });
  return isOutside ? StrokeVerdict::outsideLimit : StrokeVerdict::usable;
}

std::optional<LineResult> LinearityProcedure::drawn() const {
  if (penIsDown_ || samples_.empty()) return std::nullopt;
  const TestLine line = lineAt(current_);
  const GuidedLine guide = guideOf(line, panel_.screen);
  return LineResult{labelOf(line), guide, samples_, measureLine(guide, samples_, panel_)};
}

void LinearityProcedure::accept() {
  auto result = drawn();
  if (!result) return;
  results_[current_] = std::move(result);
  repeat();
  const auto open = [](const auto& kept) { return !kept.has_value(); };
  const auto next = results_.begin() + static_cast<std::ptrdiff_t>(current_) + 1;
  auto found = std::find_if(next, results_.end(), open);
  if (found == results_.end()) found = std::find_if(results_.begin(), results_.end(), open);
  current_ = static_cast<std::size_t>(found - results_.begin());
}

void LinearityProcedure::repeat() {
  samples_.clear();
  penIsDown_ = false;
  tooMany_ = false;
}

void LinearityProcedure::next() {
  if (penIsDown_) return;
  if (drawn()) {
    accept();
  } else if (current_ < lines) {
    repeat();
    ++current_;
  }
}

void LinearityProcedure::back() {
  if (penIsDown_) return;
  repeat();
  if (current_ > 0) --current_;
}

void LinearityProcedure::goTo(const TestLine& line) {
  repeat();
  current_ = indexOf(line);
}

const std::optional<LineResult>& LinearityProcedure::result(const TestLine& line) const {
  return results_.at(indexOf(line));
}

void LinearityProcedure::restore(const TestLine& line, LineResult result) {
  const std::size_t index = indexOf(line);
  results_.at(index) = std::move(result);
  while (current_ < lines && results_[current_])
    ++current_;
}

std::vector<LineResult> LinearityProcedure::results() const {
  std::vector<LineResult> accepted;
  for (const auto& result : results_)
    if (result) accepted.push_back(*result);
  return accepted;
}

}  // namespace touch
