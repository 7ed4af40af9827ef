#pragma once

#include <functional>
#include <string_view>

namespace touch {

/// Runs a program and returns its status. What is thrown up to here nobody can mend: it is said on
/// the error output, and the status is 1. What the program had open is closed by then.
int guardedRun(std::string_view program, const std::function<int()>& run);

}  // namespace touch
