#include "linetest/analysis/line_analysis.h"

#include <algorithm>
#include <cmath>

#include "support/text/number_layout.h"

namespace touch {

namespace {

constexpr float besidePen = 500;  // twips
constexpr float besideLine = 150;

float placeBeside(float pen, float length, float screen) {
  return pen + besidePen + length < screen ? pen + besidePen : pen - length - besidePen;
}

std::string sampleLine(std::size_t number, float deviation, float tolerancePercent) {
  // A minus takes the place of a blank, so that the digits stay below each other.
  std::string line = threeDigits(static_cast<int>(number)) + (deviation >= 0 ? "  " : " ");
  line += fixedText(static_cast<double>(deviation), 1) + " %";
  if (std::abs(deviation) > tolerancePercent) line += "  **";
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

float deviation(float coordinate, int position, TwipsSize screen) {
  return (coordinate - static_cast<float>(position)) / (screen.width / 100);
}

StrokeStatistics measureStroke(std::span<const TwipsPoint> samples, const LineMatch& line,
                               TwipsSize screen) {
  StrokeStatistics statistics;
  for (const TwipsPoint& sample : samples) {
    const float off = deviation(across(line.orientation(), sample), line.position, screen);
    if (statistics.count++ == 0) statistics.maximum = statistics.minimum = off;
    statistics.sum += static_cast<double>(off);
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
                                     TwipsSize screen, float tolerancePercent) {
  const StrokeStatistics statistics = measureStroke(samples, line, screen);
  std::vector<std::string> lines = {
      "",
      "  " + lineTitle(line.index),
      "  AVG :  " + fixedText(statistics.average(), 2),
      "  Max :  " + fixedText(static_cast<double>(statistics.maximum), 2),
      "  Min :  " + fixedText(static_cast<double>(statistics.minimum), 2),
      "  Qty :  " + std::to_string(statistics.count),
      "",
  };
  for (std::size_t i = 0; i < samples.size(); ++i) {
    // The lines of a horizontal stroke are taken from x like those of a vertical one: the list's readers know the
    // column as the x of each sample. The summary above is the measurement.
    const float off = deviation(samples[i].x, line.position, screen);
    lines.push_back(sampleLine(i + 1, off, tolerancePercent));
  }
  return lines;
}

TwipsPoint placeBeside(TwipsPoint pen, TwipsSize size, TwipsSize screen) {
  return {placeBeside(pen.x, size.width, screen.width),
          placeBeside(pen.y, size.height, screen.height)};
}

TwipsPoint clearOfLine(TwipsPoint corner, TwipsSize size, const GuideLines& guides, int index) {
  const TwipsSize screen = guides.screen();
  corner = {onScreen(corner.x, size.width, screen.width),
            onScreen(corner.y, size.height, screen.height)};
  const bool vertical = GuideLines::orientation(index) == Orientation::vertical;
  float& place = vertical ? corner.x : corner.y;
  const float length = vertical ? size.width : size.height;
  const float end = vertical ? screen.width : screen.height;
  const float line = guides.position(index);
  if (place >= line + besideLine || place + length <= line - besideLine) return corner;
  const float before = line - besideLine - length;
  const float behind = line + besideLine;
  const bool fitsBehind = behind + length <= end;
  place = before < 0 || (fitsBehind && behind - place < place - before) ? behind : before;
  return corner;
}

}  // namespace touch
