#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "measure/files/json_reader.h"
#include "measure/measurement.h"
#include "support/result.h"

namespace touch::measure {

// docs/file-formats.md describes both files.

/// Of its file, in bytes.
inline constexpr std::size_t largestMeasurement = std::size_t{192} << 20U;

/// All of a measurement. `verdict` is what it was judged to be; it is for readers, and computed
/// again when the file is read.
std::string measurementText(const Measurement& measurement, const Json& verdict);
Result<Measurement> parseMeasurement(std::string_view text, const std::string& name);
Result<Measurement> readMeasurement(const std::filesystem::path& file);
/// Whole or not at all; refuses what could not be read again.
[[nodiscard]] Status writeMeasurement(const std::filesystem::path& file,
                                      const Measurement& measurement, const Json& verdict);

/// A profile, and what differs from it.
std::string limitsText(const Limits& limits);
Result<Limits> parseLimits(std::string_view text, const std::string& name);
Result<Limits> readLimits(const std::filesystem::path& file);

}  // namespace touch::measure
