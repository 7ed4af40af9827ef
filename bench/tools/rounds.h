#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

namespace touch::bench {

/// A finger that goes round on the panel, lifted once in a round.
inline std::vector<std::uint8_t> rounds() {
  constexpr int reportsInRound = 200;
  std::vector<std::uint8_t> bytes;
  for (int i = 0; i < reportsInRound; ++i) {
    const double angle = 2 * M_PI * i / reportsInRound;
    const auto x = static_cast<unsigned>(8192 + 6000 * std::cos(angle));
    const auto y = static_cast<unsigned>(8192 + 6000 * std::sin(angle));
    const unsigned status = i == reportsInRound - 1 ? 0x98 : 0xD8;
    for (const unsigned byte : {status, x & 0x7FU, x >> 7U, y & 0x7FU, y >> 7U})
      bytes.push_back(static_cast<std::uint8_t>(byte));
  }
  return bytes;
}

}  // namespace touch::bench
