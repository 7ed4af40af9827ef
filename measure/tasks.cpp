#include "measure/tasks.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace touch::measure {

namespace {

constexpr int perOrientation = 9;

constexpr double placeOf(int index) {
  constexpr double first = 1.0 / 32;
  return first + (1 - 2 * first) * index / (perOrientation - 1);
}

constexpr std::string_view names[] = {"V-1", "V-2", "V-3", "V-4", "V-5", "V-6",
                                      "V-7", "V-8", "V-9", "H-1", "H-2", "H-3",
                                      "H-4", "H-5", "H-6", "H-7", "H-8", "H-9"};

constexpr auto straightLines = std::size(names);
constexpr auto guides = [] {
  std::array<Guide, straightLines + 5> all{};
  for (int i = 0; i < perOrientation; ++i) {
    const auto v = static_cast<std::size_t>(i);
    const std::size_t h = v + perOrientation;
    all[v] = {names[v], {placeOf(i), 0}, {placeOf(i), 1}};
    all[h] = {names[h], {0, placeOf(i)}, {1, placeOf(i)}};
  }
  all[straightLines] = {"D-1", {0, 0}, {1, 1}};
  all[straightLines + 1] = {"D-2", {1, 0}, {0, 1}};
  all[straightLines + 2] = {"V-5 back", {0.5, 1}, {0.5, 0}, true};
  all[straightLines + 3] = {"H-5 back", {1, 0.5}, {0, 0.5}, true};
  all[straightLines + 4] = {"D-1 back", {1, 1}, {0, 0}, true};
  return all;
}();

}  // namespace

std::span<const Guide> allGuides() {
  return guides;
}

std::vector<const Guide*> guidesOf(LineSet set) {
  std::vector<const Guide*> chosen;
  for (std::size_t i = 0; i < guides.size(); ++i) {
    const bool odd = i % perOrientation % 2 == 0;
    if (i < straightLines ? set != LineSet::ten || odd : set == LineSet::full)
      chosen.push_back(&guides[i]);
  }
  return chosen;
}

const Guide* findGuide(std::string_view name) {
  const auto* found = std::ranges::find(guides, name, &Guide::name);
  return found == guides.end() ? nullptr : found;
}

GuideFrame::GuideFrame(const Guide& guide, const PanelSize& size)
    : from_(size.point(guide.from)),
      direction_((size.point(guide.to) - from_).normalized()),
      normal_(-direction_.y(), direction_.x()),
      length_((size.point(guide.to) - from_).norm()) {
  constexpr double tiny = 1e-9;
  if (normal_.y() < -tiny || (std::abs(normal_.y()) <= tiny && normal_.x() < 0)) normal_ = -normal_;
  const bool vertical = std::abs(direction_.x()) < tiny;
  const bool horizontal = std::abs(direction_.y()) < tiny;
  side_ = vertical ? size.width : horizontal ? size.height : std::min(size.width, size.height);
}

std::vector<Target> tapTargets(int count) {
  const int perRow = count == 25 ? 5 : 3;
  constexpr double margin = 0.1;
  std::vector<Target> targets;
  for (int i = 0; i < perRow * perRow; ++i) {
    const auto place = [&](int step) { return margin + (1 - 2 * margin) * step / (perRow - 1); };
    targets.push_back({"tap " + std::to_string(i + 1), {place(i % perRow), place(i / perRow)}});
  }
  return targets;
}

std::vector<Target> restTargets() {
  return {{"rest 1", {0.5, 0.5}},
          {"rest 2", {0.15, 0.15}},
          {"rest 3", {0.85, 0.15}},
          {"rest 4", {0.15, 0.85}},
          {"rest 5", {0.85, 0.85}}};
}

bool isTask(std::string_view name) {
  const auto isOneOf = [&](const std::vector<Target>& targets) {
    return std::ranges::find(targets, name, &Target::name) != targets.end();
  };
  return name == rubTask || findGuide(name) || isOneOf(restTargets()) || isOneOf(tapTargets(25));
}

}  // namespace touch::measure
