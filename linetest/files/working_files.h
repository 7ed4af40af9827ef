#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/stroke.h"
#include "linetest/files/drawing_file.h"
#include "support/result.h"

namespace touch {

class OwnFolder;

// Working files: each recorded stroke as soon as it is drawn, so that a crash loses none.
// "tmp000.tmp", "tmp001.tmp" … in a folder of their own; numbers are laid out as number_layout.h
// says. The records are
//
//   palette index        0 to 15
//   width                1 or 2
//   x TAB y              one for each sample, in twips, up to 3001

std::string workingText(const Stroke& stroke);

/// `name` is what an error calls the file.
Result<Stroke> parseWorkingText(std::string_view text, std::string name);

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
  /// They live in the folder "tmp" under `workingFolder`, or in "tmp" to "tmp9" under `fallBack`
  /// when none can be made there, another program has its own there, or what has the name was not
  /// made and marked by this system. The folder is made when the first stroke is written; one with
  /// strokes that an earlier run has left is taken at once.
  WorkingFiles(const std::filesystem::path& workingFolder, const std::filesystem::path& fallBack);
  WorkingFiles(WorkingFiles&&) noexcept;
  WorkingFiles& operator=(WorkingFiles&&) noexcept;
  ~WorkingFiles();

  const std::filesystem::path& folder() const;
  std::filesystem::path pathOf(int number) const;

  /// Whole or not at all. From now on the drawing is unfinished.
  Status write(int number, const Stroke& stroke) const;
  Result<Stroke> read(int number) const;
  /// The strokes 0 to `count` - 1, or the first error.
  Result<std::vector<Stroke>> readAll(int count) const;
  void remove(int number) const;

  /// Whether the drawing in the files is one that its program did not come to finish: neither
  /// cleared nor saved, nor left by the user. A file tells it to the next run.
  bool isUnfinished() const;
  Status markUnfinished() const;
  void finish() const;

  /// Deletes every file of a stroke in the folder, which is the system's own, and what a crash in
  /// the middle of a write has left of one; nothing else. That finishes the drawing.
  Status clear() const;
  LeftStrokes left() const;
  /// Gives the damaged files of `left` names that say so, under which nothing is written and
  /// nothing deleted.
  [[nodiscard]] Status setDamagedAside(const LeftStrokes& left) const;
  /// Where `keepAside` will keep strokes: a drawing file of a free name in the folder.
  std::filesystem::path asidePath() const;
  /// Turns the strokes of `left` into that drawing file, which nothing writes to or deletes any
  /// more; into several where one may not hold them all.
  [[nodiscard]] Status keepAside(const LeftStrokes& left, const DrawingLimits& limits = {}) const;
  /// Keeps all strokes that are in the folder aside, so that those of a new drawing take no other's
  /// place. None is deleted.
  [[nodiscard]] Status makeRoom() const;
  /// Gives the files of `left` the numbers from 0 on where some are missing, as saving needs them.
  /// It takes no room on the disk, and a crash in between loses none.
  [[nodiscard]] Status makeConsecutive(const LeftStrokes& left) const;

 private:
  struct Place;

  /// Null as long as there is no folder.
  const OwnFolder* files() const;
  /// Sees to it that there is one.
  Status prepare() const;

  std::unique_ptr<Place> place_;
};

}  // namespace touch
