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

#include "support/clock.h"

namespace touch {

enum class ConsoleLineKind : std::uint8_t { sent, received, report, note };

/// A line of the debugger's console: up to 16 bytes that passed the port, a touch report, or a text
/// of the debugger's own.
struct ConsoleLine {
  ConsoleLineKind kind = ConsoleLineKind::note;
  std::chrono::microseconds time{};  ///< since the console was opened
  std::vector<std::uint8_t> bytes;   ///< empty for a note
  std::string text;                  ///< of a note or a report
  bool sevenBits = false;            ///< the line cut the eighth bit off each byte
  friend bool operator==(const ConsoleLine&, const ConsoleLine&) = default;
};

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

/// Shows lines one after the other, with times as they are wanted.
class ConsoleWriter {
 public:
  using WallTime = std::chrono::system_clock::time_point;

  /// `start` is when the console was opened.
  ConsoleWriter(ConsoleTimes times, WallTime start) : times_(times), start_(start) {}
  std::string next(const ConsoleLine& line);

 private:
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
};

/// What the debugger's console holds. Recording goes on while viewing is paused. Whoever fills it
/// without end drops the oldest half when it is too long.
class ConsoleLog {
 public:
  /// What the console can hold, in characters as shown, with a line end each.
  static constexpr std::size_t limit = 4000;

  /// Times are counted from now on.
  explicit ConsoleLog(const Clock& clock)
      : clock_(clock), start_(clock.now()), started_(std::chrono::system_clock::now()) {}

  ConsoleWriter::WallTime started() const { return started_; }

  /// How many bits a byte has on the line from now on.
  void setDataBits(int bits) { sevenBits_ = bits == 7; }
  void sent(std::span<const std::uint8_t> bytes);
  void received(std::span<const std::uint8_t> bytes);
  void report(std::string text, std::span<const std::uint8_t> bytes);
  void note(std::string_view text);
  void clear();

  std::size_t characters() const { return characters_; }
  bool isTooLong() const { return characters_ > limit; }
  /// Again and again, when half of a flood is still too long.
  void dropOldestHalf();

  /// While paused, `lines` gives what was there when the pause began.
  void pause(bool on);
  bool isPaused() const { return frozen_.has_value(); }
  std::vector<ConsoleLine> lines(const ConsoleFilter& filter = {}) const;

 private:
  void addBytes(ConsoleLineKind kind, std::span<const std::uint8_t> bytes);
  void add(ConsoleLine line);
  std::chrono::microseconds elapsed() const;

  const Clock& clock_;
  Clock::TimePoint start_;
  ConsoleWriter::WallTime started_;
  std::deque<ConsoleLine> lines_;
  std::size_t characters_ = 0;
  bool sevenBits_ = false;
  std::optional<std::deque<ConsoleLine>> frozen_;
};

/// The lines as they are copied and saved, each with LF.
std::string shown(std::span<const ConsoleLine> lines, ConsoleWriter writer = {{}, {}});
/// The first line from `from` on that has `text` in it as shown, capitals or not; the search goes
/// on at the top.
std::optional<std::size_t> findLine(std::span<const ConsoleLine> lines, std::string_view text,
                                    std::size_t from);

}  // namespace touch
