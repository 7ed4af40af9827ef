#include "bench/tools/child_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "bench/tools/resident_bytes.h"

namespace touch::bench {

namespace {

void check(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> all;
  for (std::string& text : texts)
    all.push_back(text.data());
  all.push_back(nullptr);
  return all;
}

std::chrono::microseconds duration(const timeval& time) {
  return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

}  // namespace

ChildProgram::ChildProgram(std::vector<std::string> arguments,
                           const std::vector<std::string>& environment) {
  std::vector<std::string> variables = environment;
  for (char** variable = environ; *variable != nullptr; ++variable)
    variables.emplace_back(*variable);
  std::array<int, 2> ends{};
  check(pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno, "pipe");
  output_ = ends[0];
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  const int error = posix_spawn(&process_, arguments.front().c_str(), &actions, nullptr,
                                pointers(arguments).data(), pointers(variables).data());
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  if (error != 0) close(output_);
  check(error, arguments.front().c_str());
}

ChildProgram::~ChildProgram() {
  close(output_);
  if (process_ < 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

void ChildProgram::awaitOutput() const {
  char byte = 0;
  if (read(output_, &byte, 1) != 1) throw std::runtime_error("a program ended without a word");
}

std::string ChildProgram::readLine() const {
  std::string line;
  for (char byte = 0; read(output_, &byte, 1) == 1 && byte != '\n';)
    line += byte;
  return line;
}

ChildProgram::Seconds ChildProgram::processorTime() const {
  clockid_t clock{};
  check(clock_getcpuclockid(process_, &clock), "clock_getcpuclockid");
  timespec time{};
  clock_gettime(clock, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::size_t ChildProgram::residentBytes() const {
  return bench::residentBytes(std::to_string(process_));
}

ChildProgram::Seconds ChildProgram::awaitEnd() {
  int status = 0;
  rusage usage{};
  check(wait4(std::exchange(process_, -1), &status, 0, &usage) > 0 ? 0 : errno, "wait4");
  if (status != 0) throw std::runtime_error("a program failed");
  return duration(usage.ru_utime) + duration(usage.ru_stime);
}

}  // namespace touch::bench
