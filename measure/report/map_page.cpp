#include "measure/report/map_page.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "drawing/arrow.h"
#include "drawing/svg_surface.h"
#include "measure/report/conditions.h"
#include "support/text/language.h"

namespace touch::measure {

namespace {

constexpr float margin = 1000;  // twips
constexpr float barWidth = 400;
constexpr float overlap = 20;  // of neighbouring areas, else the paper shows between them
constexpr Colour ink{32, 32, 32};

/// What errors mean: at most `limit` is good, and none is beyond `most`.
struct Scale {
  double limit = 0;
  double most = 0;
};

/// At `part` of the way from the first of these to the last, 0 to 1.
Colour between(std::span<const Colour> scale, double part) {
  const double place = std::clamp(part, 0.0, 1.0) * static_cast<double>(scale.size() - 1);
  const auto below = std::min(static_cast<std::size_t>(place), scale.size() - 2);
  const double rest = place - static_cast<double>(below);
  const auto mixed = [&](std::uint8_t Colour::*channel) {
    return static_cast<std::uint8_t>(
        std::lround(std::lerp(static_cast<double>(scale[below].*channel),
                              static_cast<double>(scale[below + 1].*channel), rest)));
  };
  return {mixed(&Colour::red), mixed(&Colour::green), mixed(&Colour::blue)};
}

/// From blue, where touches hit, over green to yellow at the limit. What is beyond it is red, and
/// darkest where they miss most. The steps differ in lightness as well, for those who see no red.
Colour colourOf(double error, const Scale& errors) {
  constexpr Colour within[] = {{38, 56, 120}, {42, 120, 142}, {90, 180, 110}, {245, 220, 80}};
  constexpr Colour beyond[] = {{225, 75, 60}, {105, 0, 30}};
  if (error <= errors.limit) return between(within, error / errors.limit);
  return between(beyond, (error - errors.limit) / (errors.most - errors.limit));
}

/// The panel on the page.
struct Frame {
  TwipsPoint corner;
  float perMm = 0;
  float letters = 0;

