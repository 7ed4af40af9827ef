#include "app/touchctl/output.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <system_error>

#include "core/text_encoding.h"

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
  write(stdout, text);
}

void printJson(const nlohmann::ordered_json& value) {
  print("{}\n", value.dump(2, ' ', true));
}

bool flushOutput() {
  return std::fflush(stdout) == 0 && !outputIsLost();
}

bool outputIsLost() {
  return std::ferror(stdout) != 0;
}

void printError(std::string_view text) {
  write(stderr, text);
}

}  // namespace touch
