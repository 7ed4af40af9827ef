#include "drawing/guide_lines.h"

namespace touch {

namespace {

std::array<float, GuideLines::perOrientation> positions(float length) {
  const float first = length * 128 / 4096;
  const float middle = length / 2;
  const float step = (middle - first) / 2;
  return {first, first + step, middle, middle + step, length - first};
}

Segment segment(Orientation orientation, float position, float from, float to) {
  if (orientation == Orientation::vertical) return {{position, from}, {position, to}};
  return {{from, position}, {to, position}};
}

}  // namespace

Bands bandsOf(TwipsSize screen, Percent tolerance) {
  return {screen.width / 100 * tolerance.value, screen.height / 100 * tolerance.value};
}

GuideLines::GuideLines(TwipsSize screen)
    : screen_(screen), vertical_(positions(screen.width)), horizontal_(positions(screen.height)) {}

Segment GuideLines::whole(int index) const {
  const Orientation of = orientation(index);
  return segment(of, position(index), 0,
                 of == Orientation::vertical ? screen_.height : screen_.width);
}

Segment GuideLines::inGrid(int index, float shift) const {
  const Orientation of = orientation(index);
  const bool crossesScreen = index % perOrientation % 2 == 0;
  const auto& crossed = of == Orientation::vertical ? horizontal_ : vertical_;
  const float length = of == Orientation::vertical ? screen_.height : screen_.width;
  return segment(of, position(index) + shift, crossesScreen ? 0 : crossed.front(),
                 crossesScreen ? length : crossed.back());
}

std::array<TwipsPoint, 9> GuideLines::targets() const {
  std::array<TwipsPoint, 9> targets;
  for (int i = 0; i < 9; ++i)
    targets[static_cast<std::size_t>(i)] = {V(i % 3 * 2), H(i / 3 * 2)};
  return targets;
}

bool GuideLines::isInMargin(TwipsPoint point) const {
  return point.x < V(0) || point.x > V(4) || point.y < H(0) || point.y > H(4);
}

}  // namespace touch
