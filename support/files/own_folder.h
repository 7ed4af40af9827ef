#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/files/system_folder.h"
#include "support/result.h"

namespace touch {

/// A folder to which this program gives its name, such as "backup", and the files in it, which it
/// names too. Whoever can write the folder around it cannot have another file read, changed or made
/// through it: see SystemFolder. What is planted there is refused with a reason, and left as it is.
class OwnFolder {
 public:
  using Opening = SystemFolder::Opening;

  static Result<OwnFolder> open(const std::filesystem::path& path);
  /// One that the user has chosen: it may be a link and another user's. What is in it counts as in
  /// any other.
  static Result<OwnFolder> openAnybodys(const std::filesystem::path& path);
  /// Makes a new one, and the folders around it where they are missing; one that is there is
  /// refused.
  static Result<OwnFolder> make(const std::filesystem::path& path);
  static Result<OwnFolder> openOrMake(const std::filesystem::path& path);

  const std::filesystem::path& path() const { return path_; }

  Result<File> openFile(const std::string& name, Opening how) const;
  /// Whole or not at all, like writeWholeFile; the name reaches the disk too.
  [[nodiscard]] Status write(const std::string& name, std::string_view content) const;
  /// Keeps `content` under a name that nobody has: "STEMENDING", "STEM-2ENDING" … Returns which.
  Result<std::string> add(const std::string& stem, const std::string& ending,
                          std::string_view content) const;
  /// Appends `line` and LF to a file, made when missing, and flushes to the disk. After an error
  /// the file ends where it ended before, unless another program keeps it locked. A last line that
  /// was cut off is ended first.
  [[nodiscard]] Status appendLine(const std::string& name, std::string_view line) const;
  /// At most `limit` bytes.
  Result<std::string> read(const std::string& name, std::size_t limit) const;
  /// That there is none is no error.
  Status remove(const std::string& name) const;
  /// In place of a file that has the name `to`, or refused when there is one.
  [[nodiscard]] Status rename(const std::string& from, const std::string& to,
                              bool replaces = true) const;
  std::vector<std::string> names() const { return folder_.names(); }
  /// Whether files can be made here and hold something.
  Status tryOut() const;

 private:
  OwnFolder(std::filesystem::path path, SystemFolder folder)
      : path_(std::move(path)), folder_(std::move(folder)) {}

  struct Fresh {
    File file;
    std::string name;
  };
  /// A new file that holds `content` and is on the disk, beside one that it is to become.
  Result<Fresh> writeBeside(const std::string& name, std::string_view content) const;
  Status namesReachDisk(const std::string& name) const;
  tl::unexpected<FileError> refused(const std::string& name,
                                    const SystemFolder::Refusal& refusal) const;

  std::filesystem::path path_;
  SystemFolder folder_;
};

/// An empty file for a program's own notes, in a folder that may be anybody's: what has its name is
/// emptied when it is one of this user's, and refused when it is a link, a pipe or anything else.
Result<File> openOwnFile(const std::filesystem::path& path);

}  // namespace touch
