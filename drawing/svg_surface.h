#pragma once

#include <string>

#include "drawing/surface.h"

namespace touch {

/// A page that becomes a picture in SVG 1.1. A twip is a unit of its coordinates; texts are UTF-8.
class SvgSurface final : public ChartSurface {
 public:
  explicit SvgSurface(TwipsSize page) : page_(page) {}

  void clear() override { shapes_.clear(); }
  void line(TwipsPoint from, TwipsPoint to, Colour colour, int width) override;
  void circle(TwipsPoint centre, float radius, Colour colour, int width) override;
  void text(TwipsPoint at, std::string_view text, Colour colour, float height,
            TextAnchor anchor) override;
  void area(TwipsPoint corner, TwipsSize size, Colour colour) override;

  /// The whole document.
  std::string document() const;

 private:
  TwipsSize page_;
  std::string shapes_;
};

}  // namespace touch
