#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace touch {

/// A time since the beginning of a recording as users type it: seconds, or hours, minutes and
/// seconds with colons between; "75", "1:15", "0:01:15.25". A comma is a point too.
std::optional<std::chrono::microseconds> parseReplayTime(std::string_view text);

}  // namespace touch
