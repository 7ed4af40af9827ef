#include "app/touchctl/output.h"

#include <cstdio>
#include <tuple>

namespace touch {

void printText(std::string_view text) {
  // The stream itself remembers that it failed.
  std::ignore = std::fwrite(text.data(), 1, text.size(), stdout);
}

bool flushOutput() {
  return std::fflush(stdout) == 0 && !outputIsLost();
}

bool outputIsLost() {
  return std::ferror(stdout) != 0;
}

void printError(std::string_view text) {
  std::ignore = std::fwrite(text.data(), 1, text.size(), stderr);
}

}  // namespace touch
