#pragma once

#include <unistd.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace touch::bench {

/// What a process has in memory; "self" is this program.
inline std::size_t residentBytes(const std::string& process) {
  std::ifstream file("/proc/" + process + "/statm");
  std::size_t size = 0;
  std::size_t resident = 0;
  if (!(file >> size >> resident)) throw std::runtime_error("a program has gone");
  return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace touch::bench
