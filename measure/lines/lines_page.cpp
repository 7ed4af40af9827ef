#include "measure/lines/lines_page.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "drawing/arrow.h"
#include "drawing/svg_surface.h"
#include "measure/figures/line_figures.h"
#include "measure/report/conditions.h"
#include "support/text/language.h"
#include "support/text/number_layout.h"

namespace touch::measure {

namespace {

constexpr Colour textColour = palette[0];
constexpr Colour faintColour = palette[7];
constexpr Colour limitColour = palette[8];
constexpr Colour passColour = palette[2];
constexpr Colour failColour = {200, 0, 0};
constexpr Colour unclearColour = {170, 90, 0};

constexpr float sheetMargin = 500;
constexpr float titleHeight = 320;
constexpr float chartLetters = 180;
constexpr float tableLetters = 150;
constexpr float lineSpacing = 250;
constexpr std::size_t usualCharts = 9;  // in a row
constexpr std::size_t chartRows = 2;
constexpr float chartGap = 150;
constexpr float chartPart = 0.1F;  // of the page's height
constexpr float mapPart = 0.3F;    // of the page's width, at most
constexpr int arrowsPerLine = 12;
// The longest arrow of a panel within its limits is this part of the distance between two of nine
// lines.
constexpr float arrowReach = 0.4F;

struct SheetBox {
  TwipsPoint corner;
  TwipsSize size;
};

float toFloat(double value) {
  return static_cast<float>(value);
}

/// The size of letters, or less where a text would reach into its neighbour: other languages have
/// longer words.
float fitted(float letters, float room, std::string_view text) {
  constexpr float widthOfLetter = 0.65F;  // of its height, on average
  const auto count = std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; });
  return std::min(letters, room / (widthOfLetter * static_cast<float>(count + 1)));
}

Colour inkOf(Outcome outcome) {
  return outcome == Outcome::pass   ? passColour
         : outcome == Outcome::fail ? failColour
                                    : unclearColour;
}

Outcome outcomeOf(const Verdict& verdict, const LineFigures& line) {
  const Subject* const subject = verdict.find(line.guide->name);
  return subject != nullptr ? subject->outcome() : Outcome::incomplete;
}

void drawFrame(Surface& surface, const SheetBox& box, Colour colour) {
  const auto [x, y] = box.corner;
  const float right = x + box.size.width;
  const float bottom = y + box.size.height;
  surface.line({x, y}, {right, y}, colour, 1);
  surface.line({right, y}, {right, bottom}, colour, 1);
  surface.line({right, bottom}, {x, bottom}, colour, 1);
  surface.line({x, bottom}, {x, y}, colour, 1);
}

/// The samples of a line from its guide: where along it, from 0 to 1, and how far off it, in mm.
template <typename Take>
void eachStroke(const Measurement& measurement, const LineFigures& line, const Take& take) {
  const GuideFrame guide(*line.guide, measurement.size);
  for (const Trace& trace : measurement.traces) {
    if (trace.task != line.guide->name || trace.blame == Blame::hand) continue;
    std::vector<PointMm> places;
    for (const Sample& sample : trace.samples) {
      const PointMm at = measurement.point(trace, sample);
      places.emplace_back(guide.along(at) / guide.length(), guide.across(at));
    }
    take(places);
  }
}

