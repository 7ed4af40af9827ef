#include "console/settings/timing_bars.h"

#include <algorithm>
#include <array>

namespace touch {

namespace {

constexpr int stepMilliseconds = 100;

struct BarKind {
  int (*get)(const ClickTiming&) = nullptr;
  void (*put)(ClickTiming&, int) = nullptr;
  int step = 1;             ///< the driver's numbers in one step of the bar
  TimingBars::Range usual;  ///< in steps
};

template <auto member>
constexpr BarKind barOf(int step, TimingBars::Range usual) {
  return {getMember<member>, putMember<member>, step, usual};
}

// In the order of the bars. The speed counts in steps of 100 ms in the driver already.
constexpr std::array barKinds = {
    barOf<&ClickTiming::doubleClickSpeed>(1, {1, 20}),
    barOf<&ClickTiming::doubleClickArea>(1, {0, 100}),
    barOf<&ClickTiming::rightClickTime>(stepMilliseconds, {3, 12}),
};

const BarKind& kindOf(TimingBars::Bar bar) {
  return barKinds[static_cast<std::size_t>(bar)];
}

int stepsOf(const BarKind& kind, const ClickTiming& timing) {
  return (kind.get(timing) + kind.step / 2) / kind.step;
}

}  // namespace

ClickTiming timingOf(const DriverSettings& settings) {
  return {std::clamp(settings.rightClickTime, shortestRightClick, longestRightClick),
          settings.doubleClickSpeed, settings.doubleClickArea};
}

TimingBars::TimingBars(const DriverSettings& reported)
    : timing_(timingOf(reported)), driver_(timing_) {}

TimingBars::Range TimingBars::range(Bar bar) const {
  const BarKind& kind = kindOf(bar);
  const int own = stepsOf(kind, driver_);
  return {std::min(kind.usual.lowest, own), std::max(kind.usual.highest, own)};
}

int TimingBars::position(Bar bar) const {
  return stepsOf(kindOf(bar), timing_);
}

bool TimingBars::isUnsent(Bar bar) const {
  const BarKind& kind = kindOf(bar);
  return kind.get(timing_) != kind.get(driver_);
}

void TimingBars::move(Bar bar, int position) {
  const BarKind& kind = kindOf(bar);
  if (position == this->position(bar)) return;
  const auto [lowest, highest] = range(bar);
  kind.put(timing_, std::clamp(position, lowest, highest) * kind.step);
}

std::string TimingBars::label(Bar bar) const {
  const int value = kindOf(bar).get(timing_);
  return std::to_string(bar == Bar::doubleClickSpeed ? value * stepMilliseconds : value);
}

}  // namespace touch
