#include "serial/recording/recording.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <system_error>

#include "serial/debugger/console_log.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr std::string_view heading = "touch recording 1";
constexpr std::size_t readingPiece = std::size_t{64} << 10U;
// Three hundred thousand bytes in one go: no port gives as many.
constexpr std::size_t longestRecordingLine = std::size_t{1} << 20U;
constexpr std::size_t mostBytesInLine = std::size_t{64} << 10U;
constexpr std::int64_t microsecondsPerSecond = 1'000'000;
constexpr std::size_t decimals = 6;
// Eleven days: enough for any test, and far from where the arithmetic would run over.
constexpr std::int64_t longestRecording = 999'999;

/// What is wrong within a line.
struct RecordingFlaw {
  std::string expected;
  std::string found;
};

tl::unexpected<RecordingFlaw> flaw(std::string expected, std::string found) {
  return tl::unexpected(RecordingFlaw{std::move(expected), std::move(found)});
}

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

std::string timeText(std::chrono::microseconds time) {
  return fmt::format("{}.{:06}", time.count() / microsecondsPerSecond,
                     time.count() % microsecondsPerSecond);
}

std::optional<std::chrono::microseconds> parseTime(std::string_view field) {
  const auto point = field.find('.');
  if (point == field.npos || field.size() != point + 1 + decimals) return std::nullopt;
  const auto seconds = number(field.substr(0, point));
  const auto fraction = number(field.substr(point + 1));
  if (!seconds || !fraction || *seconds > longestRecording) return std::nullopt;
  return std::chrono::microseconds(*seconds * microsecondsPerSecond + *fraction);
}

/// -1 when it is none.
int hexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

Result<std::vector<std::uint8_t>, RecordingFlaw> parseBytes(std::string_view text) {
  constexpr std::size_t place = 3;  // two digits and a blank
  std::vector<std::uint8_t> bytes;
  bytes.reserve(text.size() / place + 1);
  do {
    const auto field = takeField(text);
    const int high = field.size() == 2 ? hexDigit(field[0]) : -1;
    const int low = field.size() == 2 ? hexDigit(field[1]) : -1;
    if (high < 0 || low < 0)
      return flaw(say("recording", "bytes of two hexadecimal digits with a blank between"),
                  foundText(field));
    bytes.push_back(static_cast<std::uint8_t>(high * 16 + low));
  } while (!text.empty());
  return bytes;
}

Result<Transfer, RecordingFlaw> parseTransfer(std::string_view line,
                                              std::chrono::microseconds earliest) {
  const auto timeField = takeField(line);
  const auto time = parseTime(timeField);
  if (!time)
    return flaw(say("recording", "a time in seconds with six decimals, such as 0.104250"),
                foundText(timeField));
  if (*time < earliest)
    return flaw(say("recording", "a time not before the one above"), foundText(timeField));
  const auto direction = takeField(line);
  if (direction != ">" && direction != "<") {
    return flaw(say("recording", "> for bytes to the controller or < for bytes from it"),
                foundText(direction));
  }
  auto bytes = parseBytes(line);
  if (!bytes) return tl::unexpected(bytes.error());
  return Transfer{*time, direction == ">" ? Direction::toController : Direction::fromController,
                  std::move(*bytes)};
}

}  // namespace

std::string recordingLine(const Transfer& transfer) {
  return fmt::format("{} {} {}", timeText(transfer.time),
                     transfer.direction == Direction::toController ? '>' : '<',
                     hexText(transfer.bytes));
}

std::string zonedTimeNow() {
  using std::chrono::system_clock;
  using Tenths = std::chrono::duration<std::int64_t, std::ratio<1, 10'000>>;  // of a millisecond
  const auto now = std::chrono::floor<Tenths>(system_clock::now());
  const auto second = std::chrono::floor<std::chrono::seconds>(now);
  const std::tm local = fmt::localtime(system_clock::to_time_t(second));
  std::string zone = fmt::format("{:%z}", local);
  zone.insert(zone.size() - 2, ":");
  return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:04}{}", local, (now - second).count(), zone);
}

RecordingParser RecordingParser::inside(std::string name) {
  RecordingParser parser(std::move(name));
  parser.counts_ = false;
  parser.headed_ = true;
  return parser;
}

FileError RecordingParser::refuse(std::string expected, std::string found) const {
  return {name_, counts_ ? lines_ + 1 : 0, std::move(expected), std::move(found)};
}

