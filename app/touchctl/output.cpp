#include "app/touchctl/output.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <system_error>

#include "app/touchctl/terminal.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

// By {fmt}, which a console of Windows shows every character through.
void write(std::FILE* stream, std::string_view text) {
  try {
    fmt::print(stream, "{}", printableLines(text));
  } catch (const std::system_error&) {
    // The stream itself remembers that it failed.
    return;
  }
}

}  // namespace

void printText(std::string_view text) {
  // What has not gone out would be waited for once more.
  if (outputIsLost()) return;
  write(stdout, text);
}

void printJson(const nlohmann::ordered_json& value) {
  print("{}\n", value.dump(2, ' ', true));
}

void writeBytes(std::span<const std::uint8_t> bytes) {
  // The stream itself remembers that it failed.
  if (!outputIsLost()) std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  flushOutput();
}

bool flushOutput() {
  if (!outputIsLost() && std::fflush(stdout) == 0) return true;
  dropOutput();
  return false;
}

bool outputIsLost() {
  return std::ferror(stdout) != 0;
}

void printError(std::string_view text) {
  write(stderr, text);
}

}  // namespace touch
