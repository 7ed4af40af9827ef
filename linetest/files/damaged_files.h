#pragma once

#include <span>
#include <string>

#include "support/result.h"

namespace touch {

/// What the user is told of files that cannot be read, of which there is at least one: the first in
/// full, then how many more there are.
std::string damagedFilesText(std::span<const FileError> damaged);

}  // namespace touch