Result<std::optional<Transfer>> RecordingParser::take(std::string_view whole) {
  if (lines_ == 0) whole = withoutByteOrderMark(whole);
  const auto mark = whole.find('#');
  if (mark != whole.npos) hear(whole.substr(mark + 1));
  const auto line = trimmed(whole.substr(0, mark));
  if (!line.empty() && !headed_) {
    if (line != heading)
      return tl::unexpected(refuse('"' + std::string(heading) + '"', foundText(whole)));
    headed_ = true;
  } else if (!line.empty()) {
    auto transfer = parseTransfer(line, last_);
    if (!transfer) return tl::unexpected(refuse(transfer.error().expected, transfer.error().found));
    last_ = transfer->time;
    ++lines_;
    return std::optional(std::move(*transfer));
  }
  ++lines_;
  return std::optional<Transfer>();
}

void RecordingParser::hear(std::string_view comment) {
  constexpr std::string_view key = "Line: ";
  comment = trimmed(comment);
  // A change has its time before it.
  if (!comment.starts_with(key)) takeField(comment);
  if (!comment.starts_with(key)) return;
  if (const auto line = parseLineSettings(comment.substr(key.size()))) line_ = *line;
}

Status RecordingParser::end() const {
  if (headed_) return {};
  return tl::unexpected(FileError{name_, 1, '"' + std::string(heading) + '"',
                                  say("recording", "the end of the file")});
}

Result<std::vector<Transfer>> parseRecording(std::string_view text, const std::string& name) {
  std::vector<Transfer> transfers;
  RecordingParser parser(name);
  for (const std::string_view line : linesOf(text)) {
    auto transfer = parser.take(line);
    if (!transfer) return tl::unexpected(transfer.error());
    if (*transfer) transfers.push_back(std::move(**transfer));
  }
  if (const Status ended = parser.end(); !ended) return tl::unexpected(ended.error());
  return transfers;
}

Result<std::unique_ptr<RecordingFile>> RecordingFile::open(const std::filesystem::path& file) {
  std::unique_ptr<RecordingFile> recording(new RecordingFile(file));
  recording->begin();
  recording->first_ = recording->parse();
  if (recording->error_) return tl::unexpected(*recording->error_);
  recording->length_ = recording->timeOfTheLast();
  recording->begin();
  return recording;
}

void RecordingFile::goOnAt(std::size_t offset) {
  parser_ = RecordingParser::inside(path_.string());
  text_.clear();
  line_ = 0;
  first_.reset();
  error_.reset();
  File file = openForReading(path_);
  if (!file || !isRegular(file.get()) ||
      std::fseek(file.get(), static_cast<long>(offset), SEEK_SET) != 0)
    return file_.reset();
  auto opened = FileInPieces::of(std::move(file), path_.string(), largestRecording);
  if (!opened) return file_.reset();
  file_.emplace(std::move(*opened));
  nextLine();
}

std::chrono::microseconds RecordingFile::timeOfTheLast() {
  std::chrono::microseconds last{};
  const std::size_t size = file_->size();
  // A shorter tail tells it at once, unless a line of it was cut.
  for (const std::size_t tail : {readingPiece, 2 * longestRecordingLine}) {
    if (size > tail) {
      goOnAt(size - tail);
    } else {
      begin();
    }
    while (const auto transfer = parse())
      last = transfer->time;
    if (last.count() > 0) break;
  }
  return last;
}

void RecordingFile::seek(std::chrono::microseconds time) {
  begin();
  if (!file_ || error_) return;
  // Its lines are in the order of their times.
  std::size_t before = 0;
  for (std::size_t end = file_->size(); end - before > readingPiece;) {
    const std::size_t middle = before + (end - before) / 2;
    goOnAt(middle);
    const auto transfer = parse();
    (transfer && transfer->time < time ? before : end) = middle;
  }
  before > 0 ? goOnAt(before) : begin();
  do {
    first_ = parse();
  } while (first_ && first_->time < time);
}

void RecordingFile::begin() {
  auto opened = FileInPieces::open(path_, largestRecording);
  parser_.emplace(path_.string());
  text_.clear();
  line_ = 0;
  first_.reset();
  error_.reset();
  if (opened) {
    file_.emplace(std::move(*opened));
  } else {
    error_ = opened.error();
  }
}

std::optional<Transfer> RecordingFile::next() {
  return first_ ? std::exchange(first_, std::nullopt) : parse();
}

