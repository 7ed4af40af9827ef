#include <unistd.h>

#include <cerrno>

#include "core/system_file.h"

namespace touch {

File createFile(const std::filesystem::path& path) {
  return File(std::fopen(path.c_str(), "wbx"));
}

File openForAppending(const std::filesystem::path& path) {
  return File(std::fopen(path.c_str(), "ab"));
}

// Pipes and devices have no disk to reach.
bool reachDisk(std::FILE* file) {
  return fsync(fileno(file)) == 0 || errno == EINVAL;
}

}  // namespace touch
