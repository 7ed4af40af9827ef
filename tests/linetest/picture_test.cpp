#include "linetest/picture.h"

#include <gtest/gtest.h>

#include "tests/linetest/recording_surface.h"

namespace touch {
namespace {

using Lines = std::vector<std::string>;

TEST(Picture, ShowsEachMarkOnceAndAllOfThemAgain) {
  test::RecordingSurface shown;
  Picture picture(shown);
  picture.clear();
  picture.line({1, 2}, {3, 4}, yellow, 2);
  picture.setLayer(Picture::Layer::toleranceLines);
  picture.circle({5, 6}, 7, white, 1);
  picture.setLayer(Picture::Layer::drawing);
  picture.point({8, 9}, lightGrey, 2);
  const Lines all = {"line 1,2 3,4 #14 2", "circle 5,6 7 #15 1", "point 8,9 #7 2"};
  EXPECT_EQ(shown.drawn, (Lines{"clear", all[0], all[1], all[2]}));

  test::RecordingSurface other;
  picture.drawOn(other);
  EXPECT_EQ(other.drawn, all);

  picture.removeLayer(Picture::Layer::toleranceLines);
  EXPECT_EQ(shown.take(), (Lines{"clear", all[0], all[2]}));
  picture.removeLayer(Picture::Layer::toleranceLines);
  EXPECT_EQ(shown.take(), Lines{}) << "nothing to take away, nothing to draw";
  picture.removeLast(1);
  EXPECT_EQ(shown.drawn, (Lines{"clear", all[0]}));
  picture.removeLast(5);
  EXPECT_EQ(picture.marks(), 0u);
}

/// Writing a million of them down would take too long.
class PointSurface final : public Surface {
 public:
  std::vector<float> xs;
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}
  void point(TwipsPoint at, Colour, int) override { xs.push_back(at.x); }
};

TEST(Picture, ForgetsTheOldestWhenFull) {
  PointSurface shown;
  Picture picture(shown);
  for (std::size_t i = 0; i <= Picture::mostMarks; ++i)
    picture.point({static_cast<float>(i), 0}, white, 1);
  EXPECT_EQ(shown.xs.size(), Picture::mostMarks + 1) << "what is shown stays";
  PointSurface anew;
  picture.drawOn(anew);
  ASSERT_EQ(anew.xs.size(), Picture::mostMarks / 2 + 1);
  EXPECT_EQ(picture.marks(), anew.xs.size());
  EXPECT_EQ(anew.xs.front(), 500000);
  EXPECT_EQ(anew.xs.back(), 1000000);
}

}  // namespace
}  // namespace touch
