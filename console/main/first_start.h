#pragma once

#include <filesystem>

namespace touch {

/// Whether the program is started here for the first time. The file "greeted" in the program's own
/// folder remembers it; without such a folder no start is the first one.
class FirstStart {
 public:
  FirstStart(std::filesystem::path ownFolder, std::filesystem::path workFolder);

  /// True once, and never again: also when this run ends before anybody has seen it. What an
  /// earlier version has kept in the working folder tells of an earlier start. False when it cannot
  /// be remembered: nobody is to be greeted each time.
  bool take() const;

 private:
  std::filesystem::path ownFolder_;
  std::filesystem::path workFolder_;
};

}  // namespace touch
