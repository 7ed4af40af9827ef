#pragma once

#include <cstdint>

namespace touch::simulator {

/// How the driver turns the touches of a controller into pointer actions. Switches are 0 or 1.
struct PointerSettings {
  std::int32_t reportMode = 1;  ///< 1 desk top, 2 drawing, 3 button
  std::int32_t rotation = 0;    ///< quarter turns, 0 to 3
  std::int32_t upSound = 0;
  std::int32_t downSound = 1;
  std::int32_t doubleClick = 1;
  std::int32_t doubleClickSpeed = 5;  ///< tenths of a second, 1 to 255
  std::int32_t doubleClickArea = 10;  ///< pixels around the first click, 0 to 255
  std::int32_t rightClick = 1;
  std::int32_t rightClickTime = 1000;  ///< milliseconds, 300 to 1200
};

}  // namespace touch::simulator