/// A chart with the line's length from left to right and its deviation upwards.
void drawChart(ChartSurface& surface, const SheetBox& box, const Measurement& measurement,
               const LineFigures& line, Outcome outcome) {
  const double limit = measurement.limits[Length::centre].on(line.side).value;
  const double edgeLimit = measurement.limits[Length::edge].on(line.side).value;
  const double range = std::max({1.1 * limit, 1.1 * edgeLimit, 1.1 * line.off.maximum, 1e-3});
  const auto at = [&](double where, double value) {
    return TwipsPoint{box.corner.x + box.size.width * toFloat(std::clamp(where, 0.0, 1.0)),
                      box.corner.y + box.size.height * toFloat(0.5 - value / range / 2)};
  };
  drawFrame(surface, box, faintColour);
  surface.line(at(0, 0), at(1, 0), faintColour, 1);
  for (const double value : {-limit, limit})
    surface.line(at(0, value), at(1, value), limitColour, 1);
  eachStroke(measurement, line, [&](const std::vector<PointMm>& places) {
    for (std::size_t i = 1; i < places.size(); ++i)
      surface.line(at(places[i - 1].x(), places[i - 1].y()), at(places[i].x(), places[i].y()),
                   inkOf(outcome), 1);
  });

  const auto write = [&](float y, const std::string& text, Colour colour) {
    surface.text({box.corner.x + box.size.width / 2, y}, text, colour,
                 fitted(chartLetters, box.size.width + chartGap, text), TextAnchor::middle);
  };
  write(box.corner.y - 60, fmt::format("{} {}", line.guide->name, wordOf(outcome)), inkOf(outcome));
  if (line.samples == 0) return;
  float y = box.corner.y + box.size.height;
  // The unit has a row of its own: with "nominal" there is no room for it beside a figure.
  for (const std::string& text :
       {filled(say("measure", "max %1"), {fixedText(line.off.maximum, 2)}),
        filled(say("measure", "straight %1"), {fixedText(line.straightness.maximum, 2)}),
        unitText(measurement.size, "mm")})
    write(y += lineSpacing, text, textColour);
}

/// Maps the panel into a box.
class PanelMap {
 public:
  PanelMap(const SheetBox& room, const Measurement& measurement) : measurement_(measurement) {
    const float width = toFloat(measurement.size.width.value);
    const float height = toFloat(measurement.size.height.value);
    scale_ = std::min(room.size.width / width, room.size.height / height);
    box_ = {room.corner, {width * scale_, height * scale_}};
    const Millimetres shorter = std::min(measurement.size.width, measurement.size.height);
    const double limit = measurement.limits[Length::centre].on(shorter).value;
    enlargement_ = std::max(1.0, std::round(shorter.value / 9 * static_cast<double>(arrowReach) /
                                            std::max(limit, 1e-3)));
  }

  double enlargement() const { return enlargement_; }
  const SheetBox& box() const { return box_; }

  void draw(ChartSurface& surface, const LineFigures& line) const {
    const GuideFrame guide(*line.guide, measurement_.size);
    surface.line(at(guide.at(0)), at(guide.at(guide.length())), faintColour, 1);
    const double limit = measurement_.limits[Length::centre].on(line.side).value;
    const double edgeLimit = measurement_.limits[Length::edge].on(line.side).value;
    const double zone = measurement_.limits.edgeZone.value / guide.length();
    std::array<Sum, arrowsPerLine> parts{};
    eachStroke(measurement_, line, [&](const std::vector<PointMm>& places) {
      for (const PointMm& place : places) {
        const double where = std::clamp(place.x(), 0.0, 1.0) * arrowsPerLine;
        Sum& part = parts[std::min(static_cast<std::size_t>(where), parts.size() - 1)];
        part.place += place;
        ++part.count;
      }
    });
    for (const Sum& part : parts) {
      if (part.count == 0) continue;
      const PointMm place = part.place / part.count;
      const bool inEdgeZone = place.x() < zone || place.x() > 1 - zone;
      const bool beyond = std::abs(place.y()) > (inEdgeZone ? edgeLimit : limit);
      const PointMm from = guide.at(place.x() * guide.length());
      const TwipsPoint start = at(from);
      const TwipsPoint tip = at(from + place.y() * enlargement_ * guide.normal());
      drawArrow(surface, start, cutOff(start, tip), beyond ? failColour : passColour, 1);
    }
  }

 private:
  struct Sum {
    PointMm place = PointMm::Zero();
    int count = 0;
  };

  /// An arrow ends at the edge of the map: beyond it there are texts.
  TwipsPoint cutOff(TwipsPoint start, TwipsPoint tip) const {
    const auto [left, top] = box_.corner;
    const float wide = tip.x - start.x;
    const float high = tip.y - start.y;
    float part = 1;  // of the arrow
    if (tip.x < left) part = std::min(part, (left - start.x) / wide);
    if (tip.x > left + box_.size.width)
      part = std::min(part, (left + box_.size.width - start.x) / wide);
    if (tip.y < top) part = std::min(part, (top - start.y) / high);
    if (tip.y > top + box_.size.height)
      part = std::min(part, (top + box_.size.height - start.y) / high);
    part = std::clamp(part, 0.0F, 1.0F);
    return {start.x + part * wide, start.y + part * high};
  }

