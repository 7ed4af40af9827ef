#include "app/touchctl/commands/panel_size.h"

#include <fmt/core.h>

#include <charconv>

#include "app/touchctl/command_line.h"
#include "commission/replay/replay.h"

namespace touch {

using namespace measure;

std::optional<PanelSize> parsePanelSize(std::string_view text) {
  const auto number = [](std::string_view part) -> std::optional<Millimetres> {
    double value = 0;
    const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
    if (error != std::errc{} || end != part.data() + part.size() || !(value >= 1 && value <= 5000))
      return std::nullopt;
    return Millimetres{value};
  };
  const auto cross = text.find('x');
  if (cross == text.npos) return std::nullopt;
  const auto width = number(text.substr(0, cross));
  const auto height = number(text.substr(cross + 1));
  if (!width || !height) return std::nullopt;
  return PanelSize{*width, *height, SizeSource::user};
}

void checkPanelSize(const std::string& text) {
  if (!text.empty() && !parsePanelSize(text))
    refuseArgument("--panel-size",
                   fmt::format("\"{}\" is not WIDTHxHEIGHT in mm, e.g. 344.5x193.5", text));
}

ScreenSize screenOf(const Options& options) {
  constexpr ScreenSize usualScreen{1024, 768};
  return options.screen.value_or(usualScreen);
}

std::string screenText(const Options& options) {
  return fmt::format("{}x{}", screenOf(options).width, screenOf(options).height);
}

PanelSize nominalSizeOf(const Options& options) {
  return nominalSize(screenOf(options).width, screenOf(options).height);
}

PanelSize simulatedSizeOf(const Options& options) {
  const std::optional<PanelSize> known = options.replay ? options.replay->size : std::nullopt;
  return known.value_or(nominalSizeOf(options));
}

}  // namespace touch
