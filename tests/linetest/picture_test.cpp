#include "linetest/picture.h"

#include <gtest/gtest.h>

namespace touch {
namespace {

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
  picture.removeLast(Picture::mostMarks);
  EXPECT_EQ(picture.marks(), 0u) << "more cannot be taken away than is left";
}

}  // namespace
}  // namespace touch
