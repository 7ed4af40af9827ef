#include "serial/receiving/damage_marks.h"

#include <utility>

namespace touch {

namespace {

constexpr std::uint8_t markStart = 0xFF;
constexpr std::uint8_t damagedFollows = 0x00;

}  // namespace

std::size_t DamageMarks::take(std::span<const std::uint8_t> marked,
                              std::vector<std::uint8_t>& bytes) {
  std::size_t damaged = 0;
  for (const std::uint8_t byte : marked) {
    const Place place = std::exchange(place_, Place::outside);
    if (place == Place::outside && byte == markStart) {
      place_ = Place::begun;
    } else if (place == Place::begun && byte == damagedFollows) {
      place_ = Place::beforeDamaged;
    } else {
      // A single FF before anything else is no mark that there is: it stays what it is.
      if (place == Place::begun && byte != markStart) bytes.push_back(markStart);
      if (place == Place::beforeDamaged) ++damaged;
      bytes.push_back(byte);
    }
  }
  return damaged;
}

}  // namespace touch
