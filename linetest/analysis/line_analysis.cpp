#include "linetest/analysis/line_analysis.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "support/text/number_layout.h"

namespace touch {

namespace {

constexpr float besidePen = 500;  // twips
constexpr float besideLine = 150;

float placeBeside(float pen, float length, float screen) {
  return pen + besidePen + length < screen ? pen + besidePen : pen - length - besidePen;
}

bool overlap(const TwipsRect& a, const TwipsRect& b) {
  return a.corner.x < b.corner.x + b.size.width && b.corner.x < a.corner.x + a.size.width &&
         a.corner.y < b.corner.y + b.size.height && b.corner.y < a.corner.y + a.size.height;
}

std::string sampleLine(std::size_t number, Percent deviation, Percent tolerance) {
  // A minus takes the place of a blank, so that the digits stay below each other.
  std::string line = threeDigits(static_cast<int>(number)) + (deviation.value >= 0 ? "  " : " ");
  line += fixedText(static_cast<double>(deviation.value), 1) + " %";
  if (std::abs(deviation.value) > tolerance.value) line += "  **";
  return line;
}

}  // namespace

float onScreen(float start, float length, float screen) {
  if (start + length > screen) start = screen - length;
  return start < 0 ? 0 : start;
}

int roundedTwips(float position) {
  return static_cast<int>(std::lrint(position));
}

Matching LineMatcher::tryLines(Orientation orientation, int coordinate, int drawWidth) const {
  const bool vertical = orientation == Orientation::vertical;
  const float band = vertical ? bands_.vertical : bands_.horizontal;
  const int first = vertical ? 0 : GuideLines::perOrientation;
  const auto at = static_cast<float>(coordinate);
  for (int index = first; index < first + GuideLines::perOrientation; ++index) {
    const float position = guides_.position(index);
    if (position - band < at && at < position + band) {
      return {LineMatch{index, roundedTwips(position)}, drawWidth};
    }
  }
  return {};
}

Matching LineMatcher::Hpostest(int x, int drawWidth) const {
  return tryLines(Orientation::vertical, x, drawWidth);
}

Matching LineMatcher::Vpostest(int y, int drawWidth) const {
  return tryLines(Orientation::horizontal, y, drawWidth);
}

Matching LineMatcher::postest(int x, int y, int drawWidth) const {
  const Matching vertical = Hpostest(x, drawWidth);
  if (!vertical.line) return Vpostest(y, vertical.drawWidth);
  const auto at = static_cast<float>(y);
  const bool atEdge = at <= bands_.horizontal || at >= guides_.screen().height - bands_.horizontal;
  if (atEdge) return vertical;
  const Matching horizontal = Vpostest(y, vertical.drawWidth);
  if (horizontal.line) return horizontal;
  return {vertical.line, horizontal.drawWidth};
}

bool LineMatcher::hasStrayed(int index, TwipsPoint point) const {
  const Orientation orientation = GuideLines::orientation(index);
  const float at = across(orientation, point);
  const float band = orientation == Orientation::vertical ? bands_.vertical : bands_.horizontal;
  const float position = guides_.position(index);
  return at > position + band || at < position - band;
}

Percent deviation(float coordinate, int position, TwipsSize screen) {
  return {(coordinate - static_cast<float>(position)) / (screen.width / 100)};
}

StrokeStatistics measureStroke(std::span<const TwipsPoint> samples, const LineMatch& line,
                               TwipsSize screen) {
  StrokeStatistics statistics;
  for (const TwipsPoint& sample : samples) {
    const Percent off = deviation(across(line.orientation(), sample), line.position, screen);
    if (statistics.count++ == 0) statistics.maximum = statistics.minimum = off;
    statistics.sum += static_cast<double>(off.value);
    statistics.maximum = std::max(statistics.maximum, off);
    statistics.minimum = std::min(statistics.minimum, off);
  }
  return statistics;
}

std::string lineTitle(int index) {
  return GuideLines::orientation(index) == Orientation::vertical
             ? "Vertical #" + std::to_string(index + 1)
             : "Horizontal #" + std::to_string(index + 1 - GuideLines::perOrientation);
}

std::vector<std::string> resultLines(std::span<const TwipsPoint> samples, const LineMatch& line,
                                     TwipsSize screen, Percent tolerance) {
  const StrokeStatistics statistics = measureStroke(samples, line, screen);
  std::vector<std::string> lines = {
      "",
      "  " + lineTitle(line.index),
      "  AVG :  " + fixedText(statistics.average(), 2),
      "  Max :  " + fixedText(static_cast<double>(statistics.maximum.value), 2),
      "  Min :  " + fixedText(static_cast<double>(statistics.minimum.value), 2),
      "  Qty :  " + std::to_string(statistics.count),
      "",
  };
  for (std::size_t i = 0; i < samples.size(); ++i) {
    // The lines of a horizontal stroke are taken from x like those of a vertical one: the list's
    // readers know the column as the x of each sample. The summary above is the measurement.
    const Percent off = deviation(samples[i].x, line.position, screen);
    lines.push_back(sampleLine(i + 1, off, tolerance));
  }
  return lines;
}

TwipsPoint placeBeside(TwipsPoint pen, TwipsSize size, TwipsSize screen) {
  return {placeBeside(pen.x, size.width, screen.width),
          placeBeside(pen.y, size.height, screen.height)};
}

TwipsPoint clearOf(TwipsPoint corner, TwipsSize size, TwipsSize screen,
                   std::span<const TwipsRect> needed) {
  const TwipsPoint wanted{onScreen(corner.x, size.width, screen.width),
                          onScreen(corner.y, size.height, screen.height)};
  // The nearest place is where it was wanted or at an edge of what is in the way.
  std::vector<float> xs = {wanted.x};
  std::vector<float> ys = {wanted.y};
  for (const auto& [at, taken] : needed) {
    xs.insert(xs.end(), {at.x - size.width, at.x + taken.width});
    ys.insert(ys.end(), {at.y - size.height, at.y + taken.height});
  }
  const auto isFree = [&](TwipsPoint place) {
    return place.x >= 0 && place.y >= 0 && place.x + size.width <= screen.width &&
           place.y + size.height <= screen.height &&
           std::ranges::none_of(needed, [&](const TwipsRect& rect) {
             return overlap({place, size}, rect);
           });
  };
  TwipsPoint best = wanted;
  float shortest = std::numeric_limits<float>::max();
  for (const float x : xs)
    for (const float y : ys) {
      const float way = std::abs(x - wanted.x) + std::abs(y - wanted.y);
      if (way >= shortest || !isFree({x, y})) continue;
      shortest = way;
      best = {x, y};
    }
  return best;
}

TwipsRect aroundLine(const GuideLines& guides, int index) {
  const auto [from, to] = guides.whole(index);
  return {{from.x - besideLine, from.y - besideLine},
          {to.x - from.x + 2 * besideLine, to.y - from.y + 2 * besideLine}};
}

}  // namespace touch
