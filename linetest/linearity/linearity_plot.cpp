#include "linetest/linearity/linearity_plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "drawing/svg_surface.h"
#include "support/text/language.h"
#include "support/text/number_layout.h"

namespace touch {

namespace {

constexpr Colour ink = palette[0];
constexpr Colour faint = palette[7];
constexpr Colour limitColour = palette[8];
constexpr Colour good = palette[2];
constexpr Colour bad = {200, 0, 0};

constexpr float pageMargin = 500;
constexpr float titleHeight = 320;
constexpr float letterHeight = 190;
constexpr float lineSpacing = 260;
constexpr int chartsPerRow = 9;
constexpr float chartGap = 150;
constexpr float mapPart = 0.55F;  // of the page's width, at most
constexpr int arrowsPerLine = 12;
constexpr float arrowHead = 70;
// The longest arrow of a panel within its limits is this part of the distance between two of nine
// lines.
constexpr float arrowReach = 0.4F;

struct Box {
  TwipsPoint corner;
  TwipsSize size;
};

float toFloat(double value) {
  return static_cast<float>(value);
}

std::string millimetres(double value) {
  return fixedText(value, 2) + " mm";
}

void frame(Surface& surface, const Box& box, Colour colour) {
  const auto [x, y] = box.corner;
  const float right = x + box.size.width;
  const float bottom = y + box.size.height;
  surface.line({x, y}, {right, y}, colour, 1);
  surface.line({right, y}, {right, bottom}, colour, 1);
  surface.line({right, bottom}, {x, bottom}, colour, 1);
  surface.line({x, bottom}, {x, y}, colour, 1);
}

/// One measured place: where along its line, from 0 to 1, and how far off it, in mm.
struct Deviation {
  double along;
  double millimetres;
};

std::vector<Deviation> deviationsOf(const LineResult& result, const MeasuredPanel& panel) {
  const Orientation orientation = result.guide.orientation;
  const bool vertical = orientation == Orientation::vertical;
  const auto length = static_cast<double>(vertical ? panel.screen.height : panel.screen.width);
  const auto breadth = static_cast<double>(vertical ? panel.screen.width : panel.screen.height);
  std::vector<Deviation> deviations;
  for (const TwipsPoint& sample : result.samples) {
    const auto off = static_cast<double>(across(orientation, sample) - result.guide.position);
    deviations.push_back({static_cast<double>(along(orientation, sample)) / length,
                          off * panel.acrossMm(orientation) / breadth});
  }
  return deviations;
}

/// A chart with the line's length from left to right and its deviation upwards.
void drawChart(ChartSurface& surface, const Box& box, const LineResult& result,
               const MeasuredPanel& panel, const LinearityLimits& limits) {
  const Orientation orientation = result.guide.orientation;
  const double limit = limitMm(limits.centre, limits.unit, panel, orientation);
  const double edgeLimit = limitMm(limits.edge, limits.unit, panel, orientation);
  const double range =
      std::max({1.1 * limit, 1.1 * edgeLimit, 1.1 * result.figures.all.absoluteMaximum, 1e-3});
  const auto at = [&](double where, double value) {
    return TwipsPoint{box.corner.x + box.size.width * toFloat(std::clamp(where, 0.0, 1.0)),
                      box.corner.y + box.size.height * toFloat(0.5 - value / range / 2)};
  };
  const bool passed = judge(result.figures, limits, panel, orientation).passed();
  const Colour colour = passed ? good : bad;

  frame(surface, box, faint);
  surface.line(at(0, 0), at(1, 0), faint, 1);
  for (const double value : {-limit, limit})
    surface.line(at(0, value), at(1, value), limitColour, 1);
  const auto deviations = deviationsOf(result, panel);
  for (std::size_t i = 1; i < deviations.size(); ++i)
    surface.line(at(deviations[i - 1].along, deviations[i - 1].millimetres),
                 at(deviations[i].along, deviations[i].millimetres), colour, 1);

  const float middle = box.corner.x + box.size.width / 2;
  surface.text({middle, box.corner.y - 60},
               result.label + "  " + (passed ? say("linearity", "pass") : say("linearity", "FAIL")),
               colour, letterHeight, TextAnchor::middle);
  const std::array<std::string, 2> captions = {
      filled(say("linearity", "max %1"), {millimetres(result.figures.all.absoluteMaximum)}),
      filled(say("linearity", "straight %1"), {millimetres(result.figures.straightness)})};
  float y = box.corner.y + box.size.height;
  for (const std::string& caption : captions)
    surface.text({middle, y += lineSpacing}, caption, ink, letterHeight, TextAnchor::middle);
}

void drawArrow(Surface& surface, TwipsPoint from, TwipsPoint to, Colour colour) {
  surface.line(from, to, colour, 1);
  const float x = to.x - from.x;
  const float y = to.y - from.y;
  const float length = std::hypot(x, y);
  if (length < arrowHead) return;
  const float ux = x / length * arrowHead;
  const float uy = y / length * arrowHead;
  surface.line(to, {to.x - ux - uy / 2, to.y - uy + ux / 2}, colour, 1);
  surface.line(to, {to.x - ux + uy / 2, to.y - uy - ux / 2}, colour, 1);
}

/// Maps the panel into a box.
class PanelMap {
 public:
  PanelMap(const Box& room, const MeasuredPanel& panel, const LinearityLimits& limits)
      : panel_(panel), limits_(limits) {
    scale_ = std::min(room.size.width / toFloat(panel.widthMm),
                      room.size.height / toFloat(panel.heightMm));
    box_ = {room.corner, {toFloat(panel.widthMm) * scale_, toFloat(panel.heightMm) * scale_}};
    const double shorter = std::min(panel.widthMm, panel.heightMm);
    const auto orientation =
        panel.widthMm < panel.heightMm ? Orientation::vertical : Orientation::horizontal;
    const double limit = limitMm(limits.centre, limits.unit, panel, orientation);
    enlargement_ = std::max(
        1.0, std::round(shorter / 9 * static_cast<double>(arrowReach) / std::max(limit, 1e-3)));
  }

