#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "console/parameters/parameter_words.h"

namespace touch {

// A ".vrq" file keeps a parameter block: eight text lines, one a word from address 00 to 07, each
// of four hexadecimal digits, the high byte first. Lines end with CR LF when written, with LF or CR
// LF when read; the last one needs no end.
//
//   0102
//   1AFF
//   ...

std::string vrqText(const ParameterBlock& block);

/// The word that a line consists of.
std::optional<ParameterWord> parseWord(std::string_view line);

/// `name` is what an error calls the file.
Result<ParameterBlock> parseVrq(std::string_view text, const std::string& name);

/// The block in the file, or what is wrong in which line.
Result<ParameterBlock> loadVrq(const std::filesystem::path& file);

/// Writes the file whole or not at all.
[[nodiscard]] Status saveVrq(const std::filesystem::path& file, const ParameterBlock& block);

}  // namespace touch
