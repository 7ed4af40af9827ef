#pragma once

#include <chrono>
#include <string>
#include <type_traits>

#include "core/driver/driver_settings.h"

namespace touch {

/// What the three scroll bars hold, in the driver's numbers.
struct ClickTiming {
  std::chrono::milliseconds rightClickTime{1000};
  Deciseconds doubleClickSpeed{0};  ///< 0 to 255
  int doubleClickArea = 0;          ///< 0 to 255
  friend bool operator==(const ClickTiming&, const ClickTiming&) = default;
};

/// A member as the number that the driver knows it by.
template <auto member, typename Settings>
int getMember(const Settings& from) {
  const auto value = from.*member;
  if constexpr (requires { value.count(); }) {
    return static_cast<int>(value.count());
  } else {
    return static_cast<int>(value);
  }
}

template <auto member, typename Settings>
void putMember(Settings& into, int value) {
  using Value = std::remove_reference_t<decltype(into.*member)>;
  into.*member = static_cast<Value>(value);
}

/// Those of a driver, which may report any number after a change.
ClickTiming timingOf(const DriverSettings& settings);

/// The three scroll bars. Each spans the usual range and, beyond it, the driver's own value. A bar
/// that nobody moves keeps the driver's value to the millisecond, although it moves in steps of
/// 100.
class TimingBars {
 public:
  enum class Bar { doubleClickSpeed, doubleClickArea, rightClickTime };
  struct Range {
    int lowest = 0;
    int highest = 0;
  };

  explicit TimingBars(const DriverSettings& reported);
  /// They hold what the driver has been told.
  void confirmed() { driver_ = timing_; }

  Range range(Bar bar) const;
  int position(Bar bar) const;
  /// It was moved, and the driver has not been told.
  bool isUnsent(Bar bar) const;
  /// To `position`; where it stands already is no move.
  void move(Bar bar, int position);
  /// The value that stands beside the bar: milliseconds, or the area as it is.
  std::string label(Bar bar) const;
  const ClickTiming& timing() const { return timing_; }

 private:
  ClickTiming timing_;
  ClickTiming driver_;
};

}  // namespace touch