  TwipsPoint at(const PointMm& place) const {
    return {corner.x + static_cast<float>(place.x()) * perMm,
            corner.y + static_cast<float>(place.y()) * perMm};
  }
};

void drawAxes(ChartSurface& surface, const Frame& frame, const PanelSize& size,
              const std::string& unit) {
  const double longer = std::max(size.width, size.height).value;
  const double step = longer > 150 ? 50 : longer > 60 ? 20 : 10;
  constexpr float tick = 120;
  const float letters = frame.letters;
  for (double x = 0; x <= size.width.value; x += step) {
    const TwipsPoint at = frame.at({x, size.height.value});
    surface.line(at, {at.x, at.y + tick}, ink, 1);
    surface.text({at.x, at.y + tick + letters}, fmt::format("{:.0f}", x), ink, letters,
                 TextAnchor::middle);
  }
  for (double y = 0; y <= size.height.value; y += step) {
    const TwipsPoint at = frame.at({0, y});
    surface.line(at, {at.x - tick, at.y}, ink, 1);
    surface.text({at.x - 1.5F * tick, at.y + letters / 3}, fmt::format("{:.0f}", y), ink, letters,
                 TextAnchor::end);
  }
  const TwipsPoint corner = frame.at({0, size.height.value});
  surface.text({corner.x, corner.y + tick + 2.3F * letters}, unit, ink, letters, TextAnchor::start);
}

void drawBar(ChartSurface& surface, TwipsPoint corner, float height, float letters,
             const Scale& errors, const std::string& unit) {
  constexpr int steps = 50;
  const float part = height / steps;
  // Each down to the bottom, where the next covers it.
  for (int step = steps; step > 0; --step)
    surface.area({corner.x, corner.y + height - static_cast<float>(step) * part},
                 {barWidth, static_cast<float>(step) * part},
                 colourOf((step - 0.5) / steps * errors.most, errors));
  for (const double mark : {0.0, 0.5, 1.0})
    surface.text({corner.x + 1.3F * barWidth,
                  corner.y + height * static_cast<float>(1 - mark) + letters / 3},
                 fmt::format("{:.2f} {}", errors.most * mark, unit), ink, letters,
                 TextAnchor::start);
}

}  // namespace

void drawMap(ChartSurface& surface, const ErrorMap& map, const Measurement& measurement,
             float letters) {
  surface.clear();
  surface.area({0, 0}, mapPage, white);
  const PanelSize& size = measurement.size;
  const std::string unit = unitText(size, "mm").substr(1);  // without its blank
  const double most = map.worst.error.norm();
  // What a line may be off.
  const double limit = std::max(
      measurement.limits[Length::offset].on(std::max(size.width, size.height)).value, 1e-3);
  const Scale errors{limit, std::max(most, limit)};
  surface.text(
      {margin, margin},
      filled(say("measure", "Errors of %1 × %2 %3, up to %4 %3"),
             {fmt::format("{:.1f}", size.width.value), fmt::format("{:.1f}", size.height.value),
              unit, fmt::format("{:.2f}", most)}),
      ink, letters * 1.5F, TextAnchor::start);

  const TwipsPoint corner{2 * margin, 2 * margin};
  const float right = margin + 9 * letters;  // the bar and its figures
  const float perMm =
      std::min((mapPage.width - 2.8F * margin - right) / static_cast<float>(size.width.value),
               (mapPage.height - 4 * margin) / static_cast<float>(size.height.value));
  const Frame frame{corner, perMm, letters};
  const PointMm cell(size.width.value / (ErrorMap::columns - 1),
                     size.height.value / (ErrorMap::rows - 1));
  const PointMm end(size.width.value, size.height.value);
  const PointMm further = PointMm::Constant(static_cast<double>(overlap / perMm));
  for (const auto& [at, error] : map.points) {
    const PointMm from = (at - cell / 2).cwiseMax(PointMm::Zero());
    const PointMm extent = (at + cell / 2 + further).cwiseMin(end) - from;
    surface.area(frame.at(from),
                 {static_cast<float>(extent.x()) * perMm, static_cast<float>(extent.y()) * perMm},
                 colourOf(error.norm(), errors));
  }
  // The longest arrow reaches halfway to the next one, and at the edge not over the axes.
  constexpr std::size_t every = 4;
  const double enlarged = most > 0 ? every * cell.minCoeff() / most / 2 : 0;
  for (std::size_t row = 0; row < ErrorMap::rows; row += every)
    for (std::size_t column = 0; column < ErrorMap::columns; column += every) {
      const auto& [at, error] = map.points[row * ErrorMap::columns + column];
      // Light in a dark rim: it is seen on every colour.
      for (const auto& [colour, width] : {std::pair(ink, 3), std::pair(white, 1)})
        drawArrow(surface, frame.at(at), frame.at(at + error * enlarged), colour, width);
    }
  surface.circle(frame.at(map.worst.at), 200, ink, 2);
  drawAxes(surface, frame, size, unit);
  drawBar(surface, {mapPage.width - right, corner.y}, static_cast<float>(size.height.value) * perMm,
          letters, errors, unit);
  float line = mapPage.height - margin;
  for (const std::string& text :
       {filled(
            say("measure",
                "Arrows from where a touch was to where it was reported, drawn %1 times as long."),
            {fmt::format("{:.0f}", enlarged)}),
        filled(say("measure",
                   "The ring marks the worst place. Red is beyond %1 %2, the limit of a line's "
                   "offset."),
               {fmt::format("{:.2f}", limit), unit})}) {
    surface.text({margin / 2, line}, text, ink, letters, TextAnchor::start);
    line += 1.3F * letters;
  }
}

std::string mapSvg(const ErrorMap& map, const Measurement& measurement, float letters) {
  SvgSurface page(mapPage);
  drawMap(page, map, measurement, letters);
  return page.document();
}

}  // namespace touch::measure
