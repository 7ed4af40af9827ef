#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace touch {

/// What a screen says of itself (EDID).
struct ScreenData {
  int widthMm = 0;
  int heightMm = 0;
  std::string name;  ///< empty when it has none
};

/// Nothing when it is damaged, or says no size that can be believed.
std::optional<ScreenData> parseScreenData(std::span<const std::uint8_t> edid);

/// Of the screen at `connector`, "HDMI-1" or "eDP-1", as the system has it below `folder`.
std::optional<ScreenData> readScreenData(std::string_view connector,
                                         const std::filesystem::path& folder = "/sys/class/drm");

}  // namespace touch
