#include "serial/rawdrawing/raw_drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "serial/commands/h2d.h"
#include "serial/receiving/packet_field.h"
#include "support/text/language.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto drawingTick = 50ms;
// Seven of them are long enough to read the notice. Whoever draws has no need of it.
constexpr auto noticeTick = 350ms;
// All that is drawn is drawn anew, which may take longer than a tick.
constexpr auto leastBetweenFits = 250ms;
constexpr float fingerWidth = 20 * twipsPerPixel;

float fraction(RawCounts count, const TouchReport& report) {
  return static_cast<float>(fractionOf(count, report.greatest));
}

float distance(TwipsPoint one, TwipsPoint other) {
  return std::hypot(one.x - other.x, one.y - other.y);
}

int pixel(float twips, float end) {
  return static_cast<int>(std::clamp(twips, 0.0F, end - twipsPerPixel) / twipsPerPixel);
}

void include(CoordinateRange& range, float value) {
  range.least = std::min(range.least, value);
  range.greatest = std::max(range.greatest, value);
}

}  // namespace

RawDrawing::RawDrawing(Clock& clock, ReceivingPort port, Canvas canvas,
                       const ReportDecoder& decoder)
    : clock_(clock),
      port_(std::move(port)),
      canvas_(std::move(canvas)),
      decoder_(decoder),
      timer_(clock.makeTimer([this] { tick(); })) {}

void RawDrawing::start() {
  timer_->start(noticeIsUp() ? noticeTick : drawingTick);
}

void RawDrawing::stop() {
  timer_->stop();
  breakStroke();
}

void RawDrawing::tick() {
  if (noticeIsUp() && ++noticeTicks_ == noticeLimit) timer_->start(drawingTick);
  if (!options.paused) port_.gate.run([this] { read(); });
}

void RawDrawing::read() {
  const auto bytes = port_.port.readAll();
  if (bytes.empty()) {
    if (decoder_.pending() > 0) rsbreport();
    breakStroke();
    follow();
    if (noticeIsUp()) timer_->start(noticeTick);
    // The device may come back.
    port_.tellLoss();
    return;
  }
  const std::uint64_t offset = decoder_.received();
  if (options.monitorOnly) {
    decoder_.passOver(bytes.size());
    account(offset, bytes.size());
  } else {
    for (std::span<const std::uint8_t> rest = bytes; !rest.empty();) {
      rest = rest.subspan(decoder_.append(rest));
      rsbreport();
    }
    if (clock_.now() - fitted_ >= leastBetweenFits) follow();
  }
  monitor_.add(bytes, offset);
  keepShown();
}

// Draws what waits to be decoded, and leaves only a packet's beginning.
void RawDrawing::rsbreport() {
  timer_->stop();
  found_.clear();
  decoder_.decode(found_);
  for (const TouchReport& report : found_)
    add(report);
  reportCount_ += found_.size();
  timer_->start(drawingTick);
}

// An idle line ends the stroke: the finger may have gone without a word.
void RawDrawing::breakStroke() {
  decoder_.reset();
  inStroke_ = false;
}

void RawDrawing::add(const TouchReport& report) {
  const float x = fraction(report.x, report);
  const float y = fraction(report.y, report);
  if (!observed_) observed_ = CoordinateRanges{{x, x}, {y, y}};
  include(observed_->x, x);
  include(observed_->y, y);

  dots_.push_back({report, inStroke_ && pen.mode == PenMode::lines,
                   static_cast<std::uint8_t>(pen.width), static_cast<std::uint8_t>(pen.colour)});
  inStroke_ = report.touching;
  draw(dots_.size() - 1);
  if (dots_.size() > mostDots) dots_.pop_front();
  account(report.offset, report.length);
  if (options.followCursor) moveCursorTo(placeOf(report));
}

void RawDrawing::draw(std::size_t dot) {
  const auto& [report, joined, width, colour] = dots_[dot];
  if (joined && dot > 0) {
    canvas_.surface.line(placeOf(dots_[dot - 1].report), placeOf(report), paletteColour(colour),
                         width);
  } else {
    canvas_.surface.point(placeOf(report), paletteColour(colour), width);
  }
}

void RawDrawing::drawAll() {
  canvas_.surface.clear();
  if (onCleared) onCleared();
  for (std::size_t dot = 0; dot < dots_.size(); ++dot)
    draw(dot);
}

void RawDrawing::moveCursorTo(TwipsPoint place) const {
  if (!canvas_.moveCursor) return;
  canvas_.moveCursor({pixel(place.x, canvas_.area.width), pixel(place.y, canvas_.area.height)});
}

TwipsPoint RawDrawing::placeOf(const TouchReport& report) const {
  const auto scaled = [](float value, const CoordinateRange& range, float length) {
    return std::nearbyint((value - range.least) / (range.greatest - range.least) * length);
  };
  return {scaled(fraction(report.x, report), shown_.x, canvas_.area.width),
          scaled(fraction(report.y, report), shown_.y, canvas_.area.height)};
}

