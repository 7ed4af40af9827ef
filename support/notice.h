#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace touch {

enum class NoticeKind : std::uint8_t { success, remark, error };

/// One line for the user about what has just happened. What is not said to be a success or an error
/// is a remark.
struct Notice {
  NoticeKind kind = NoticeKind::remark;
  std::string text;

  Notice() = default;
  // A plain text is a line like any other: whoever does not know how it went need not say it.
  Notice(std::string line) : text(std::move(line)) {}  // NOLINT(google-explicit-constructor)
  Notice(NoticeKind how, std::string line) : kind(how), text(std::move(line)) {}

  static Notice success(std::string line) { return {NoticeKind::success, std::move(line)}; }
  static Notice error(std::string line) { return {NoticeKind::error, std::move(line)}; }
};

}  // namespace touch
