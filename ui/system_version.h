#pragma once

#include <optional>

namespace touch {

/// The system's major version where it is Windows.
std::optional<int> windowsVersion();

}  // namespace touch
