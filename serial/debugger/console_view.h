#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>

#include "serial/debugger/console_log.h"

namespace touch {

/// The last lines of a log that pass a filter, as a window shows them. It looks through a long log
/// in pieces, and shows less of a flood: nobody reads what is gone in a moment, and the window must
/// not stand still for it.
class ConsoleView {
 public:
  /// Nobody reads further back; the log has what is before.
  static constexpr std::size_t most = 2000;
  /// More than these at a time are a flood. The rest is shown when it has ebbed.
  static constexpr std::size_t mostInFlood = 200;
  /// So many times in a row there was no flood when it has ebbed.
  static constexpr int ebb = 5;
  /// How many lines it looks through for a text at a time.
  static constexpr std::size_t mostSearched = 10'000;

  /// `log` outlives it.
  explicit ConsoleView(const ConsoleLog& log) : log_(log) {}

  void choose(ConsoleFilter filter);
  /// Looks at what is new in the log, and for more of what is old.
  void renew();
  /// What has become of the lines since this was asked last.
  struct Change {
    bool anew = false;      ///< others stand there
    std::size_t added = 0;  ///< or so many more at the end, where the oldest may have gone
  };
  Change takeChange() { return std::exchange(change_, {}); }
  const std::deque<ConsoleLine>& lines() const { return lines_; }
  /// There may be more to show although nothing new has come.
  bool isLooking() const;

 private:
  void beginAnew();
  void lookForward();
  void lookBack(std::size_t wanted);

  const ConsoleLog& log_;
  ConsoleFilter filter_;
  std::deque<ConsoleLine> lines_;
  std::uint64_t version_ = 0;  ///< of the log
  std::uint64_t from_ = 0;     ///< the numbers that it has looked at
  std::uint64_t to_ = 0;
  int calm_ = ebb;  ///< how many times in a row there was no flood
  Change change_;
};

}  // namespace touch
