#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/options.h"
#include "measure/units.h"

namespace touch {

/// "WIDTHxHEIGHT" in mm.
std::optional<measure::PanelSize> parsePanelSize(std::string_view text);
/// Wrong use unless it is empty or such a size.
void checkPanelSize(const std::string& text);

/// The screen that is worked on, in pixels: that of --screen, else 1024x768.
ScreenSize screenOf(const Options& options);
/// "1024x768"
std::string screenText(const Options& options);
/// The size of that screen at 96 pixels an inch.
measure::PanelSize nominalSizeOf(const Options& options);
/// That of the source of --simulate-from where it is known, else nominal.
measure::PanelSize simulatedSizeOf(const Options& options);

}  // namespace touch