  double enlargement() const { return enlargement_; }
  const Box& box() const { return box_; }

  void draw(ChartSurface& surface, const LineResult& result) const {
    const Orientation orientation = result.guide.orientation;
    surface.line(at(orientation, 0, result), at(orientation, 1, result), faint, 1);
    const double limit = limitMm(limits_.centre, limits_.unit, panel_, orientation);
    const double edgeLimit = limitMm(limits_.edge, limits_.unit, panel_, orientation);
    const double edge = edgeZoneMm / panel_.alongMm(orientation);
    std::array<Sum, arrowsPerLine> parts{};
    for (const Deviation& deviation : deviationsOf(result, panel_)) {
      const double place = std::clamp(deviation.along, 0.0, 1.0) * arrowsPerLine;
      Sum& part = parts[std::min(static_cast<std::size_t>(place), parts.size() - 1)];
      part.along += deviation.along;
      part.millimetres += deviation.millimetres;
      ++part.count;
    }
    for (const Sum& part : parts) {
      if (part.count == 0) continue;
      const double where = part.along / part.count;
      const double off = part.millimetres / part.count;
      const bool inEdgeZone = where < edge || where > 1 - edge;
      const Colour colour = std::abs(off) > (inEdgeZone ? edgeLimit : limit) ? bad : good;
      drawArrow(surface, at(orientation, where, result), at(orientation, where, result, off),
                colour);
    }
  }

 private:
  struct Sum {
    double along = 0;
    double millimetres = 0;
    int count = 0;
  };

  TwipsPoint at(Orientation orientation, double where, const LineResult& result,
                double off = 0) const {
    const bool vertical = orientation == Orientation::vertical;
    const float breadth = vertical ? panel_.screen.width : panel_.screen.height;
    const float guide = result.guide.position / breadth;
    const float shift = toFloat(off * enlargement_) * scale_;
    if (vertical) {
      return {box_.corner.x + guide * box_.size.width + shift,
              box_.corner.y + toFloat(where) * box_.size.height};
    }
    return {box_.corner.x + toFloat(where) * box_.size.width,
            box_.corner.y + guide * box_.size.height + shift};
  }

