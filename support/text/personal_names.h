#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace touch {

/// What tells whose computer this is.
struct PersonalNames {
  std::vector<std::string> homeFolders;  ///< by each of their names
  std::string host;
};

PersonalNames personalNames();

/// The text with "~" in place of each home folder, also as JSON writes it, and
/// "(this computer)" in place of the computer's name where that is a word of its own.
std::string withoutPersonalNames(std::string_view text, const PersonalNames& names);

}  // namespace touch
