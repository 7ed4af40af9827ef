#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "measure/units.h"

namespace touch::measure {

/// How far something may go, in mm, in percent of the panel's side, or both; of both the longer
/// counts, so that a percent widens a limit on large panels.
struct LengthLimit {
  std::optional<Millimetres> mm;
  std::optional<Percent> percent;

  Millimetres on(Millimetres side) const;
  friend bool operator==(const LengthLimit&, const LengthLimit&) = default;
};

/// The lengths that are judged.
enum class Length : std::uint8_t {
  straightness,
  straightnessRms,
  offset,
  tilt,
  scale,
  centre,
  edge,
  scatter,
  hysteresis,
  gap,
  farOff,
  restNoise,
  restPeak,
  drift,
  tapMean,
  tapWorst,
  tapSpread,
  edgeReach,
};
inline constexpr std::size_t lengthCount = 18;

struct LengthName {
  std::string_view name;  ///< in files
  const char* words;      ///< for people; said in the context "measure"
};
LengthName nameOf(Length length);

/// What a panel has to keep.
struct Limits {
  std::array<LengthLimit, lengthCount> lengths;
  Percent coverage{95};       ///< of each line, at least
  Percent rubbed{100};        ///< of the panel's cells, at least
  int samples = 50;           ///< on each line, at least
  Millimetres edgeZone{3.5};  ///< at each end of a line, in which samples must be
  Seconds rest{3};            ///< a finger has to rest, at least
  int missedTaps = 0;         ///< at most
  int doubleTaps = 0;         ///< at most

  const LengthLimit& operator[](Length length) const {
    return lengths[static_cast<std::size_t>(length)];
  }
  LengthLimit& operator[](Length length) { return lengths[static_cast<std::size_t>(length)]; }
  friend bool operator==(const Limits&, const Limits&) = default;
};

struct Profile {
  std::string_view name;
  const char* words;
  Limits limits;
};
/// "industrial" first, which holds where nothing is said.
std::span<const Profile> profiles();
/// Nothing for other names.
const Profile* findProfile(std::string_view name);

}  // namespace touch::measure
