#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "simulator/panel/touch_map.h"

namespace touch::simulator {

/// A word that a controller leaves the factory with.
struct FactoryWord {
  std::uint8_t address = 0;
  std::uint16_t value = 0;
};

/// A controller's parameter memory: 16-bit words at the addresses 00 to 3F and 80 to BF. Words 02
/// to 07 are the calibration: the factors from raw x and raw y and the shift, first for x, then for
/// y, in signed 1/16384. The words at 80 and above are the sensor's wiring. An erased word reads
/// FFFF. The lock keeps words from being written one by one; restoring defaults and calibrating
/// stay possible.
class ParameterMemory {
 public:
  /// `defaults` must outlive the memory.
  explicit ParameterMemory(std::span<const FactoryWord> defaults);

  /// Nothing for an address outside the memory.
  std::optional<std::uint16_t> read(std::uint8_t address) const;
  /// False when locked or when there is no such address.
  bool write(std::uint8_t address, std::uint16_t value);

  void lock() { locked_ = true; }
  void unlock() { locked_ = false; }
  bool isLocked() const { return locked_; }

  /// The words 00 to 3F; the wiring stays.
  void restoreParameters();
  void restoreAll();

  TouchMap touchMap() const;
  /// Says what its calibration words mean as long as they are what they are now: another maker
  /// writes a calibration in another way.
  void mean(const TouchMap& map);
  /// False, keeping the old map, when a factor is too large for its word: no real panel needs that.
  bool storeTouchMap(const TouchMap& map);

 private:
  static constexpr std::size_t areaSize = 0x40;
  static constexpr std::size_t mapSize = 6;
  using MapWords = std::array<std::uint16_t, mapSize>;
  struct Meaning {
    MapWords words{};
    TouchMap map;
  };
  MapWords mapWords() const;

  std::span<const FactoryWord> defaults_;
  std::array<std::uint16_t, 2 * areaSize> words_{};
  bool locked_ = false;
  std::optional<Meaning> meaning_;
};

}  // namespace touch::simulator
