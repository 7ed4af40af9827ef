#include "linetest/damaged_files.h"

#include "core/language.h"

namespace touch {

std::string damagedFilesText(std::span<const FileError> damaged) {
  std::string text = damaged.front().describe();
  if (const auto more = damaged.size() - 1; more > 0)
    text += '\n' + filled(say("linetest", "%1 more cannot be read."), {std::to_string(more)});
  return text;
}

}  // namespace touch
