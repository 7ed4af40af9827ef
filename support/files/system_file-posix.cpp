#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "support/files/system_file.h"

namespace touch {

File createFile(const std::filesystem::path& path) {
  return File(std::fopen(path.c_str(), "wbxe"));
}

File openForReading(const std::filesystem::path& path) {
  const int opened = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (opened < 0) return nullptr;
  File file(fdopen(opened, "rb"));
  if (!file) close(opened);
  return file;
}

File openForWriting(const std::filesystem::path& path) {
  const int opened =
      open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
           S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
  if (opened < 0) return nullptr;
  File file(fdopen(opened, "wb"));
  if (!file) close(opened);
  return file;
}

bool isRegular(std::FILE* file) {
  struct stat status {};
  return fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode);
}

std::uintmax_t sizeOf(std::FILE* file) {
  struct stat status {};
  return fstat(fileno(file), &status) == 0 ? static_cast<std::uintmax_t>(status.st_size) : 0;
}

void setMode(std::FILE* file, std::filesystem::perms mode) {
  fchmod(fileno(file), static_cast<mode_t>(mode & std::filesystem::perms::all));
}

bool cutTo(std::FILE* file, std::uintmax_t size) {
  return ftruncate(fileno(file), static_cast<off_t>(size)) == 0;
}

bool lockAlone(std::FILE* file) {
  constexpr int mostTries = 15;  // a window stands still meanwhile
  for (int tries = 0; tries < mostTries; ++tries) {
    // A file system that knows no locks is no reason to do without.
    if (flock(fileno(file), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

std::error_code renameOpen(File& file, const std::filesystem::path& from,
                           const std::filesystem::path& to) {
  struct stat opened {};
  struct stat named {};
  const bool same = fstat(fileno(file.get()), &opened) == 0 && lstat(from.c_str(), &named) == 0 &&
                    opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
  if (!same) return std::make_error_code(std::errc::no_such_file_or_directory);
  std::error_code failed;
  std::filesystem::rename(from, to, failed);
  if (!failed) file.reset();
  return failed;
}

// Pipes and devices have no disk to reach.
bool reachDisk(std::FILE* file) {
  return fsync(fileno(file)) == 0 || errno == EINVAL;
}

}  // namespace touch
