#include "linetest/files/damaged_files.h"

#include "support/text/language.h"

namespace touch {

std::string damagedFilesText(std::span<const FileError> damaged) {
  std::string text = damaged.front().describe();
  if (const auto more = damaged.size() - 1; more > 0)
    text += '\n' + filled(say("drawings", "%1 more cannot be read."), {std::to_string(more)});
  return text;
}

}  // namespace touch
