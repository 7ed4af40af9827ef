#pragma once

#include <string_view>

namespace touch::commission {

/// A value, and the word that files have for it.
template <typename Value>
struct Word {
  std::string_view name;
  Value value;
};

}  // namespace touch::commission
