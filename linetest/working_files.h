#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/result.h"
#include "core/system_file.h"
#include "linetest/stroke.h"

namespace touch {

// Working files: each recorded stroke as soon as it is drawn, so that a crash loses none. "tmp000.tmp", "tmp001.tmp" …
// in a folder of their own; numbers are laid out as number_layout.h says. The records are
//
//   palette index        0 to 15
//   width                1 or 2
//   x TAB y              one for each sample, in twips, up to 3001

std::string workingText(const Stroke& stroke);

/// `name` is what an error calls the file.
Result<Stroke, FileError> parseWorkingText(std::string_view text, std::string name);

/// What a program that ended early has left in its working files, in the order of their numbers.
struct LeftStrokes {
  struct Numbered {
    int number = 0;
    Stroke stroke;
  };
  std::vector<Numbered> strokes;
  std::vector<FileError> damaged;  ///< files that cannot be read, and why
  std::vector<int> damagedNumbers;
};

class WorkingFiles {
 public:
  /// They live in the folder "tmp" under `workingFolder`, or in "tmp" to "tmp9" under `fallBack` when nothing can be
  /// written there or another program has its own there. What a crash in the middle of a write has left of a file is
  /// swept away; whole files stay.
  WorkingFiles(const std::filesystem::path& workingFolder, const std::filesystem::path& fallBack);

  const std::filesystem::path& folder() const { return folder_; }
  std::filesystem::path pathOf(int number) const;

  /// Whole or not at all. From now on the drawing is unfinished.
  std::optional<FileError> write(int number, const Stroke& stroke) const;
  Result<Stroke, FileError> read(int number) const;
  /// The strokes 0 to `count` - 1, or the first error.
  Result<std::vector<Stroke>, FileError> readAll(int count) const;
  void remove(int number) const;

  /// Whether the drawing in the files is one that its program did not come to finish: neither cleared nor saved, nor left
  /// by the user. A file tells it to the next run.
  bool isUnfinished() const;
  void finish() const;

  /// Deletes every "*.tmp" in the folder, which is the system's own. That finishes the drawing.
  std::optional<FileError> clear() const;
  LeftStrokes left() const;
  /// Gives the damaged files of `left` names that say so, under which nothing is written and nothing deleted.
  std::optional<FileError> setDamagedAside(const LeftStrokes& left) const;
  /// Where `keepAside` will keep strokes: a drawing file of a free name in the folder.
  std::filesystem::path asidePath() const;
  /// Turns the strokes of `left` into that drawing file, which nothing writes to or deletes any more.
  std::optional<FileError> keepAside(const LeftStrokes& left) const;
  /// Gives the files of `left` the numbers from 0 on where some are missing, as saving needs them. It takes no room on
  /// the disk, and a crash in between loses none.
  std::optional<FileError> makeConsecutive(const LeftStrokes& left) const;

 private:
  std::filesystem::path folder_;
  File held_;  ///< keeps other programs out of the folder
};

}  // namespace touch
