#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

#include "app/declarations.h"
#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/output.h"
#include "console/parameters/backup.h"
#include "console/parameters/parameter_block.h"
#include "console/parameters/parameter_table.h"
#include "console/parameters/vrq_file.h"
#include "support/text/hex.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;

/// What was read, or nothing after the reason was printed.
template <typename E>
std::optional<ParameterBlock> blockOrReason(const Result<ParameterBlock, E>& read) {
  if (read) return *read;
  complain(read.error().describe());
  return std::nullopt;
}

/// `digits` hexadecimal digits and nothing else.
std::optional<unsigned> parseHex(std::string_view text, std::size_t digits) {
  unsigned value = 0;
  const char* const end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, value, 16);
  if (text.size() != digits || parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
  return value;
}

/// "03=1A2B"
std::optional<WordValue> parseWordValue(std::string_view text) {
  const auto [name, content] = nameAndValue(text);
  const auto address = parseHex(name, 2);
  const auto word = parseHex(content, 4);
  if (!address || !word || *address >= std::tuple_size_v<ParameterBlock>) return std::nullopt;
  return WordValue{
      static_cast<std::uint8_t>(*address),
      {static_cast<std::uint8_t>(*word >> 8), static_cast<std::uint8_t>(*word & 0xFF)}};
}

std::vector<WordValue> parseWords(const std::vector<std::string>& texts) {
  std::vector<WordValue> words;
  for (const std::string& text : texts) {
    const auto value = parseWordValue(text);
    if (!value) {
      refuseArgument("ADDRESS=WORD",
                     "expected an address from 00 to 07, = and four hexadecimal digits, e.g. "
                     "03=1A2B, found \"" +
                         text + '"');
    }
    const bool again = std::any_of(words.begin(), words.end(), [&value](const WordValue& other) {
      return other.address == value->address;
    });
    if (again) refuseArgument("ADDRESS=WORD", hexByte(value->address) + " is given twice");
    words.push_back(*value);
  }
  return words;
}

ExitStatus readParameters(Shell& shell) {
  const auto block = blockOrReason(readBlock(shell.access()));
  if (!block) return ExitStatus::failed;
  auto words = ordered_json::object();
  for (const auto& [address, word] : wordsOf(*block)) {
    if (shell.options().json) {
      words[hexByte(address)] = wordText(word);
    } else {
      print("{}  {}\n", hexByte(address), wordText(word));
    }
  }
  if (shell.options().json) {
    const ordered_json object = {{"controller", toUtf8(shell.controller())}, {"words", words}};
    printJson(object);
  }
  return ExitStatus::done;
}

ExitStatus writeParameters(Shell& shell, std::span<const WordValue> words) {
  const Backup backup(shell.options().workFolder);
  const BlockWrite result = writeBlock(shell.access(), shell.prompt(), backup, words);
  if (result.end == WriteEnd::done) print("{}\n", result.report.describe());
  tellOfKeptBlock(result.kept);
  const bool holdsThem = result.end == WriteEnd::done || result.end == WriteEnd::nothingToWrite;
  return holdsThem ? ExitStatus::done : ExitStatus::failed;
}

ExitStatus saveParameters(Shell& shell, const fs::path& file) {
  const auto block = blockOrReason(readBlock(shell.access()));
  if (!block) return ExitStatus::failed;
  std::error_code ignored;
  if (fs::exists(file, ignored) &&
      !shell.prompt().confirm(file.string() + " is there already. Replace it?")) {
    return ExitStatus::failed;
  }
  if (const auto saved = saveVrq(file, *block); !saved) {
    complain(saved.error().describe());
    return ExitStatus::failed;
  }
  print("Saved in {}\n", printable(file.string()));
  return ExitStatus::done;
}

ExitStatus loadParameters(Shell& shell, const ParameterBlock& wanted) {
  return writeParameters(shell, wordsOf(wanted));
}

