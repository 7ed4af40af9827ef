#include "console/main/first_start.h"

#include <system_error>
#include <utility>

#include "console/parameters/backup.h"
#include "support/files/own_folder.h"

namespace touch {

namespace {

constexpr const char* markName = "greeted";

}  // namespace

FirstStart::FirstStart(std::filesystem::path ownFolder, std::filesystem::path workFolder)
    : ownFolder_(std::move(ownFolder)), workFolder_(std::move(workFolder)) {}

bool FirstStart::take() const {
  if (ownFolder_.empty()) return false;
  const auto folder = OwnFolder::openOrMake(ownFolder_);
  // Of two programs that start at once one makes it.
  if (!folder || !folder->openFile(markName, OwnFolder::Opening::create)) return false;
  std::error_code unknown;
  return !std::filesystem::exists(Backup(workFolder_).folder(), unknown);
}

}  // namespace touch
