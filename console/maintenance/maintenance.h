#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "console/parameters/parameter_words.h"

namespace touch {

class Backup;
class Prompt;

/// Sends "RD": the controller takes back the values that it left the factory with. Message 8 or 9
/// tells how it ended.
bool restoreDefaults(const Access& access, Prompt& prompt);

/// "Reset": sends "R". Message 10 or 11 tells how it ended.
bool resetController(const Access& access, Prompt& prompt);

/// What came of "Defaults".
struct DefaultsRestored {
  bool restored = false;  ///< the controller said so
  std::optional<ParameterBlock>
      before;                  ///< the way back, for undoBlock(); nothing when it could not be read
  std::filesystem::path kept;  ///< the backup file; empty when there is none
  std::string whyNoBackup;     ///< then
};

/// "Defaults": keeps the parameter block, then restores the defaults. Asks nothing, and a block
/// that cannot be read or kept stops nothing.
DefaultsRestored defaults(const Access& access, Prompt& prompt, const Backup& backup);

}  // namespace touch
