#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iomanip>

#include "tests/doubles/temporary_folder.h"

namespace touch::test {

/// How a program ended and what it wrote.
struct Ended {
  int status = -1;  ///< -1: not by itself
  std::string output;
  std::string errors;
};

/// Starts `program` with the files that `files` opens for it, without a shell.
inline pid_t startProgram(const std::string& program, std::vector<std::string> arguments,
                          posix_spawn_file_actions_t& files) {
  arguments.insert(arguments.begin(), program);
  std::vector<char*> argv;
  for (std::string& argument : arguments)
    argv.push_back(argument.data());
  argv.push_back(nullptr);
  pid_t child = 0;
  const int failed = posix_spawn(&child, program.c_str(), &files, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&files);
  if (failed != 0) throw std::runtime_error(program + " cannot be started");
  return child;
}

/// Its exit status; -1 when it did not end by itself.
inline int endOf(pid_t program) {
  int status = 0;
  waitpid(program, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Runs `program` to its end, without anything to read.
inline Ended runProgram(const std::string& program, const std::vector<std::string>& arguments) {
  const TemporaryFolder folder;
  const auto output = folder.path() / "output";
  const auto errors = folder.path() / "errors";
  constexpr int write = O_WRONLY | O_CREAT;
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, output.c_str(), write, 0600);
  posix_spawn_file_actions_addopen(&files, STDERR_FILENO, errors.c_str(), write, 0600);
  const int status = endOf(startProgram(program, arguments, files));
  return {status, folder.read("output"), folder.read("errors")};
}

/// What stands in `line` with blanks between, quoted where it has blanks itself; "@" stands for the
/// folder.
inline std::vector<std::string> wordsIn(const std::string& line, const TemporaryFolder& folder) {
  std::istringstream stream(line);
  std::vector<std::string> words;
  for (std::string word; stream >> std::quoted(word);) {
    if (const auto at = word.find('@'); at != word.npos)
      word.replace(at, 1, folder.path().string());
    words.push_back(word);
  }
  return words;
}

}  // namespace touch::test
