#include "measure/procedure/procedure_picture.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace touch::measure {

namespace {

constexpr Colour waitingColour{96, 96, 96};
constexpr Colour doneColour{64, 200, 64};
constexpr Colour currentColour = white;
constexpr Colour fillColour = yellow;
constexpr int thin = 2;
constexpr int thick = 4;
constexpr int ringWidth = 8;

TwipsPoint on(TwipsSize screen, Place place) {
  return {static_cast<float>(place.x) * screen.width, static_cast<float>(place.y) * screen.height};
}

/// Large enough to be seen around a finger, and whole on every screen.
float ringRadius(const Measurement& measurement, TwipsSize screen) {
  constexpr float mm = 11;
  constexpr float ofHeight = 0.12F;
  return std::min(mm * screen.width / static_cast<float>(measurement.size.width.value),
                  ofHeight * std::min(screen.width, screen.height));
}

void drawTick(Surface& surface, TwipsPoint at, float size) {
  const TwipsPoint corner{at.x - 0.1F * size, at.y + 0.35F * size};
  surface.line({at.x - 0.45F * size, at.y}, corner, doneColour, thick);
  surface.line(corner, {at.x + 0.5F * size, at.y - 0.4F * size}, doneColour, thick);
}

void drawTarget(Surface& surface, const Procedure& procedure, const Task& task, float radius,
                TwipsSize screen) {
  const TwipsPoint at = on(screen, task.at);
  if (&task == procedure.current()) {
    const float arm = procedure.test() == TouchTest::taps ? radius * 0.8F : radius * 0.3F;
    surface.circle(at, radius, currentColour, thin);
    surface.line({at.x - arm, at.y}, {at.x + arm, at.y}, currentColour, thin);
    surface.line({at.x, at.y - arm}, {at.x, at.y + arm}, currentColour, thin);
    // A dot for each tap, and room for those to come.
    if (procedure.test() != TouchTest::taps) return;
    for (std::size_t tap = 0; tap < tapsPerTarget; ++tap) {
      const TwipsPoint dot{at.x + (static_cast<float>(tap) - 1) * radius * 0.6F,
                           at.y + radius * 1.35F};
      if (tap < procedure.tapsMade())
        surface.point(dot, fillColour, ringWidth + thick);
      else
        surface.circle(dot, 0.15F * radius, waitingColour, thin);
    }
    return;
  }
  const bool isDone = procedure.isDone(task);
  surface.circle(at, radius / 3, isDone ? doneColour : waitingColour, thin);
  if (isDone) drawTick(surface, at, radius / 3);
}

void drawArrow(Surface& surface, TwipsPoint from, TwipsPoint to, double part) {
  constexpr float length = 22 * twipsPerPixel;
  const float x = to.x - from.x;
  const float y = to.y - from.y;
  const float whole = std::hypot(x, y);
  const TwipsPoint along{x / whole * length, y / whole * length};
  const TwipsPoint tip{from.x + static_cast<float>(part) * x,
                       from.y + static_cast<float>(part) * y};
  for (const float side : {-0.5F, 0.5F})
    surface.line(tip, {tip.x - along.x - side * along.y, tip.y - along.y + side * along.x},
                 currentColour, thick);
}

void drawLine(Surface& surface, const Procedure& procedure, const Measurement& measurement,
              const Task& task, TwipsSize screen) {
  const TwipsPoint from = on(screen, task.guide->from);
  const TwipsPoint to = on(screen, task.guide->to);
  if (&task != procedure.current()) {
    surface.line(from, to, procedure.isDone(task) ? doneColour : waitingColour, 1);
    return;
  }
  surface.line(from, to, currentColour, thin);
  surface.circle(from, 20 * twipsPerPixel, currentColour, thick);
  for (const double part : {0.2, 0.5, 0.8, 0.99})
    drawArrow(surface, from, to, part);
  for (const Trace& trace : measurement.traces) {
    if (trace.task != task.name || trace.blame == Blame::hand) continue;
    const Source& source = measurement.sources[trace.source];
    for (const Sample& sample : trace.samples)
      surface.point(on(screen, {sample.x / source.stepsX, sample.y / source.stepsY}), fillColour,
                    thick);
  }
}

}  // namespace

void drawCell(Surface& surface, std::size_t cell, const Procedure& procedure, TwipsSize screen) {
  const CoverageFigures& cells = procedure.cells();
  const auto columns = static_cast<float>(cells.columns);
  const auto rows = static_cast<float>(cells.rows);
  const float across = std::min(screen.width / columns, screen.height / rows) / twipsPerPixel;
  const std::size_t row = cell / cells.columns;
  const TwipsPoint at{(static_cast<float>(cell % cells.columns) + 0.5F) * screen.width / columns,
                      (static_cast<float>(row) + 0.5F) * screen.height / rows};
  // Untouched ones differ in size, too.
  const bool touched = cells.touched[cell];
  const float part = touched ? 0.85F : 0.3F;
  surface.point(at, touched ? doneColour : fillColour,
                std::max(static_cast<int>(part * across), 2));
}

void drawRing(Surface& surface, const Procedure& procedure, const Measurement& measurement,
              TwipsSize screen) {
  if (procedure.current() == nullptr) return;
  const TwipsPoint centre = on(screen, procedure.current()->at);
  const float radius = ringRadius(measurement, screen);
  constexpr int parts = 60;
  const auto point = [&](int part) {
    const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(part) / parts;
    return TwipsPoint{centre.x + radius * std::sin(angle), centre.y - radius * std::cos(angle)};
  };
  const double rested = procedure.rested();
  const Colour colour = rested >= 1 ? doneColour : fillColour;
  for (int part = 0; part < static_cast<int>(rested * parts); ++part)
    surface.line(point(part), point(part + 1), colour, ringWidth);
}

void drawProcedure(Surface& surface, const Procedure& procedure, const Measurement& measurement,
                   TwipsSize screen) {
  surface.clear();
  if (procedure.test() == TouchTest::coverage) {
    for (std::size_t cell = 0; cell < procedure.cells().touched.size(); ++cell)
      drawCell(surface, cell, procedure, screen);
    return;
  }
  for (const Task& task : procedure.tasks()) {
    if (task.guide != nullptr)
      drawLine(surface, procedure, measurement, task, screen);
    else
      drawTarget(surface, procedure, task, ringRadius(measurement, screen), screen);
  }
  // A line lies on its way back.
  if (const Task* const task = procedure.current(); task != nullptr && task->guide != nullptr)
    drawLine(surface, procedure, measurement, *task, screen);
}

}  // namespace touch::measure
