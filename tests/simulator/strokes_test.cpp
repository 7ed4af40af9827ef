#include "simulator/strokes.h"

#include <gtest/gtest.h>

#include <cmath>

#include "simulator/panel.h"

namespace touch::simulator {
namespace {

TEST(Strokes, StayOnThePanelAndCirclesAreRound) {
  EXPECT_EQ(lines(100).size(), 10U);
  EXPECT_EQ(lineStroke({0, 0.5}, {1, 0.5}, 2), (Stroke{{0, 0.5}, {0.5, 0.5}, {1, 0.5}}));
  for (const Stroke& stroke : circles(90)) {
    ASSERT_EQ(stroke.size(), 91U);
    const double radius = stroke.front().x - 0.5;
    for (const Point place : stroke) {
      EXPECT_NEAR(std::hypot(place.x - 0.5, (place.y - 0.5) * panelHeight), radius, 1e-9);
      EXPECT_GE(place.y, 0);
      EXPECT_LE(place.y, 1);
    }
  }
}

}  // namespace
}  // namespace touch::simulator
