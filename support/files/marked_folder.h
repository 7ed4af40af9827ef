#pragma once

#include <filesystem>

#include "support/files/own_folder.h"

namespace touch {

/// A folder that this system has made for its own files and marked as its own, so that files in it
/// may be replaced and deleted; one program at a time has it. Another folder of its name, whoever
/// made it, is none.
class MarkedFolder {
 public:
  /// Holds the mark, and keeps other programs out as long as one is open.
  static constexpr const char* markName = "in-use.lock";

  /// One that is there. Nothing is made.
  static Result<MarkedFolder> take(const std::filesystem::path& path);
  /// A new one, marked. What has the path is refused and left alone, as is a folder of the system's
  /// around it.
  static Result<MarkedFolder> make(const std::filesystem::path& path);

  /// Whether the folder at `path`, whoever has it, is such a one and can be written, or there is
  /// none.
  static Status tryOut(const std::filesystem::path& path);

  const OwnFolder& files() const { return folder_; }

 private:
  MarkedFolder(OwnFolder folder, File held) : folder_(std::move(folder)), held_(std::move(held)) {}

  OwnFolder folder_;
  File held_;
};

/// The root of a disk, or a folder that belongs to the system, such as "/usr" with all that is in
/// it.
bool isFolderOfTheSystem(const std::filesystem::path& folder);

}  // namespace touch
