#include "core/messages/messages.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr std::size_t fileTexts = 100;
// In bytes. What has no line end for longer than this is no message file, and is not to fill the
// memory.
constexpr std::size_t longestLine = std::size_t{1} << 20U;

// A start may take 100 MB more for the file, and what is not UTF-8 grows to twice its size.
constexpr std::size_t largestTable = std::size_t{24} << 20U;

constexpr std::array<std::string_view, 51> builtInTexts = {
    "No device was found",
    "Open Controller Error!!",
    "Password Error!!",
    "Value must < 128 !!",
    "Are you sure ?!",
    "Write ok!!",
    "Update OK",
    "Update Error",
    "Controller Restore OK",
    "Controller Restore Error",
    "Controller Reset OK",
    "Controll Reset Error",
    "Remove the Driver(Release Comport) and Exit program?",
    "Restart the computer will Re_Connected again !!",
    "Remove the Driver and Release Comport",
    "Reset Function",
    "Set Calibration Row Error",
    "Wrong Position, Trial again please",
    "CX command Error",
    "2 pts calibration Function",
    "Calibration ERROR",
    "Clear All Drawing ?",
    "OutSide X,Y Limit",
    "Test Program",
    "Too many points ",
    "Update the pin definition ??",
    "Read Sensor Type Error!!",
    "Update OK ! Re-Connect the the Touch Sensor",
    "Disconnect the connector of touch sensor ",
    "Please set to FORMAT TABLET",
    "Report Rate",
    "Text too long !!",
    "Setting OK",
    "Setting Error",
    "Help/Eixt",
    "Clear Screen",
    "Exit Draw mode",
    "Thin",
    "Thick",
    "Change Color",
    "Toggle Grid",
    "Line mode",
    "Point mode",
    "Save Drawing",
    "Tolerance View",
    "View Drawing",
    "FixCalibration",
    "ESC",
    "AVG Report",
    "Exit Drawing",
    "Width",
};

enum class NoLine { atEnd, tooLong };

/// The next line without its end (LF or CR LF).
Result<std::string, NoLine> readLine(std::istream& file) {
  std::string line;
  int c = file.get();
  // One byte more than a line may have: it may be the end's carriage return.
  for (; c != '\n' && c != std::istream::traits_type::eof(); c = file.get()) {
    if (line.size() > longestLine) return tl::unexpected(NoLine::tooLong);
    line.push_back(static_cast<char>(c));
  }
  if (c != '\n' && line.empty()) return tl::unexpected(NoLine::atEnd);
  if (c == '\n' && line.ends_with('\r')) line.pop_back();
  if (line.size() > longestLine) return tl::unexpected(NoLine::tooLong);
  return line;
}

}  // namespace

MessageTable::MessageTable() {
  std::copy(builtInTexts.begin(), builtInTexts.end(), texts_.begin());
}

Result<MessageTable> parseMessages(std::istream& file, const std::string& name) {
  const auto failure = [&name](std::size_t line, std::string expected, std::string found) {
    return tl::unexpected(
        FileError{name, static_cast<int>(line), std::move(expected), std::move(found)});
  };
  std::vector<std::string> lines;
  std::size_t inAll = 0;
  while (lines.size() < fileTexts) {
    auto line = readLine(file);
    if (file.bad())
      return failure(lines.size() + 1, say("messages", "a line of text"),
                     say("messages", "a read error"));
    if (!line && line.error() == NoLine::atEnd) {
      return failure(0, say("messages", "100 lines, one for each message"),
                     filled(say("messages", "%1 lines"), {std::to_string(lines.size())}));
    }
    if (!line) {
      return failure(lines.size() + 1,
                     filled(say("messages", "at most %1 bytes"), {std::to_string(longestLine)}),
                     say("messages", "more"));
    }
    if (lines.empty()) line = std::string(withoutByteOrderMark(*line));
    lines.push_back(std::move(*line));
    inAll += lines.back().size();
    if (inAll > largestTable) {
      return failure(
          lines.size(),
          filled(say("messages", "at most %1 bytes in all lines"), {std::to_string(largestTable)}),
          say("messages", "more"));
    }
  }
  MessageTable table;
  const bool latin1 = !std::ranges::all_of(lines, isUtf8);
  for (std::size_t i = 0; i < fileTexts; ++i) {
    table.texts_[i] = latin1 ? utf8FromLatin1(lines[i]) : std::move(lines[i]);
  }
  return table;
}

Result<MessageTable> loadMessages(const std::filesystem::path& folder) {
  const auto path = folder / "errmsg.txt";
  std::error_code failed;
  const auto there = std::filesystem::symlink_status(path, failed);
  if (there.type() == std::filesystem::file_type::not_found) {
    const auto kind = std::filesystem::status(folder, failed);
    if (std::filesystem::is_directory(kind)) return MessageTable();
    failed =
        std::make_error_code(std::filesystem::exists(kind) ? std::errc::not_a_directory
                                                           : std::errc::no_such_file_or_directory);
  }
  if (failed) {
    return tl::unexpected(FileError{folder.string(), 0,
                                    say("messages", "a working folder that can be read"),
                                    failed.message()});
  }

  std::ifstream file;
  if (std::filesystem::is_regular_file(path, failed)) file.open(path, std::ios::binary);
  if (!file.is_open()) {
    return tl::unexpected(FileError{path.string(), 0, say("messages", "a file that can be read"),
                                    say("messages", "none that can be opened")});
  }
  return parseMessages(file, path.string());
}

}  // namespace touch
