#pragma once

#include <compare>

namespace touch {

/// A number with its unit, so that a millimetre cannot be taken for a percent.
template <typename Unit, typename Number = double>
struct Quantity {
  Number value{};
  // NOLINTNEXTLINE(modernize-use-nullptr): the 0 that it finds is within the default itself
  friend constexpr auto operator<=>(const Quantity&, const Quantity&) = default;
};

}  // namespace touch
