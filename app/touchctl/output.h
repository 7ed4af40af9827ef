#pragma once

#include <fmt/core.h>

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string_view>
#include <utility>

namespace touch {

/// Writes to the standard output, so that a terminal shows all of it and obeys nothing but line
/// ends. What cannot be written, because nobody reads it any more or the disk is full, is lost in
/// silence: a command must come to its end all the same. `outputIsLost` says so from then on.
void printText(std::string_view text);

template <typename... Values>
void print(fmt::format_string<Values...> format, Values&&... values) {
  printText(fmt::format(format, std::forward<Values>(values)...));
}

/// Prints a value over several lines. All of it is ASCII: a terminal obeys some characters that
/// JSON would leave as they are, and a controller's name may have any.
void printJson(const nlohmann::ordered_json& value);

/// Writes bytes as they are, for a pipe or a file, and brings them to whoever reads it.
void writeBytes(std::span<const std::uint8_t> bytes);

/// Brings what was printed to whoever reads it; false when that cannot be done.
bool flushOutput();
bool outputIsLost();

/// The same to the error output, in which nothing can be said of what goes wrong there.
void printError(std::string_view text);

}  // namespace touch
