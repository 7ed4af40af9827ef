#include "app/process/guarded_run.h"

#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr int exitGivenUp = 1;

// Without a string: there may be no memory for one.
int giveUp(std::string_view program, const char* why) {
  std::fprintf(stderr, "%.*s: %s\n", static_cast<int>(program.size()), program.data(), why);
  return exitGivenUp;
}

}  // namespace

int guardedRun(std::string_view program, const std::function<int()>& run) {
  try {
    return run();
  } catch (const std::bad_alloc&) {
    return giveUp(program, "there is not enough memory for that");
  } catch (const std::exception& error) {
    return giveUp(program, printable(error.what()).c_str());
  }
}

}  // namespace touch
