#pragma once

#include <unistd.h>

#include <cstdio>
#include <string>

#include "bench/tools/child_program.h"

namespace touch::bench {

/// An X server of its own, for programs that are measured as users see them.
class XServer {
 public:
  /// Says so when it is not.
  static bool isThere() {
    if (access(program, X_OK) == 0) return true;
    std::fprintf(stderr, "%s is not there: nothing is measured under X.\n", program);
    return false;
  }

  /// "DISPLAY=:7", for a program's environment.
  const std::string& display() const { return display_; }

 private:
  static constexpr const char* program = "/usr/bin/Xvfb";

  ChildProgram server_{{program, "-displayfd", "1", "-screen", "0", "1024x768x24"}};
  std::string display_ = "DISPLAY=:" + server_.readLine();
};

}  // namespace touch::bench
