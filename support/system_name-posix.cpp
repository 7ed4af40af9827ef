#include <sys/utsname.h>

#include <fstream>

#include "support/system_name.h"

namespace touch {

namespace {

/// What the distribution calls itself; empty when it does not say.
std::string distribution() {
  constexpr std::string_view key = "PRETTY_NAME=";
  std::ifstream file("/etc/os-release");
  for (std::string line; std::getline(file, line);) {
    if (!line.starts_with(key)) continue;
    std::string name = line.substr(key.size());
    std::erase(name, '"');
    return name;
  }
  return {};
}

}  // namespace

std::string systemName() {
  utsname kernel{};
  if (uname(&kernel) != 0) return distribution();
  const std::string name = distribution();
  return (name.empty() ? "" : name + ", ") + kernel.sysname + ' ' + kernel.release + ' ' +
         kernel.machine;
}

}  // namespace touch
