#include "serial/raw_drawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto drawingTick = 50ms;
constexpr float fingerWidth = 20 * twipsPerPixel;

float fraction(std::uint16_t value, const TouchReport& report) {
  return static_cast<float>(value) / static_cast<float>(report.greatest);
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
    : port_(std::move(port)),
      canvas_(std::move(canvas)),
      decoder_(decoder),
      timer_(clock.makeTimer([this] { tick(); })) {}

void RawDrawing::start() {
  timer_->start(drawingTick);
}

void RawDrawing::stop() {
  timer_->stop();
  breakStroke();
}

void RawDrawing::tick() {
  if (ticking_) return;
  ticking_ = true;
  if (noticeIsUp()) ++noticeTicks_;
  if (!options.paused && port_.isFree()) {
    const auto bytes = port_.port.readAll();
    if (bytes.empty()) {
      if (decoder_.pending() > 0) rsbreport();
      breakStroke();
      if (port_.tellLoss()) timer_->stop();
    } else {
      const std::uint64_t offset = decoder_.received();
      if (options.monitorOnly) {
        decoder_.passOver(bytes.size());
        account(offset, bytes.size());
      } else {
        for (std::span<const std::uint8_t> rest = bytes; !rest.empty();) {
          rest = rest.subspan(decoder_.append(rest));
          rsbreport();
        }
      }
      monitor_.add(bytes, offset);
      keepShown();
    }
  }
  ticking_ = false;
}

// Draws what the ring holds, and leaves in it only a packet's beginning.
void RawDrawing::rsbreport() {
  timer_->stop();
  found_.clear();
  decoder_.decode(found_);
  for (const TouchReport& report : found_)
    draw(report);
  reportCount_ += found_.size();
  timer_->start(drawingTick);
}

// An idle line ends the stroke: the finger may have gone without a word.
void RawDrawing::breakStroke() {
  decoder_.reset();
  previous_.reset();
}

void RawDrawing::draw(const TouchReport& report) {
  const float x = fraction(report.x, report);
  const float y = fraction(report.y, report);
  if (!observed_) observed_ = CoordinateRanges{{x, x}, {y, y}};
  include(observed_->x, x);
  include(observed_->y, y);

  const TwipsPoint place = placeOf(report);
  const Colour colour = paletteColour(pen.colour);
  if (previous_ && pen.mode == PenMode::lines) {
    canvas_.surface.line(*previous_, place, colour, pen.width);
  } else {
    canvas_.surface.point(place, colour, pen.width);
  }
  previous_ = report.touching ? std::optional(place) : std::nullopt;
  dots_.push_back({report, place});
  account(report.offset, report.length);
  if (options.followCursor) moveCursorTo(place);
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

void RawDrawing::fit(bool on) {
  previous_.reset();
  shown_ = {};
  if (!on || !observed_) return;
  // A single line or dot spans no range in one direction or in both.
  const auto spans = [](const CoordinateRange& range) { return range.greatest > range.least; };
  if (spans(observed_->x)) shown_.x = observed_->x;
  if (spans(observed_->y)) shown_.y = observed_->y;
}

void RawDrawing::clearDrawing() {
  canvas_.surface.clear();
  previous_.reset();
  dots_.clear();
}

void RawDrawing::clearMonitor() {
  monitor_.clear();
  dots_.clear();
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
  while (!dots_.empty() && dots_.back().report.offset >= monitor_.endOffset())
    dots_.pop_back();
  while (!accounted_.empty() && accounted_.back().begin >= monitor_.endOffset())
    accounted_.pop_back();
}

std::optional<TextRange> RawDrawing::bytesOfDotAt(TwipsPoint place) const {
  const auto nearest = std::ranges::min_element(
      dots_, {}, [place](const Dot& dot) { return distance(dot.place, place); });
  if (nearest == dots_.end() || distance(nearest->place, place) > fingerWidth) return std::nullopt;
  return monitor_.rangeOf(nearest->report.offset, nearest->report.length);
}

std::optional<TwipsPoint> RawDrawing::dotOfTextAt(std::size_t position) const {
  const auto offset = monitor_.offsetAt(position);
  if (!offset) return std::nullopt;
  const auto behind = std::ranges::upper_bound(dots_, *offset, {},
                                               [](const Dot& dot) { return dot.report.offset; });
  if (behind == dots_.begin()) return std::nullopt;
  const Dot& dot = *(behind - 1);
  if (*offset >= dot.report.offset + dot.report.length) return std::nullopt;
  return dot.place;
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
