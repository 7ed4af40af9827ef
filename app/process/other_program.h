#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace touch {

/// Runs a program of this installation, e.g. "touchutility", to its end, with this one's outputs.
/// Its exit status; nothing when it is not there, or did not end by itself.
std::optional<int> runNeighbour(const std::string& name,
                                const std::vector<std::filesystem::path>& arguments);

}  // namespace touch
