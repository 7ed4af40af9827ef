#pragma once

#include "drawing/surface.h"
#include "support/text/number_layout.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// Writes down what is drawn: "line 0,480 15360,480 #7 2", "point 1,2 #12 1", "circle 480,360 250
/// #15 2", "clear". Colours are palette indices where the palette has them.
class RecordingSurface final : public Surface {
 public:
  std::vector<std::string> drawn;

  void clear() override { drawn = {"clear"}; }
  void line(TwipsPoint from, TwipsPoint to, Colour colour, int width) override {
    drawn.push_back("line " + textOf(from) + ' ' + textOf(to) + penText(colour, width));
  }
  void circle(TwipsPoint centre, float radius, Colour colour, int width) override {
    drawn.push_back("circle " + textOf(centre) + ' ' + shortestText(radius) +
                    penText(colour, width));
  }
  void point(TwipsPoint at, Colour colour, int width) override {
    drawn.push_back("point " + textOf(at) + penText(colour, width));
  }

  std::vector<std::string> take() { return std::exchange(drawn, {}); }

 private:
  static std::string textOf(TwipsPoint at) { return shortestText(at.x) + ',' + shortestText(at.y); }
  static std::string penText(Colour colour, int width) {
    const auto index = std::find(palette.begin(), palette.end(), colour) - palette.begin();
    return " #" + std::to_string(index) + ' ' + std::to_string(width);
  }
};

}  // namespace touch::test
