#include "simulator/controller/parameter_memory.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace touch::simulator {

namespace {

constexpr std::uint16_t erased = 0xFFFF;
constexpr std::uint8_t wiringStart = 0x80;
constexpr double fixedPointOne = 16384;
constexpr std::size_t mapStart = 2;

// In the order of their words.
constexpr std::array mapFactors{&TouchMap::xFromX, &TouchMap::xFromY, &TouchMap::xShift,
                                &TouchMap::yFromX, &TouchMap::yFromY, &TouchMap::yShift};

std::optional<std::size_t> indexOf(std::uint8_t address, std::size_t areaSize) {
  if (address < areaSize) return address;
  if (address >= wiringStart && address < wiringStart + areaSize) {
    return address - wiringStart + areaSize;
  }
  return std::nullopt;
}

}  // namespace

ParameterMemory::ParameterMemory(std::span<const FactoryWord> defaults) : defaults_(defaults) {
  restoreAll();
}

std::optional<std::uint16_t> ParameterMemory::read(std::uint8_t address) const {
  const auto index = indexOf(address, areaSize);
  if (!index) return std::nullopt;
  return words_[*index];
}

bool ParameterMemory::write(std::uint8_t address, std::uint16_t value) {
  const auto index = indexOf(address, areaSize);
  if (!index || locked_) return false;
  words_[*index] = value;
  return true;
}

void ParameterMemory::restoreParameters() {
  const auto wiring = words_;
  restoreAll();
  std::copy(wiring.begin() + areaSize, wiring.end(), words_.begin() + areaSize);
}

void ParameterMemory::restoreAll() {
  words_.fill(erased);
  storeTouchMap(TouchMap{});
  for (const auto& [address, value] : defaults_) {
    if (const auto index = indexOf(address, areaSize)) words_[*index] = value;
  }
}

ParameterMemory::MapWords ParameterMemory::mapWords() const {
  MapWords words{};
  std::copy_n(words_.begin() + mapStart, words.size(), words.begin());
  return words;
}

void ParameterMemory::mean(const TouchMap& map) {
  meaning_ = {mapWords(), map};
}

TouchMap ParameterMemory::touchMap() const {
  if (meaning_ && meaning_->words == mapWords()) return meaning_->map;
  TouchMap map;
  for (std::size_t i = 0; i < mapFactors.size(); ++i) {
    map.*mapFactors[i] = static_cast<std::int16_t>(words_[mapStart + i]) / fixedPointOne;
  }
  return map;
}

bool ParameterMemory::storeTouchMap(const TouchMap& map) {
  std::array<std::uint16_t, mapFactors.size()> words{};
  for (std::size_t i = 0; i < mapFactors.size(); ++i) {
    const double value = std::round(map.*mapFactors[i] * fixedPointOne);
    using Limits = std::numeric_limits<std::int16_t>;
    if (!(value >= Limits::min() && value <= Limits::max())) return false;
    words[i] = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
  }
  std::ranges::copy(words, words_.begin() + mapStart);
  return true;
}

}  // namespace touch::simulator
