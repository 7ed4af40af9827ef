#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace touch {

/// Takes the marks out of a stream in which the line says which bytes came damaged: FF 00 stands
/// before such a byte, and an undamaged FF is doubled. A break is a damaged 00.
class DamageMarks {
 public:
  /// Appends what `marked` stands for to `bytes`; a mark may begin in one call and end in the next.
  /// Returns how many of the appended bytes were damaged.
  std::size_t take(std::span<const std::uint8_t> marked, std::vector<std::uint8_t>& bytes);
  /// The stream begins anew.
  void forget() { place_ = Place::outside; }

 private:
  enum class Place : std::uint8_t { outside, begun, beforeDamaged };
  Place place_ = Place::outside;
};

}  // namespace touch
