#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace touch::test {

/// How a program ended and what it wrote.
struct Ended {
  int status = -1;  ///< -1: not by itself
  std::string output;
  std::string errors;
};

/// Runs `program` to its end, without a shell and without anything to read.
inline Ended runProgram(const std::string& program, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), program);
  std::vector<char*> argv;
  for (std::string& argument : arguments)
    argv.push_back(argument.data());
  argv.push_back(nullptr);

  const TemporaryFolder folder;
  const auto output = folder.path() / "output";
  const auto errors = folder.path() / "errors";
  constexpr int write = O_WRONLY | O_CREAT;
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, output.c_str(), write, 0600);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, errors.c_str(), write, 0600);
  pid_t child = 0;
  const int failed = posix_spawn(&child, program.c_str(), &files, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  if (failed != 0) throw std::runtime_error(program + " cannot be started");

  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.read("output"),
          folder.read("errors")};
}

}  // namespace touch::test