  const MeasuredPanel& panel_;
  const LinearityLimits& limits_;
  Box box_;
  float scale_ = 1;
  double enlargement_ = 1;
};

struct FigureColumn {
  std::string_view heading;
  double (*value)(const LineFigures&);
};

constexpr FigureColumn figureColumns[] = {
    {marked("linearity", "avg"), [](const LineFigures& f) { return f.all.average; }},
    {marked("linearity", "max"), [](const LineFigures& f) { return f.all.maximum; }},
    {marked("linearity", "min"), [](const LineFigures& f) { return f.all.minimum; }},
    {marked("linearity", "rms"), [](const LineFigures& f) { return f.all.rms; }},
    {marked("linearity", "offset"), [](const LineFigures& f) { return f.offset; }},
    {marked("linearity", "straight"), [](const LineFigures& f) { return f.straightness; }},
};

/// The figures of each line in mm, from `corner` on; `width` is that of the whole table.
void drawFigures(ChartSurface& surface, TwipsPoint corner, float width,
                 std::span<const LineResult> results) {
  const float columnWidth = width / static_cast<float>(std::size(figureColumns) + 1);
  float y = corner.y + letterHeight;
  surface.text({corner.x, y}, "mm", ink, letterHeight, TextAnchor::start);
  float x = corner.x + columnWidth / 2;
  for (const FigureColumn& column : figureColumns)
    surface.text({x += columnWidth, y}, say("linearity", column.heading), ink, letterHeight,
                 TextAnchor::end);
  for (const LineResult& result : results) {
    y += lineSpacing;
    surface.text({corner.x, y}, result.label, ink, letterHeight, TextAnchor::start);
    x = corner.x + columnWidth / 2;
    for (const FigureColumn& column : figureColumns)
      surface.text({x += columnWidth, y}, fixedText(column.value(result.figures), 2), ink,
                   letterHeight, TextAnchor::end);
  }
}

std::string limitText(double limit, LimitUnit unit) {
  return fixedText(limit, 2) + (unit == LimitUnit::millimetres ? " mm" : " %");
}

}  // namespace

void drawLinearityPage(ChartSurface& surface, TwipsSize page, std::span<const LineResult> results,
                       const MeasuredPanel& panel, const LinearityLimits& limits) {
  surface.clear();
  surface.area({0, 0}, page, white);
  const auto failed = std::count_if(results.begin(), results.end(), [&](const LineResult& result) {
    return !judge(result.figures, limits, panel, result.guide.orientation).passed();
  });
  const std::string lines = std::to_string(results.size());
  const std::string verdict =
      failed == 0 ? filled(say("linearity", "Linearity   PASS of %1 lines"), {lines})
                  : filled(say("linearity", "Linearity   FAIL: %1 of %2 lines"),
                           {std::to_string(failed), lines});
  surface.text({pageMargin, pageMargin + titleHeight}, verdict, failed == 0 ? good : bad,
               titleHeight, TextAnchor::start);
  surface.text({page.width - pageMargin, pageMargin + titleHeight},
               filled(say("linearity", "limit %1, within %2 mm of the edge %3"),
                      {limitText(limits.centre, limits.unit), fixedText(edgeZoneMm, 1),
                       limitText(limits.edge, limits.unit)}),
               ink, letterHeight, TextAnchor::end);

  const float chartWidth =
      (page.width - 2 * pageMargin - (chartsPerRow - 1) * chartGap) / chartsPerRow;
  const float chartHeight = page.height / 8;
  const float rowHeight = chartHeight + 4 * lineSpacing;
  // Saved drawings may hold any number of strokes; two rows have room.
  const auto charted =
      results.first(std::min<std::size_t>(results.size(), std::size_t{2} * chartsPerRow));
  for (std::size_t i = 0; i < charted.size(); ++i) {
    const auto column = static_cast<float>(i % chartsPerRow);
    const std::size_t rowsAbove = i / chartsPerRow;
    const auto row = static_cast<float>(rowsAbove);
    const TwipsPoint corner{pageMargin + column * (chartWidth + chartGap),
                            pageMargin + titleHeight + 2 * lineSpacing + row * rowHeight};
    drawChart(surface, {corner, {chartWidth, chartHeight}}, charted[i], panel, limits);
  }

  const float top = pageMargin + titleHeight + 2 * lineSpacing + 2 * rowHeight;
  const float mapWidth = (page.width - 2 * pageMargin) * mapPart;
  const PanelMap map({{pageMargin, top}, {mapWidth, page.height - top - pageMargin}}, panel,
                     limits);
  frame(surface, map.box(), ink);
  for (const LineResult& result : results)
    map.draw(surface, result);
  const float right = map.box().corner.x + map.box().size.width + pageMargin;
  drawFigures(surface, {right, top}, page.width - pageMargin - right, charted);
  surface.text({pageMargin, page.height - pageMargin / 2},
               filled(say("linearity", "deviations drawn %1 times as large"),
                      {fixedText(map.enlargement(), 0)}),
               ink, letterHeight, TextAnchor::start);
}

std::string linearitySvg(std::span<const LineResult> results, const MeasuredPanel& panel,
                         const LinearityLimits& limits) {
  SvgSurface page(linearityPage);
  drawLinearityPage(page, linearityPage, results, panel, limits);
  return page.document();
}

}  // namespace touch
