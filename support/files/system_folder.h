#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "support/files/system_file.h"
#include "support/result.h"

namespace touch {

/// A folder that stays the one that was opened, whatever comes to lie at its path. Names in it are
/// never followed: what is not a regular file of this user's with that one name is refused and left
/// as it is.
class SystemFolder {
 public:
  /// Why not: in the words of an error's "found".
  struct Refusal {
    std::error_code why;  ///< empty when the system allows it and this program does not
    std::string found;
    bool missing() const { return why == std::errc::no_such_file_or_directory; }
    bool exists() const { return why == std::errc::file_exists; }
  };
  /// `own`: neither a link nor another user's.
  static Result<SystemFolder, Refusal> open(const std::filesystem::path& path, bool own);
  /// Its name is on the disk then.
  static std::error_code make(const std::filesystem::path& path);
  /// Whether this user may make folders in it.
  static bool mayMakeIn(const std::filesystem::path& path);
  static void removeEmpty(const std::filesystem::path& path);

  enum class Opening {
    create,  ///< a new one, for this program alone while it is open
    append,  ///< made when missing; reads too
    read,
    alone,  ///< one that is there, to read and write, for this program alone while it is open
  };
  Result<File, Refusal> openFile(const std::string& name, Opening how) const;

  /// Whether a file of this name may be read, replaced and deleted. `missing()` when there is none.
  Result<void, Refusal> judge(const std::string& name) const;

  /// Gives `file`, which was created as `from`, the name `to`. A file of that name is replaced when
  /// `replaces`, and else `exists()`. Refused when another file has the name `from` by now. The
  /// file may be closed by it.
  Result<void, Refusal> rename(File& file, const std::string& from, const std::string& to,
                               bool replaces) const;
  /// The same for a file that was left by an earlier run.
  Result<void, Refusal> rename(const std::string& from, const std::string& to, bool replaces) const;
  /// Whoever may not read the file of that name, if it is this user's, may not read `file` either.
  void keepAsPrivate(File& file, const std::string& name) const;
  Result<void, Refusal> remove(const std::string& name) const;
  /// Waits until the names that were given in it are on the disk.
  Result<void, Refusal> reachDisk() const;
  /// Of all that is in it, in no order.
  std::vector<std::string> names() const;

 private:
  struct Native;
  explicit SystemFolder(std::shared_ptr<const Native> native) : native_(std::move(native)) {}

  std::shared_ptr<const Native> native_;
};

/// Folders that belong to the system, with all that is in them.
std::vector<std::filesystem::path> systemFolders();
/// Folders in those that are the system's, while what is in them belongs to users and services.
std::vector<std::filesystem::path> sharedFolders();

}  // namespace touch
