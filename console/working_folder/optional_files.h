#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace touch {

/// An optional file of the working folder, as it was found.
struct OptionalFile {
  std::string name;
  bool there = false;
  bool decoded = true;    ///< false: only its structure was looked at
  std::string complaint;  ///< what is wrong with it; empty when it is sound or not there
  std::string
      effect;  ///< what the program does with it, or without it when it is damaged, as a sentence
};

/// Looks at each file that the program reads from its working folder if it is there: can it be
/// read, does it hold what it should? Pictures are read to their end, and not decoded.
std::vector<OptionalFile> examineOptionalFiles(const std::filesystem::path& workFolder);

}  // namespace touch
