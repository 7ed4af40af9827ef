#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "core/system_file.h"

namespace touch {

File createFile(const std::filesystem::path& path) {
  return File(std::fopen(path.c_str(), "wbxe"));
}

File openForAppending(const std::filesystem::path& path) {
  return File(std::fopen(path.c_str(), "abe"));
}

File holdFile(const std::filesystem::path& path) {
  File file(std::fopen(path.c_str(), "abe"));
  // A file system that knows no locks is no reason to do without.
  if (file && flock(fileno(file.get()), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
    file.reset();
  return file;
}

// Pipes and devices have no disk to reach.
bool reachDisk(std::FILE* file) {
  return fsync(fileno(file)) == 0 || errno == EINVAL;
}

}  // namespace touch
