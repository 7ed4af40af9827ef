#include "serial/recording.h"

#include <fmt/format.h>

#include <charconv>
#include <string_view>

#include "core/language.h"
#include "core/text_encoding.h"
#include "core/whole_file.h"
#include "serial/console_log.h"
#include "serial/h2d.h"

namespace touch {

namespace {

constexpr std::string_view heading = "touch recording 1";
constexpr std::size_t largestRecording = std::size_t{64} << 20U;
constexpr std::int64_t microsecondsPerSecond = 1'000'000;
constexpr std::size_t decimals = 6;
// Eleven days: enough for any test, and far from where the arithmetic would run over.
constexpr std::int64_t longestRecording = 999'999;

/// What is wrong within a line.
struct RecordingFlaw {
  std::string expected;
  std::string found;
};

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(" \t");
  if (begin == text.npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

std::optional<std::int64_t> number(std::string_view text) {
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < 0) return std::nullopt;
  return value;
}

/// Takes the text up to the next blank off `line`.
std::string_view takeField(std::string_view& line) {
  const auto end = line.find(' ');
  const auto field = line.substr(0, end);
  line.remove_prefix(end == line.npos ? line.size() : end + 1);
  return field;
}

std::optional<std::chrono::microseconds> parseTime(std::string_view field) {
  const auto point = field.find('.');
  if (point == field.npos || field.size() != point + 1 + decimals) return std::nullopt;
  const auto seconds = number(field.substr(0, point));
  const auto fraction = number(field.substr(point + 1));
  if (!seconds || !fraction || *seconds > longestRecording) return std::nullopt;
  return std::chrono::microseconds(*seconds * microsecondsPerSecond + *fraction);
}

Result<std::vector<std::uint8_t>, RecordingFlaw> parseBytes(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  do {
    const auto field = takeField(text);
    const auto byte = field.size() == 2 ? h2d(field) : std::nullopt;
    if (!byte)
      return RecordingFlaw{say("serial", "bytes of two hexadecimal digits with a blank between"),
                           foundText(field)};
    bytes.push_back(static_cast<std::uint8_t>(*byte));
  } while (!text.empty());
  return bytes;
}

Result<Transfer, RecordingFlaw> parseTransfer(std::string_view line,
                                              std::chrono::microseconds earliest) {
  const auto timeField = takeField(line);
  const auto time = parseTime(timeField);
  if (!time)
    return RecordingFlaw{say("serial", "a time in seconds with six decimals, such as 0.104250"),
                         foundText(timeField)};
  if (*time < earliest)
    return RecordingFlaw{say("serial", "a time not before the one above"), foundText(timeField)};
  const auto direction = takeField(line);
  if (direction != ">" && direction != "<") {
    return RecordingFlaw{say("serial", "> for bytes to the controller or < for bytes from it"),
                         foundText(direction)};
  }
  auto bytes = parseBytes(line);
  if (!bytes) return bytes.error();
  return Transfer{*time, direction == ">" ? Direction::toController : Direction::fromController,
                  std::move(*bytes)};
}

}  // namespace

std::string recordingLine(const Transfer& transfer) {
  const std::int64_t time = transfer.time.count();
  return fmt::format("{}.{:06} {} {}", time / microsecondsPerSecond, time % microsecondsPerSecond,
                     transfer.direction == Direction::toController ? '>' : '<',
                     hexText(transfer.bytes));
}

Result<std::vector<Transfer>, FileError> parseRecording(std::string_view text,
                                                        const std::string& name) {
  std::vector<Transfer> transfers;
  bool headed = false;
  int lineNumber = 0;
  for (const std::string_view whole : linesOf(withoutByteOrderMark(text))) {
    ++lineNumber;
    const auto line = trimmed(whole.substr(0, whole.find('#')));
    if (line.empty()) continue;
    if (!headed) {
      if (line != heading) {
        return FileError{name, lineNumber, '"' + std::string(heading) + '"', foundText(whole)};
      }
      headed = true;
      continue;
    }
    auto transfer = parseTransfer(
        line, transfers.empty() ? std::chrono::microseconds(0) : transfers.back().time);
    if (!transfer) {
      const auto& [expected, found] = transfer.error();
      return FileError{name, lineNumber, expected, found};
    }
    transfers.push_back(std::move(*transfer));
  }
  if (!headed) {
    return FileError{name, 1, '"' + std::string(heading) + '"',
                     say("serial", "the end of the file")};
  }
  return transfers;
}

Result<std::vector<Transfer>, FileError> readRecording(const std::filesystem::path& file) {
  const auto content = readWholeFile(file, largestRecording);
  if (!content) return content.error();
  return parseRecording(*content, file.string());
}

std::optional<FileError> Recorder::start(const std::filesystem::path& file, Clock::TimePoint now) {
  stop();
  path_ = file;
  start_ = now;
  file_.open(file, std::ios::binary | std::ios::trunc);
  if (!file_.is_open())
    return FileError{file.string(), 0, say("serial", "a file that can be written"), ""};
  write(heading);
  return isOn() ? std::nullopt : stop();
}

void Recorder::add(Clock::TimePoint now, Direction direction, std::span<const std::uint8_t> bytes) {
  if (!isOn() || bytes.empty()) return;
  const auto time = std::chrono::duration_cast<std::chrono::microseconds>(now - start_);
  write(recordingLine({time, direction, {bytes.begin(), bytes.end()}}));
}

void Recorder::write(std::string_view line) {
  file_ << line << '\n' << std::flush;
  if (file_) return;
  problem_ = FileError{path_.string(), 0, say("serial", "room for the recording"),
                       say("serial", "a full or missing disk")};
  file_.close();
}

std::optional<FileError> Recorder::stop() {
  file_.close();
  file_.clear();
  return std::exchange(problem_, std::nullopt);
}

}  // namespace touch
