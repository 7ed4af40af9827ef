#include "measure/figures/coverage.h"

#include <algorithm>
#include <cmath>

namespace touch::measure {

namespace {

constexpr double cellSize = 5;  // mm
// Two strokes with less time between them are one movement that the panel cut in two.
constexpr Seconds sameMovement{0.5};

std::size_t cellsOn(double side) {
  return static_cast<std::size_t>(std::max(std::ceil(side / cellSize), 1.0));
}

/// Cells that touch each other and were never touched, as spots; `spotOf` gets each cell's.
std::vector<DeadSpot> findSpots(const CoverageFigures& figures, const PointMm& cell,
                                std::vector<std::size_t>& spotOf) {
  constexpr auto none = static_cast<std::size_t>(-1);
  spotOf.assign(figures.touched.size(), none);
  std::vector<DeadSpot> spots;
  for (std::size_t start = 0; start < figures.touched.size(); ++start) {
    if (figures.touched[start] || spotOf[start] != none) continue;
    PointMm least(1e9, 1e9);
    PointMm most(-1, -1);
    DeadSpot spot;
    std::vector<std::size_t> waiting{start};
    spotOf[start] = spots.size();
    const auto visit = [&](std::size_t next) {
      if (figures.touched[next] || spotOf[next] != none) return;
      spotOf[next] = spots.size();
      waiting.push_back(next);
    };
    while (!waiting.empty()) {
      const std::size_t at = waiting.back();
      waiting.pop_back();
      ++spot.cells;
      const std::size_t column = at % figures.columns;
      const std::size_t row = at / figures.columns;
      const PointMm corner(static_cast<double>(column) * cell.x(),
                           static_cast<double>(row) * cell.y());
      least = least.cwiseMin(corner);
      most = most.cwiseMax(corner + cell);
      if (column > 0) visit(at - 1);
      if (column + 1 < figures.columns) visit(at + 1);
      if (row > 0) visit(at - figures.columns);
      if (row + 1 < figures.rows) visit(at + figures.columns);
    }
    spot.corner = least;
    spot.size = most - least;
    spots.push_back(spot);
  }
  return spots;
}

}  // namespace

CellGrid::CellGrid(const PanelSize& size)
    : columns_(cellsOn(size.width.value)),
      rows_(cellsOn(size.height.value)),
      cell_(size.width.value / static_cast<double>(columns_),
            size.height.value / static_cast<double>(rows_)) {}

std::size_t CellGrid::of(const PointMm& point) const {
  const auto place = [](double at, double cell, std::size_t count) {
    const double index = std::clamp(std::floor(at / cell), 0.0, static_cast<double>(count - 1));
    return static_cast<std::size_t>(index);
  };
  return place(point.y(), cell_.y(), rows_) * columns_ + place(point.x(), cell_.x(), columns_);
}

CoverageFigures measureCoverage(const Measurement& measurement) {
  CoverageFigures figures;
  const CellGrid cells(measurement.size);
  figures.columns = cells.columns();
  figures.rows = cells.rows();
  figures.touched.assign(figures.columns * figures.rows, false);
  const PointMm corner = measurement.size.point({1, 1});
  struct Step {
    PointMm from;
    PointMm to;
  };
  std::vector<Step> leaps;
  const Trace* before = nullptr;
  PointMm last = PointMm::Zero();
  PointMm least = corner;
  PointMm most = PointMm::Zero();
  for (const Trace& trace : measurement.traces) {
    if (trace.task != rubTask || trace.samples.empty()) continue;
    bool follows = before && before->source == trace.source && measurement.isTimed(trace) &&
                   trace.samples.front().time - before->samples.back().time < sameMovement;
    before = &trace;
    for (const Sample& sample : trace.samples) {
      const PointMm point =
          measurement.point(trace, sample).cwiseMax(PointMm::Zero()).cwiseMin(corner);
      figures.touched[cells.of(point)] = true;
      least = least.cwiseMin(point);
      most = most.cwiseMax(point);
      if (follows && (point - last).norm() > cellSize / 2) leaps.push_back({last, point});
      follows = true;
      last = point;
    }
  }
  const auto touched = std::ranges::count(figures.touched, true);
  figures.part = static_cast<double>(touched) / static_cast<double>(figures.touched.size());
  if (touched == 0) return figures;
  const PointMm free = corner - most;
  figures.reach = {least.x(), least.y(), free.x(), free.y()};

  std::vector<std::size_t> spotOf;
  figures.deadSpots = findSpots(figures, cells.cell(), spotOf);
  for (const auto& [from, to] : leaps) {
    const double steps = std::ceil((to - from).norm());
    std::vector<std::size_t> crossed;
    for (double step = 1; step < steps; ++step) {
      const std::size_t spot = spotOf[cells.of(from + (to - from) * (step / steps))];
      if (spot < figures.deadSpots.size() && std::ranges::find(crossed, spot) == crossed.end())
        crossed.push_back(spot);
    }
    for (const std::size_t spot : crossed)
      ++figures.deadSpots[spot].crossings;
  }
  std::ranges::stable_sort(figures.deadSpots, std::ranges::greater{}, &DeadSpot::cells);
  return figures;
}

}  // namespace touch::measure
