#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

#include "serial/debugger/console_log.h"

namespace touch {

/// The lines of a log that pass a filter, as a window shows them: so many at a time. It follows the
/// end of the log, or stands where the user has scrolled to, and slides over the log with him. It
/// looks through a long log in pieces, and shows less of a flood: nobody reads what is gone in a
/// moment, and the window must not stand still for it.
class ConsoleView {
 public:
  /// At a time. More would make a window slow and large.
  static constexpr std::size_t most = 2000;
  /// Before the place where it stands, and as many behind.
  static constexpr std::size_t half = most / 2;
  /// With fewer lines than these beside that place it slides on.
  static constexpr std::size_t margin = most / 5;
  /// More than these at a time are a flood. The rest is shown when it has ebbed.
  static constexpr std::size_t mostInFlood = 200;
  /// So many times in a row there was no flood when it has ebbed.
  static constexpr int ebb = 5;
  /// How many lines it looks through for a text at a time.
  static constexpr std::size_t mostSearched = 10'000;

  /// `log` outlives it.
  explicit ConsoleView(const ConsoleLog& log) : log_(log) {}

  void choose(ConsoleFilter filter);
  /// Looks at what is new in the log, and for more of what is old. While it stands, what is new
  /// changes nothing.
  void renew();

  /// Shows the end of the log from the next time on that it is renewed.
  void follow() { following_ = true; }
  bool isFollowing() const { return following_; }
  /// The user has the line with this number before him, and it is to stay there.
  void standAt(std::uint64_t number);
  /// That line.
  std::uint64_t place() const { return place_; }
  /// Where it stands near an end of its lines, gets those beyond. They may be still to be found.
  void slide();
  /// What was the end of the log when it followed or slid last is here: behind it following goes
  /// on.
  bool reachesEnd() const { return following_ || reachesEnd_; }

  /// What has become of the lines since this was asked last.
  struct Change {
    bool anew = false;      ///< others stand there
    std::size_t added = 0;  ///< or so many more at the end, where the oldest may have gone
  };
  Change takeChange() { return std::exchange(change_, {}); }
  const std::deque<ConsoleLine>& lines() const { return lines_; }
  /// The number that one of the lines has in the log.
  std::uint64_t numberOf(std::size_t index) const { return numbers_[index]; }
  /// Of the first of the lines that has this number or a greater one; behind the last when none
  /// has.
  std::size_t indexOf(std::uint64_t number) const;
  /// There may be more to show although nothing new has come.
  bool isLooking() const;

 private:
  void beginAnew(std::uint64_t number);
  void lookForward();
  void lookBack(std::size_t wanted);
  void lookAround();
  void trim();
  bool wantsBefore() const;
  bool wantsBehind() const;
  /// Takes the line behind or before those it has looked at, if it passes.
  void takeNext();
  void takePrevious();

  const ConsoleLog& log_;
  ConsoleFilter filter_;
  std::deque<ConsoleLine> lines_;
  std::deque<std::uint64_t> numbers_;
  std::uint64_t version_ = 0;  ///< of the log
  std::uint64_t from_ = 0;     ///< the numbers that it has looked at
  std::uint64_t to_ = 0;
  bool following_ = true;
  std::uint64_t place_ = 0;  ///< where it stands
  bool reachesEnd_ = false;
  int calm_ = ebb;  ///< how many times in a row there was no flood
  Change change_;
};

/// Looks for a text in all lines that a log has kept, from a line on and then from the first, in
/// pieces.
class ConsoleSearch {
 public:
  /// `log` outlives it.
  ConsoleSearch(const ConsoleLog& log, ConsoleFilter wanted, std::uint64_t from)
      : log_(log), wanted_(std::move(wanted)), next_(from), left_(log.kept().size()) {}

  /// At so many lines as a window has the time for.
  void look();
  bool isLooking() const { return !found_ && left_ > 0; }
  /// The number of the line.
  std::optional<std::uint64_t> found() const { return found_; }

 private:
  const ConsoleLog& log_;
  ConsoleFilter wanted_;
  std::uint64_t next_;
  std::size_t left_;  ///< to be looked at
  std::optional<std::uint64_t> found_;
};

}  // namespace touch
