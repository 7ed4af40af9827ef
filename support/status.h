#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace touch {

enum class StatusKind : std::uint8_t { success, remark, error };

/// One line for the user about what has just happened. What is not said to be a success or an error
/// is a remark.
struct Status {
  StatusKind kind = StatusKind::remark;
  std::string text;

  Status() = default;
  // A plain text is a line like any other: whoever does not know how it went need not say it.
  Status(std::string line) : text(std::move(line)) {}  // NOLINT(google-explicit-constructor)
  Status(StatusKind how, std::string line) : kind(how), text(std::move(line)) {}

  static Status success(std::string line) { return {StatusKind::success, std::move(line)}; }
  static Status error(std::string line) { return {StatusKind::error, std::move(line)}; }
};

}  // namespace touch