  TwipsPoint at(const PointMm& place) const {
    return {box_.corner.x + toFloat(place.x()) * scale_,
            box_.corner.y + toFloat(place.y()) * scale_};
  }

  const Measurement& measurement_;
  SheetBox box_;
  float scale_ = 1;
  double enlargement_ = 1;
};

const Check* checkOf(const Subject* subject, std::string_view name) {
  if (subject == nullptr) return nullptr;
  const auto found = std::ranges::find(subject->checks, name, &Check::name);
  return found == subject->checks.end() ? nullptr : &*found;
}

/// A table of the figures of each line with what they have to keep.
class FigureTable {
 public:
  FigureTable(ChartSurface& surface, const SheetBox& room, std::size_t rows, const PanelSize& size)
      : surface_(surface), room_(room), size_(size) {
    const auto columns = std::ranges::count_if(
        lineFigureList(), [](const LineFigure& figure) { return figure.heading != nullptr; });
    columnWidth_ = room.size.width / static_cast<float>(columns + 1);
    spacing_ = std::min(lineSpacing, room.size.height / static_cast<float>(rows));
    letters_ = std::min(tableLetters, spacing_);
    y_ = room.corner.y + letters_;
  }

  void headings() {
    row("", textColour, [](const LineFigure& figure) {
      return Cell{say("measure", figure.heading), textColour};
    });
    row("", textColour, [](const LineFigure& figure) {
      return Cell{std::string(figure.unit), textColour};
    });
    if (size_.source != SizeSource::nominal) return;
    row("", textColour, [](const LineFigure& figure) {
      const bool isLength = std::string_view(figure.unit).starts_with("mm");
      return isLength ? Cell{say("measure", "nominal"), textColour} : Cell{};
    });
  }
  void limits(std::string_view caption, const Subject& subject) {
    row(std::string(caption), limitColour, [&subject](const LineFigure& figure) {
      const Check* const check = checkOf(&subject, figure.name);
      if (check == nullptr) return Cell{};
      return Cell{(check->atLeast ? "≥ " : "≤ ") + fixedText(check->limit, figure.decimals),
                  limitColour};
    });
  }
  void line(const LineFigures& figures, const Subject* subject) {
    const Outcome outcome = subject != nullptr ? subject->outcome() : Outcome::incomplete;
    row(std::string(figures.guide->name), inkOf(outcome), [&](const LineFigure& figure) {
      const auto value = figure.value(figures);
      const Check* const check = checkOf(subject, figure.name);
      const bool keeps = check == nullptr || check->outcome == Outcome::pass;
      return Cell{value ? fixedText(*value, figure.decimals) : "–",
                  keeps ? textColour : inkOf(check->outcome)};
    });
  }

 private:
  struct Cell {
    std::string text{};
    Colour colour{};
  };

  template <typename CellOf>
  void row(const std::string& caption, Colour colour, const CellOf& cellOf) {
    surface_.text({room_.corner.x, y_}, caption, colour, letters_, TextAnchor::start);
    float x = room_.corner.x + columnWidth_;
    for (const LineFigure& figure : lineFigureList()) {
      if (figure.heading == nullptr) continue;
      x += columnWidth_;
      const Cell cell = cellOf(figure);
      surface_.text({x, y_}, cell.text, cell.colour, fitted(letters_, columnWidth_, cell.text),
                    TextAnchor::end);
    }
    y_ += spacing_;
  }

  ChartSurface& surface_;
  SheetBox room_;
  PanelSize size_;
  float columnWidth_ = 0;
  float spacing_ = 0;
  float letters_ = tableLetters;
  float y_ = 0;
};

