#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "serial/debugger/console_line.h"
#include "serial/debugger/kept_lines.h"
#include "support/clock.h"

namespace touch {

/// Each byte as two digits, with blanks between.
std::string hexText(std::span<const std::uint8_t> bytes);
/// Each byte as its character; those that are not printable ASCII as a dot.
std::string plainText(std::span<const std::uint8_t> bytes);
/// The whole line as the console shows, copies and saves it: "0.1052 < 01 30 0D   .0.". A note
/// stands by itself. Behind bytes without their eighth bit stands what they are if it was set: one
/// that was sent with 8 bits loses it in the place of a stop bit.
std::string shown(const ConsoleLine& line);

/// What the time before a line counts from: the opening of the console, the line before, midnight.
enum class ConsoleTimes : std::uint8_t { sinceStart, sinceLast, ofDay };

/// Shows lines one after the other, with times as they are wanted: as they are saved, or in columns
/// of the same width, as a window shows them.
class ConsoleWriter {
 public:
  using WallTime = std::chrono::system_clock::time_point;

  /// `start` is when the console was opened.
  ConsoleWriter(ConsoleTimes times, WallTime start) : times_(times), start_(start) {}
  std::string next(const ConsoleLine& line);
  /// Time, direction, hexadecimal, text and field: of a report what it says.
  std::string nextInColumns(const ConsoleLine& line);
  /// What stands over those columns.
  std::string heading() const;

 private:
  std::string timeOf(const ConsoleLine& line);
  int timeWidth() const;

  ConsoleTimes times_;
  WallTime start_;
  std::optional<std::chrono::microseconds> last_;
};

/// Which lines to show.
struct ConsoleFilter {
  bool sent = true;
  bool received = true;
  bool reports = true;
  bool notes = true;
  std::string containing{};  ///< in the line as it is shown, capitals or not; empty: any
  friend bool operator==(const ConsoleFilter&, const ConsoleFilter&) = default;
};
/// Whether a line is to be shown.
bool passes(const KeptLines& lines, std::uint64_t number, const ConsoleFilter& filter);

/// What the debugger's console holds: the last million lines. Recording goes on while viewing is
/// paused.
class ConsoleLog {
 public:
  /// What can be read of a console in one go, in characters as shown, with a line end each.
  static constexpr std::size_t limit = 4000;

  /// Times are counted from now on.
  explicit ConsoleLog(const Clock& clock)
      : clock_(clock),
        start_(clock.now()),
        last_(start_),
        started_(std::chrono::system_clock::now()) {}

  ConsoleWriter::WallTime started() const { return started_; }

  /// How many bits a byte has on the line from now on.
  void setDataBits(int bits) { sevenBits_ = bits == 7; }
  /// When the last of the bytes passed the port; nothing: now. No line is before the one above.
  using Moment = std::optional<Clock::TimePoint>;
  void sent(std::span<const std::uint8_t> bytes, Moment moment = std::nullopt);
  void received(std::span<const std::uint8_t> bytes, Moment moment = std::nullopt);
  void report(std::string text, std::span<const std::uint8_t> bytes, Moment moment = std::nullopt);
  void note(std::string_view text);
  void clear();

  /// More has come than can be read in one go, since that was said last.
  bool isTooLong() const { return characters_ > limit; }
  void tooLongWasSaid() { characters_ = 0; }

  /// While paused, what was there when the pause began.
  void pause(bool on);
  bool isPaused() const { return frozen_.has_value(); }
  const KeptLines& kept() const { return frozen_ ? *frozen_ : lines_; }
  /// Changes when the lines before have gone.
  std::uint64_t version() const { return version_; }
  /// Of those that are kept.
  std::deque<ConsoleLine> lines(const ConsoleFilter& filter = {}) const;
  /// The same as they are saved, each with LF.
  std::string text(const ConsoleFilter& filter = {}, ConsoleWriter writer = {{}, {}}) const;

 private:
  void addBytes(ConsoleLineKind kind, std::span<const std::uint8_t> bytes, Moment moment);
  void add(const ConsoleLine& line);
  std::chrono::microseconds sinceStart(Moment moment);

  const Clock& clock_;
  Clock::TimePoint start_;
  Clock::TimePoint last_;  ///< of the lines so far that show their time
  ConsoleWriter::WallTime started_;
  KeptLines lines_;
  std::uint64_t version_ = 0;
  std::size_t characters_ = 0;  ///< up to the first that are too many
  bool sevenBits_ = false;
  std::optional<KeptLines> frozen_;
};

}  // namespace touch
