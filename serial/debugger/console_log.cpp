#include "serial/debugger/console_log.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::size_t bytesPerLine = 16;
constexpr std::size_t hexColumn = bytesPerLine * 3;
// No packet and hardly a command has more. With room for all that a line may have the last column
// would lie beside a small window; a longer line moves its own columns.
constexpr std::size_t bytesInColumn = 10;
constexpr std::size_t narrowHexColumn = bytesInColumn * 3 - 1;

char lowered(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

bool holds(std::string_view text, std::string_view part) {
  const auto same = [](char one, char other) { return lowered(one) == lowered(other); };
  return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end() ||
         part.empty();
}

std::size_t charactersIn(const ConsoleLine& line) {
  return shown(line).size() + 1;
}

std::string secondsText(std::chrono::microseconds time) {
  return fmt::format("{:.4f}", std::chrono::duration<double>(time).count());
}

/// Of the day, to a tenth of a millisecond, in the zone of the machine.
std::string clockText(ConsoleWriter::WallTime time) {
  using namespace std::chrono;
  constexpr std::int64_t ticks = 10'000;
  const auto tick =
      duration_cast<duration<std::int64_t, std::ratio<1, ticks>>>(time.time_since_epoch()).count() %
      ticks;
  return fmt::format("{:%H:%M:%S}.{:04}", fmt::localtime(system_clock::to_time_t(time)), tick);
}

std::string withEighthBit(std::vector<std::uint8_t> bytes) {
  constexpr std::uint8_t eighthBit = 0x80;
  for (std::uint8_t& byte : bytes)
    byte |= eighthBit;
  return hexText(bytes);
}

std::string eighthBitText(const ConsoleLine& line) {
  return filled(say("debugger", "8th bit set: %1"), {withEighthBit(line.bytes)});
}

std::string shownAt(const std::string& time, const ConsoleLine& line) {
  switch (line.kind) {
    case ConsoleLineKind::sent:
    case ConsoleLineKind::received:
      return fmt::format("{} {} {:<{}}{}{}", time, line.kind == ConsoleLineKind::sent ? '>' : '<',
                         hexText(line.bytes), hexColumn, plainText(line.bytes),
                         line.sevenBits ? "   " + eighthBitText(line) : "");
    case ConsoleLineKind::report:
      return fmt::format("{} = {}  {}", time, line.text, hexText(line.bytes));
    case ConsoleLineKind::note:
      break;
  }
  return line.text;
}

}  // namespace

bool passes(const KeptLines& lines, std::uint64_t number, const ConsoleFilter& filter) {
  const std::array wanted = {filter.sent, filter.received, filter.reports, filter.notes};
  if (!wanted[static_cast<std::size_t>(lines.kindOf(number))]) return false;
  return filter.containing.empty() || holds(shown(lines.at(number)), filter.containing);
}

std::string hexText(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += ' ';
    text += hexByte(byte);
  }
  return text;
}

std::string plainText(std::span<const std::uint8_t> bytes) {
  std::string text(bytes.size(), '.');
  std::ranges::transform(bytes, text.begin(), [](std::uint8_t byte) {
    return byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
  });
  return text;
}

std::string shown(const ConsoleLine& line) {
  return shownAt(secondsText(line.time), line);
}

std::string ConsoleWriter::timeOf(const ConsoleLine& line) {
  const auto before = last_.value_or(line.time);
  last_ = line.time;
  switch (times_) {
    case ConsoleTimes::sinceLast:
      return '+' + secondsText(line.time - before);
    case ConsoleTimes::ofDay:
      return clockText(start_ + std::chrono::duration_cast<WallTime::duration>(line.time));
    case ConsoleTimes::sinceStart:
      break;
  }
  return secondsText(line.time);
}

std::string ConsoleWriter::next(const ConsoleLine& line) {
  return line.kind == ConsoleLineKind::note ? line.text : shownAt(timeOf(line), line);
}

int ConsoleWriter::timeWidth() const {
  constexpr int seconds = 10;
  constexpr int clock = 13;
  return times_ == ConsoleTimes::ofDay ? clock : seconds;
}