std::optional<Transfer> RecordingFile::parse() {
  while (!error_) {
    const auto line = nextLine();
    if (error_) break;
    if (!line) {
      if (const Status ended = parser_->end(); !ended) error_ = ended.error();
      break;
    }
    auto transfer = parser_->take(*line);
    if (!transfer) {
      error_ = transfer.error();
    } else if (*transfer) {
      return std::move(*transfer);
    }
  }
  return std::nullopt;
}

std::optional<std::string_view> RecordingFile::nextLine() {
  std::size_t end = text_.find('\n', line_);
  while (end == text_.npos) {
    const std::size_t searched = text_.size() - line_;
    if (!readOn()) break;
    end = text_.find('\n', searched);
  }
  if (error_ || line_ == text_.size()) return std::nullopt;
  auto line = std::string_view(text_).substr(line_, end - line_);
  line_ = std::min(end, text_.size() - 1) + 1;
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/// Puts a piece more behind the line that has begun. False at the end, and when it failed.
bool RecordingFile::readOn() {
  text_.erase(0, std::exchange(line_, 0));
  const std::size_t before = text_.size();
  if (before > longestRecordingLine) {
    error_ = parser_->refuse(
        filled(say("recording", "at most %1 bytes"), {std::to_string(longestRecordingLine)}),
        say("recording", "more"));
    return false;
  }
  text_.resize(before + readingPiece);
  const std::size_t count = file_ ? file_->read(std::span(text_).subspan(before)) : 0;
  text_.resize(before + count);
  if (file_) error_ = file_->error();
  return count > 0;
}

Status Recorder::start(const std::filesystem::path& file, Clock::TimePoint now,
                       const RecordingHead& head) {
  stop();
  path_ = file;
  start_ = now;
  last_ = {};
  written_ = 0;
  // Whoever records has the port meanwhile: what is no file must keep nobody waiting.
  file_ = openForWriting(file);
  if (!file_)
    return tl::unexpected(FileError{file.string(), 0,
                                    say("recording", "a file that can be written"),
                                    std::error_code(errno, std::generic_category()).message()});
  write(heading);
  const std::pair<std::string_view, const std::string&> facts[] = {
      {"Started", head.started},       {"Port", head.port},       {"Line", head.line},
      {"Controller", head.controller}, {"Program", head.program}, {"Times", head.times},
  };
  for (const auto& [name, fact] : facts)
    if (isOn() && !fact.empty()) write(fmt::format("# {}: {}", name, printable(fact)));
  return isOn() ? Status() : stop();
}

void Recorder::add(Clock::TimePoint time, Direction direction,
                   std::span<const std::uint8_t> bytes) {
  if (!isOn()) return;
  last_ = lineTime(time);
  while (isOn() && !bytes.empty()) {
    if (last_ / std::chrono::seconds(1) > longestRecording) {
      breakOff(say("recording", "a recording that can be read again"),
               say("recording", "a longer one"));
      return;
    }
    const auto part = bytes.first(std::min(bytes.size(), mostBytesInLine));
    write(recordingLine({last_, direction, {part.begin(), part.end()}}));
    bytes = bytes.subspan(part.size());
  }
}

void Recorder::remark(Clock::TimePoint now, std::string_view text) {
  if (isOn()) write(fmt::format("# {} {}", timeText(lineTime(now)), printable(text)));
}

std::chrono::microseconds Recorder::lineTime(Clock::TimePoint time) const {
  return std::max(last_, std::chrono::duration_cast<std::chrono::microseconds>(time - start_));
}

void Recorder::write(std::string_view line) {
  written_ += line.size() + 1;
  if (written_ > limit_) {
    breakOff(say("recording", "a recording that can be read again"),
             say("recording", "a longer one"));
    return;
  }
  const std::string record = std::string(line) + '\n';
  if (std::fwrite(record.data(), 1, record.size(), file_.get()) == record.size() &&
      std::fflush(file_.get()) == 0)
    return;
  // With half a line behind it the rest could not be read.
  cutTo(file_.get(), written_ - record.size());
  breakOff(say("recording", "room for the recording"), say("recording", "a full or missing disk"));
}

void Recorder::breakOff(std::string expected, std::string found) {
  problem_ = FileError{path_.string(), 0, std::move(expected), std::move(found)};
  file_.reset();
}

Status Recorder::stop() {
  file_.reset();
  if (auto problem = std::exchange(problem_, std::nullopt)) return tl::unexpected(*problem);
  return {};
}

}  // namespace touch
