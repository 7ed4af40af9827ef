#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace touch::bench {

/// A program that runs beside this one, and is killed on destruction if it has not ended by itself.
/// What the system refuses is an exception.
class ChildProgram {
 public:
  using Seconds = std::chrono::duration<double>;

  /// `environment` is added to this program's own, as "NAME=value".
  explicit ChildProgram(std::vector<std::string> arguments,
                        const std::vector<std::string>& environment = {});
  ~ChildProgram();
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  /// Waits for the first byte on its standard output.
  void awaitOutput() const;
  /// The next line of its standard output, without its end.
  std::string readLine() const;
  /// Of all its threads so far.
  Seconds processorTime() const;
  std::size_t residentBytes() const;
  /// Waits for its end with exit status 0, and returns all the processor time that it took.
  Seconds awaitEnd();

 private:
  pid_t process_ = -1;
  int output_ = -1;
};

}  // namespace touch::bench