std::string ConsoleWriter::nextInColumns(const ConsoleLine& line) {
  if (line.kind == ConsoleLineKind::note) return line.text;
  constexpr std::string_view signs = "><=";  // in the order of the kinds
  const std::string field = line.kind == ConsoleLineKind::report ? line.text
                            : line.sevenBits                     ? eighthBitText(line)
                                                                 : "";
  std::string text = fmt::format("{:>{}}   {} {:<{}}  {:<{}}  {}", timeOf(line), timeWidth(),
                                 signs[static_cast<std::size_t>(line.kind)], hexText(line.bytes),
                                 narrowHexColumn, plainText(line.bytes), bytesInColumn, field);
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::string ConsoleWriter::heading() const {
  constexpr int directionWidth = 3;
  // A longer word would move those behind it.
  return fmt::format("{:>{}.{}} {:>{}.{}} {:<{}.{}}  {:<{}.{}}  {}", say("debugger", "Time"),
                     timeWidth(), timeWidth(), say("debugger", "Dir"), directionWidth,
                     directionWidth, say("debugger", "Hexadecimal"), narrowHexColumn,
                     narrowHexColumn, say("debugger", "Text"), bytesInColumn, bytesInColumn,
                     say("debugger", "Field"));
}

void ConsoleLog::sent(std::span<const std::uint8_t> bytes, Moment moment) {
  addBytes(ConsoleLineKind::sent, bytes, moment);
}

void ConsoleLog::received(std::span<const std::uint8_t> bytes, Moment moment) {
  addBytes(ConsoleLineKind::received, bytes, moment);
}

void ConsoleLog::report(std::string text, std::span<const std::uint8_t> bytes, Moment moment) {
  add({ConsoleLineKind::report, sinceStart(moment), {bytes.begin(), bytes.end()}, std::move(text)});
}

void ConsoleLog::note(std::string_view text) {
  // What came before it may still be shown behind it, with its own time.
  add({ConsoleLineKind::note, sinceStart(last_), {}, std::string(text)});
}

void ConsoleLog::clear() {
  lines_.clear();
  characters_ = 0;
  if (frozen_) frozen_->clear();
  ++version_;
}

void ConsoleLog::pause(bool on) {
  if (on == isPaused()) return;
  if (on) {
    frozen_ = lines_;
  } else {
    frozen_.reset();
  }
}

std::deque<ConsoleLine> ConsoleLog::lines(const ConsoleFilter& filter) const {
  std::deque<ConsoleLine> chosen;
  for (auto number = kept().begin(); number < kept().end(); ++number)
    if (passes(kept(), number, filter)) chosen.push_back(kept().at(number));
  return chosen;
}

std::string ConsoleLog::text(const ConsoleFilter& filter, ConsoleWriter writer) const {
  std::string text;
  for (auto number = kept().begin(); number < kept().end(); ++number)
    if (passes(kept(), number, filter)) text.append(writer.next(kept().at(number))) += '\n';
  return text;
}

void ConsoleLog::addBytes(ConsoleLineKind kind, std::span<const std::uint8_t> bytes,
                          Moment moment) {
  while (!bytes.empty()) {
    const auto part = bytes.first(std::min(bytes.size(), bytesPerLine));
    add({kind,
         sinceStart(moment),
         {part.begin(), part.end()},
         {},
         sevenBits_ && kind == ConsoleLineKind::received});
    bytes = bytes.subspan(part.size());
  }
}

void ConsoleLog::add(const ConsoleLine& line) {
  // To write each line of a flood out would cost more than all else about it.
  if (!isTooLong()) characters_ += charactersIn(line);
  lines_.add(line);
}

std::chrono::microseconds ConsoleLog::sinceStart(Moment moment) {
  const auto now = clock_.now();
  last_ = std::max(last_, std::min(moment.value_or(now), now));
  return std::chrono::duration_cast<std::chrono::microseconds>(last_ - start_);
}

}  // namespace touch
