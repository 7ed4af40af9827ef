#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "app/process/other_program.h"
#include "core/driver/nexapi.h"

namespace touch {

std::optional<int> runNeighbour(const std::string& name,
                                const std::vector<std::filesystem::path>& arguments) {
  std::vector<std::string> words = {programFolder() / name};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  argv.reserve(words.size() + 1);
  for (std::string& word : words)
    argv.push_back(word.data());
  argv.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawn(&child, argv.front(), nullptr, nullptr, argv.data(), environ) != 0)
    return std::nullopt;
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) return std::nullopt;
  if (!WIFEXITED(status)) return std::nullopt;
  return WEXITSTATUS(status);
}

}  // namespace touch
