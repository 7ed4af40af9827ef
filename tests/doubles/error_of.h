#pragma once

#include <optional>

namespace touch::test {

/// Why something failed; nothing when it went well.
template <typename Result>
std::optional<typename Result::error_type> errorOf(const Result& result) {
  if (result) return std::nullopt;
  return result.error();
}

}  // namespace touch::test
