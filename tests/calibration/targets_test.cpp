#include "calibration/targets.h"

#include <gtest/gtest.h>

namespace touch {
namespace {

TEST(CalibrationTargets, LieOnTheGridInTheOrderOfTouching) {
  // 1024 x 768 pixels; the outer lines are 480 and 360 twips in.
  const TwipsSize screen{15360, 11520};
  const TwipsPoint upperRight{14880, 360};
  const TwipsPoint upperLeft{480, 360};
  const TwipsPoint lowerLeft{480, 11160};
  const TwipsPoint lowerRight{14880, 11160};
  const TwipsPoint centre{7680, 5760};
  const TwipsPoint right{14880, 5760};
  const TwipsPoint upper{7680, 360};
  const TwipsPoint left{480, 5760};
  const TwipsPoint lower{7680, 11160};
  const std::pair<int, std::vector<TwipsPoint>> cases[] = {
      {2, {{1920, 10080}, {13440, 1440}}},
      {3, {upperRight, upperLeft, lowerLeft}},
      {5, {centre, upperRight, upperLeft, lowerLeft, lowerRight}},
      {9, {centre, right, upperRight, upper, upperLeft, left, lowerLeft, lower, lowerRight}},
      {0, {}},
      {4, {}},
      {13, {}},
  };
  for (const auto& [count, targets] : cases) {
    EXPECT_EQ(calibrationTargets(count, screen), targets) << count << " points";
  }
}

}  // namespace
}  // namespace touch