void RawDrawing::resize(TwipsSize area) {
  if (area == canvas_.area) return;
  canvas_.area = area;
  drawAll();
}

void RawDrawing::fit(bool on) {
  fits_ = on;
  follow();
}

CoordinateRanges RawDrawing::fittingRanges() const {
  CoordinateRanges ranges;
  if (!fits_ || !observed_) return ranges;
  // A single line or dot spans no range in one direction or in both.
  const auto spans = [](const CoordinateRange& range) { return range.greatest > range.least; };
  if (spans(observed_->x)) ranges.x = observed_->x;
  if (spans(observed_->y)) ranges.y = observed_->y;
  return ranges;
}

void RawDrawing::follow() {
  const CoordinateRanges fitting = fittingRanges();
  if (fitting == shown_) return;
  shown_ = fitting;
  fitted_ = clock_.now();
  drawAll();
}

void RawDrawing::clearDrawing() {
  dots_.clear();
  observed_.reset();
  inStroke_ = false;
  drawAll();
}

void RawDrawing::clearMonitor() {
  monitor_.clear();
  accounted_.clear();
}

void RawDrawing::account(std::uint64_t offset, std::size_t count) {
  const std::uint64_t end = offset + count;
  if (accounted_.empty() || accounted_.back().end < offset) {
    accounted_.push_back({offset, end});
  } else {
    accounted_.back().end = std::max(accounted_.back().end, end);
  }
}

void RawDrawing::keepShown() {
  const auto shown = std::ranges::find_if(
      accounted_, [this](const Stretch& stretch) { return stretch.end > monitor_.firstOffset(); });
  accounted_.erase(accounted_.begin(), shown);
  while (!accounted_.empty() && accounted_.back().begin >= monitor_.endOffset())
    accounted_.pop_back();
}

bool RawDrawing::isShown(const Dot& dot) const {
  return monitor_.firstOffset() <= dot.report.offset && dot.report.offset < monitor_.endOffset();
}

std::optional<TextRange> RawDrawing::bytesOfDotAt(TwipsPoint place) const {
  float least = fingerWidth;
  const Dot* nearest = nullptr;
  for (const Dot& dot : dots_) {
    const float away = distance(placeOf(dot.report), place);
    if (away > least || !isShown(dot)) continue;
    least = away;
    nearest = &dot;
  }
  if (nearest == nullptr) return std::nullopt;
  return monitor_.rangeOf(nearest->report.offset, nearest->report.length);
}

std::optional<TwipsPoint> RawDrawing::dotOfTextAt(std::size_t position) const {
  const auto offset = monitor_.offsetAt(position);
  const TouchReport* const report = offset ? reportAt(*offset) : nullptr;
  if (report == nullptr) return std::nullopt;
  return placeOf(*report);
}

const TouchReport* RawDrawing::reportAt(std::uint64_t offset) const {
  const auto behind =
      std::ranges::upper_bound(dots_, offset, {}, [](const Dot& dot) { return dot.report.offset; });
  if (behind == dots_.begin()) return nullptr;
  const TouchReport& report = (behind - 1)->report;
  return offset < report.offset + report.length ? &report : nullptr;
}

std::string RawDrawing::fieldOfTextAt(std::size_t position) const {
  const auto offset = monitor_.offsetAt(position);
  const TouchReport* const report = offset ? reportAt(*offset) : nullptr;
  if (report == nullptr) return {};
  const auto byteAt = [this](std::uint64_t place) {
    const auto range = monitor_.rangeOf(place, 1);
    return range ? h2d(monitor_.text().substr(range->begin, range->end - range->begin))
                 : std::nullopt;
  };
  const auto first = byteAt(report->offset);
  if (!first) return {};
  const auto place = static_cast<std::size_t>(*offset - report->offset);
  return fieldText(decoder_, static_cast<std::uint8_t>(*first), place, report->length) + ' ' +
         filled(report->touching ? say("rawdrawing", "Touched, X %1, Y %2.")
                                 : say("rawdrawing", "Lifted, X %1, Y %2."),
                {std::to_string(report->x.value), std::to_string(report->y.value)});
}

std::vector<TextRange> RawDrawing::strayText() const {
  std::vector<TextRange> ranges;
  std::uint64_t offset = monitor_.firstOffset();
  const auto add = [&](std::uint64_t end) {
    if (end <= offset) return;
    if (const auto range = monitor_.rangeOf(offset, static_cast<std::size_t>(end - offset))) {
      ranges.push_back(*range);
    }
  };
  for (const Stretch& stretch : accounted_) {
    add(stretch.begin);
    offset = stretch.end;
  }
  add(std::min(decoder_.decided(), monitor_.endOffset()));
  return ranges;
}

}  // namespace touch
