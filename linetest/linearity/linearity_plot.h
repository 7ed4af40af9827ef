#pragma once

#include <span>
#include <string>

#include "drawing/surface.h"
#include "linetest/linearity/linearity.h"

namespace touch {

/// A4, landscape.
inline constexpr TwipsSize linearityPage{16838, 11906};

/// The result page: the deviation along each line in a chart of its own with its limits, and a map
/// of the panel on which arrows show, enlarged, where and which way it errs; a table of the
/// figures. Lines that fail, and arrows beyond their limit, are red. It is drawn the same on a
/// screen, on paper, and into an SVG picture.
void drawLinearityPage(ChartSurface& surface, TwipsSize page, std::span<const LineResult> results,
                       const MeasuredPanel& panel, const LinearityLimits& limits);

/// That page as an SVG document.
std::string linearitySvg(std::span<const LineResult> results, const MeasuredPanel& panel,
                         const LinearityLimits& limits);

}  // namespace touch
