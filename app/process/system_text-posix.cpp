#include <fcntl.h>
#include <unistd.h>

#include "app/process/system_text.h"

namespace touch {

class SystemText::Translation {};

// It is UTF-8 already, or whatever bytes the user's own programs take for text.
SystemText::SystemText(int&, char**&) {
  // Where a stream was closed before the start, the next file or port that is opened would take its
  // place, and what is printed would go there.
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) >= 0) continue;
    // It gets the number of the stream, which is what holds it from then on.
    // cppcheck-suppress leakReturnValNotUsed
    open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

SystemText::~SystemText() = default;

}  // namespace touch