void drawTable(ChartSurface& surface, const SheetBox& room, const Measurement& measurement,
               const Analysis& analysis, const Verdict& verdict) {
  constexpr std::size_t otherRows = 6;
  FigureTable table(surface, room, analysis.lines.size() + otherRows, measurement.size);
  table.headings();
  for (const LineFigures& line : analysis.lines)
    table.line(line, verdict.find(line.guide->name));
  // Limits in percent are those of the side across which a line errs.
  for (const char* name : {"V-1", "H-1"})
    if (const Subject* const subject = verdict.find(name))
      table.limits(name[0] == 'V' ? say("measure", "limit V") : say("measure", "limit H"),
                   *subject);
}

/// The verdict, and below it the conditions in as many lines as they need.
float drawHead(ChartSurface& surface, const Measurement& measurement, const Analysis& analysis,
               const Verdict& verdict) {
  const auto passed = std::ranges::count_if(analysis.lines, [&](const LineFigures& line) {
    return outcomeOf(verdict, line) == Outcome::pass;
  });
  surface.text({sheetMargin, sheetMargin + titleHeight},
               filled(say("measure", "%1   %2 of %3 lines pass"),
                      {wordOf(verdict.outcome()), std::to_string(passed),
                       std::to_string(analysis.lines.size())}),
               inkOf(verdict.outcome()), titleHeight, TextAnchor::start);
  constexpr std::size_t longest = 150;  // characters in a line
  float y = sheetMargin + titleHeight;
  std::string line;
  const auto flush = [&] {
    if (!line.empty())
      surface.text({sheetMargin, y += lineSpacing}, line, textColour, chartLetters,
                   TextAnchor::start);
    line.clear();
  };
  for (const Condition& condition : conditionsOf(measurement)) {
    const std::string text = filled(say("measure", "%1: %2"), {condition.caption, condition.text});
    if (line.size() + text.size() > longest) flush();
    line += (line.empty() ? "" : "   ") + text;
  }
  flush();
  return y;
}

}  // namespace

void drawLinesPage(ChartSurface& surface, const Measurement& measurement, const Analysis& analysis,
                   const Verdict& verdict) {
  const TwipsSize page = linesPage;
  surface.clear();
  surface.area({0, 0}, page, white);
  const float head = drawHead(surface, measurement, analysis, verdict) + 2 * lineSpacing;

  const auto& lines = analysis.lines;
  const std::size_t perRow = std::max(usualCharts, (lines.size() + 1) / chartRows);
  const auto charts = static_cast<float>(perRow);
  const float chartWidth = (page.width - 2 * sheetMargin - (charts - 1) * chartGap) / charts;
  const float chartHeight = page.height * chartPart;
  const float rowHeight = chartHeight + 5 * lineSpacing;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::size_t row = i / perRow;
    const TwipsPoint corner{sheetMargin + static_cast<float>(i % perRow) * (chartWidth + chartGap),
                            head + static_cast<float>(row) * rowHeight};
    drawChart(surface, {corner, {chartWidth, chartHeight}}, measurement, lines[i],
              outcomeOf(verdict, lines[i]));
  }

  const float top = head + static_cast<float>(chartRows) * rowHeight;
  const float mapWidth = (page.width - 2 * sheetMargin) * mapPart;
  const float height = page.height - top - sheetMargin;
  const PanelMap map({{sheetMargin, top}, {mapWidth, height}}, measurement);
  drawFrame(surface, map.box(), textColour);
  for (const LineFigures& line : lines)
    map.draw(surface, line);
  const float right = sheetMargin + mapWidth + sheetMargin / 2;
  drawTable(surface, {{right, top}, {page.width - sheetMargin - right, height}}, measurement,
            analysis, verdict);
  surface.text({sheetMargin, page.height - sheetMargin / 2},
               filled(say("measure", "deviations drawn %1 times as large"),
                      {fixedText(map.enlargement(), 0)}),
               textColour, chartLetters, TextAnchor::start);
}

std::string linesSvg(const Measurement& measurement, const Analysis& analysis,
                     const Verdict& verdict) {
  SvgSurface page(linesPage);
  drawLinesPage(page, measurement, analysis, verdict);
  return page.document();
}

}  // namespace touch::measure
