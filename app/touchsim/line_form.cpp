#include "app/touchsim/line_form.h"

#include <algorithm>
#include <array>
#include <utility>

namespace touch::simulator {

namespace {

constexpr std::array parities = {std::pair(Parity::none, LineFormat::Parity::none),
                                 std::pair(Parity::even, LineFormat::Parity::even),
                                 std::pair(Parity::odd, LineFormat::Parity::odd)};

}  // namespace

Result<LineSettings, std::string> lineNamed(const std::string& text) {
  constexpr std::size_t shortForm = 3;
  if (text.size() != shortForm) return parseLineSettings(text);
  std::string whole = std::to_string(LineSettings{}.baud);
  for (const char part : {text[1], text[0], text[2]})
    whole.append({',', part});
  return parseLineSettings(whole);
}

LineFormat formatOf(const LineSettings& line) {
  const auto* const parity =
      std::ranges::find(parities, line.parity, [](auto& p) { return p.first; });
  return {line.dataBits, parity->second, line.stopBits};
}

LineSettings settingsOf(const LineFormat& format, int baud) {
  const auto* const parity =
      std::ranges::find(parities, format.parity, [](auto& p) { return p.second; });
  return {baud, parity->first, format.dataBits, format.stopBits};
}

}  // namespace touch::simulator
