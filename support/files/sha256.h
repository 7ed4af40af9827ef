#pragma once

#include <string>
#include <string_view>

namespace touch {

/// The SHA-256 of these bytes, as 64 small hexadecimal digits.
std::string sha256(std::string_view bytes);

}  // namespace touch