void printDifferences(std::span<const WordDifference> differences) {
  if (differences.empty()) {
    print("The controller and the file hold the same words.\n");
    return;
  }
  print("Address  Controller  File\n");
  for (const WordDifference& difference : differences) {
    print("{:<9}{:<12}{}\n", hexByte(difference.address), wordText(*difference.here),
          wordText(difference.there));
  }
}

ordered_json jsonOf(std::span<const WordDifference> differences) {
  auto list = ordered_json::array();
  for (const WordDifference& difference : differences) {
    list.push_back({{"address", hexByte(difference.address)},
                    {"controller", wordText(*difference.here)},
                    {"file", wordText(difference.there)}});
  }
  return {{"equal", differences.empty()}, {"differences", list}};
}

ExitStatus compareParameters(Shell& shell, const ParameterBlock& file) {
  const auto block = blockOrReason(readBlock(shell.access()));
  if (!block) return ExitStatus::failed;
  ParameterTable table;
  table.take(*block);
  const auto differences = table.compare(file);
  if (shell.options().json) {
    printJson(jsonOf(differences));
  } else {
    printDifferences(differences);
  }
  return differences.empty() ? ExitStatus::done : ExitStatus::failed;
}

/// `work` with the block in `file`, which is read before a controller is asked for anything.
Command withFile(const fs::path& file, ExitStatus (*work)(Shell&, const ParameterBlock&)) {
  return [file, work](Shell& shell) {
    const auto block = blockOrReason(loadVrq(file));
    if (!block) return ExitStatus::failed;
    return onController([&block, work](Shell& chosen) { return work(chosen, *block); })(shell);
  };
}

const CLI::Option* addFile(CLI::App& command) {
  return command.add_option("FILE", "A .vrq file")->required();
}

void addBlockCommands(const CommandLine& line, CLI::App& group) {
  addControllerCommand(line, group, "read", "Print the eight words", [line](CLI::App& read) {
    addJson(line, read);
    read.callback([line] { line.command = onController(readParameters); });
  });
  addControllerCommand(
      line, group, "write", "Write single words, each read back", [line](CLI::App& write) {
        addWithoutBackup(line, write);
        const auto* const words =
            write.add_option(argumentName("ADDRESS=WORD"), "In hexadecimal digits, e.g. 03=1A2B")
                ->required()
                ->expected(1, static_cast<int>(std::tuple_size_v<ParameterBlock>))
                ->allow_extra_args();
        write.callback([line, words] {
          line.command = onController([values = parseWords(words->as<std::vector<std::string>>())](
                                          Shell& shell) { return writeParameters(shell, values); });
        });
      });
  addControllerCommand(
      line, group, "save", "Keep the controller's block in a file", [line](CLI::App& save) {
        save.callback([line, file = addFile(save)] {
          line.command = onController([path = absolutePathNamed(file->as<std::string>())](
                                          Shell& shell) { return saveParameters(shell, path); });
        });
      });
  addControllerCommand(
      line, group, "load", "Write a file's block to the controller", [line](CLI::App& load) {
        addWithoutBackup(line, load);
        load.callback([line, file = addFile(load)] {
          line.command = withFile(absolutePathNamed(file->as<std::string>()), loadParameters);
        });
      });
  addControllerCommand(
      line, group, "diff", "Compare the controller with a file; exit status 1 when they differ",
      [line](CLI::App& diff) {
        addJson(line, diff);
        diff.callback([line, file = addFile(diff)] {
          line.command = withFile(absolutePathNamed(file->as<std::string>()), compareParameters);
        });
      });
}

}  // namespace

void tellOfKeptBlock(const fs::path& file) {
  if (file.empty()) return;
  print("The parameters before are kept; to put them back: touchctl params load \"{}\"\n",
        printable(file.string()));
}

void addParameterCommands(const CommandLine& line) {
  addGroup(line, "params", "The parameter block, which holds the controller's calibration",
           [line](CLI::App& group) { addBlockCommands(line, group); });
}

}  // namespace touch
