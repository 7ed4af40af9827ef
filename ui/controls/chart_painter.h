#pragma once

#include <functional>

#include "drawing/surface.h"

class QPainter;
class QRectF;

namespace touch {

/// Charts on whatever Qt paints on: a window, an image, a page of a PDF. The painter is scaled so
/// that its unit is a twip.
class ChartPainter final : public ChartSurface {
 public:
  explicit ChartPainter(QPainter& painter) : painter_(painter) {}

  /// Nothing to clear: a page begins empty.
  void clear() override {}
  void line(TwipsPoint from, TwipsPoint to, Colour colour, int width) override;
  void circle(TwipsPoint centre, float radius, Colour colour, int width) override;
  void text(TwipsPoint at, std::string_view text, Colour colour, float height,
            TextAnchor anchor) override;
  void area(TwipsPoint corner, TwipsSize size, Colour colour) override;

 private:
  QPainter& painter_;
};

/// What `draw` draws on a page of this size, as large as there is room for, in the middle of it.
void paintPage(QPainter& painter, const QRectF& room, TwipsSize page,
               const std::function<void(ChartSurface&)>& draw);

}  // namespace touch
