#pragma once

#include <array>
#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace touch {

enum class Parity : char { none = 'n', even = 'e', odd = 'o' };

/// How the bytes travel on a serial line.
struct LineSettings {
  int baud = 9600;  ///< bits a second; which ones a port can do shows when it is opened
  Parity parity = Parity::none;
  int dataBits = 8;  ///< 5 to 8
  int stopBits = 1;  ///< 1 or 2
  friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

/// How many bits a byte has on the line, with those around it.
int bitsPerByte(const LineSettings& settings);
/// What a byte takes on the line.
std::chrono::nanoseconds byteTime(const LineSettings& settings);

/// The speeds that lines usually have.
inline constexpr std::array usualSpeeds = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};

/// Those of adapters beside them.
inline constexpr std::array highSpeeds = {230400, 460800, 921600, 1000000, 2000000, 4000000};

/// Those on which a controller is looked for.
struct SearchedSettings {
  std::vector<LineSettings> likely;  ///< each usual speed with each usual form of a byte
  std::vector<LineSettings> others;  ///< the rest: all speeds, and all forms of 7 or 8 data bits
};
/// Both with the likeliest first: most are found at once.
SearchedSettings searchedSettings();

/// Reads "baud,parity,data bits,stop bits", e.g. "9600,n,8,1"; the parity may be a capital letter.
/// The error says what was expected and what stands there instead.
Result<LineSettings, std::string> parseLineSettings(std::string_view text);

/// The text that parseLineSettings reads.
std::string describe(const LineSettings& settings);

}  // namespace touch
