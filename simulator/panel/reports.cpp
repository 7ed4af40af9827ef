#include "simulator/panel/reports.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <span>

namespace touch::simulator {

namespace {

constexpr std::uint16_t highestTablet = 16383;
constexpr std::uint16_t highestPacket = 65535;

std::uint16_t scaled(double fraction, std::uint16_t highest) {
  return static_cast<std::uint16_t>(std::lround(std::clamp(fraction, 0.0, 1.0) * highest));
}

std::uint8_t low7(std::uint16_t value) {
  return static_cast<std::uint8_t>(value & 0x7F);
}
std::uint8_t high7(std::uint16_t value) {
  return low7(static_cast<std::uint16_t>(value >> 7));
}
std::uint8_t low8(std::uint16_t value) {
  return static_cast<std::uint8_t>(value & 0xFF);
}
std::uint8_t high8(std::uint16_t value) {
  return static_cast<std::uint8_t>(value >> 8);
}

std::vector<std::uint8_t> textReport(const char* form, Point place, bool touching) {
  std::array<char, 32> text{};
  const int length = std::snprintf(text.data(), text.size(), form, touching ? 'T' : 'R',
                                   static_cast<unsigned>(scaled(place.x, highestTablet)),
                                   static_cast<unsigned>(scaled(place.y, highestTablet)));
  return {text.begin(), text.begin() + length};
}

}  // namespace

std::vector<std::uint8_t> encodeReport(ReportFormat format, Point place, bool touching) {
  const std::uint16_t x = scaled(place.x, highestTablet);
  const std::uint16_t y = scaled(place.y, highestTablet);
  switch (format) {
    case ReportFormat::tablet: {
      const std::uint8_t status = touching ? 0xD8 : 0x98;
      return {status, low7(x), high7(x), low7(y), high7(y)};
    }
    case ReportFormat::raw: {
      const std::uint8_t status = touching ? 0xC8 : 0x88;
      return {status, high7(x), low7(x), high7(y), low7(y)};
    }
    case ReportFormat::decimal:
      return textReport("%c%05u,%05u\r", place, touching);
    case ReportFormat::hexadecimal:
      return textReport("%c%04X,%04X\r", place, touching);
    case ReportFormat::packet:
      break;
  }
  const std::uint16_t wideX = scaled(place.x, highestPacket);
  const std::uint16_t wideY = scaled(place.y, highestPacket);
  const std::uint8_t status = touching ? 0x82 : 0x84;
  return {'U', 'T', status, low8(wideX), high8(wideX), low8(wideY), high8(wideY), 0, 0, 'S'};
}

}  // namespace touch::simulator
