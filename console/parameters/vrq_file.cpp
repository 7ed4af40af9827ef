#include "console/parameters/vrq_file.h"

#include <charconv>
#include <string>

#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr std::size_t digitsInWord = 4;
// Eight lines take 48 bytes; what is much greater is something else.
constexpr std::size_t largestFile = 4096;

}  // namespace

std::optional<ParameterWord> parseWord(std::string_view line) {
  std::uint16_t value = 0;
  const char* const end = line.data() + line.size();
  if (line.size() != digitsInWord) return std::nullopt;
  if (std::from_chars(line.data(), end, value, 16).ptr != end) return std::nullopt;
  return ParameterWord{static_cast<std::uint8_t>(value >> 8),
                       static_cast<std::uint8_t>(value & 0xFF)};
}

std::string vrqText(const ParameterBlock& block) {
  std::string text;
  for (const ParameterWord& word : block)
    text += wordText(word) + "\r\n";
  return text;
}

Result<ParameterBlock> parseVrq(std::string_view text, const std::string& name) {
  const auto lines = linesOf(withoutByteOrderMark(text));
  const auto failure = [&name](std::size_t line, std::string expected, std::string found) {
    return tl::unexpected(
        FileError{name, static_cast<int>(line), std::move(expected), std::move(found)});
  };

  ParameterBlock block;
  for (std::size_t i = 0; i < block.size() && i < lines.size(); ++i) {
    const auto word = parseWord(lines[i]);
    if (!word)
      return failure(i + 1, say("parameters", "four hexadecimal digits"), foundText(lines[i]));
    block[i] = *word;
  }
  if (lines.size() < block.size()) {
    return failure(lines.size() + 1, say("parameters", "eight lines of four hexadecimal digits"),
                   lines.size() == 1
                       ? say("parameters", "1 line")
                       : filled(say("parameters", "%1 lines"), {std::to_string(lines.size())}));
  }
  if (lines.size() > block.size()) {
    return failure(block.size() + 1, say("parameters", "the end of the file after eight lines"),
                   foundText(lines[block.size()]));
  }
  return block;
}

Result<ParameterBlock> loadVrq(const std::filesystem::path& file) {
  const auto content = readWholeFile(file, largestFile);
  if (!content) return tl::unexpected(content.error());
  return parseVrq(*content, file.string());
}

Status saveVrq(const std::filesystem::path& file, const ParameterBlock& block) {
  return writeWholeFile(file, vrqText(block));
}

}  // namespace touch
