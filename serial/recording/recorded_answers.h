#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "serial/recording/recording.h"
#include "support/clock.h"

namespace touch {

/// A controller that was recorded: to a command it says what it said then, as long after it as it
/// did then, up to the next command. One that was sent several times is answered in the order of
/// the recording, and from its beginning again after its end. What is not in the recording gets no
/// answer. What came before the first command is left out.
class RecordedAnswers {
 public:
  /// Reads all of it. The error says what is wrong with it.
  static Result<RecordedAnswers> read(TransferSource& recording, const std::string& name);

  /// Bytes that came at `now`, in pieces of any size.
  void take(std::span<const std::uint8_t> bytes, Clock::TimePoint now);
  /// What it says by now.
  std::vector<std::uint8_t> due(Clock::TimePoint now);

 private:
  struct Piece {
    std::chrono::microseconds after{};  ///< the command
    std::vector<std::uint8_t> bytes;
  };
  struct Exchange {
    std::vector<std::uint8_t> command;
    std::vector<Piece> answer;
  };

  void addCommand(std::span<const std::uint8_t> bytes);
  std::optional<std::size_t> commandHeard() const;

  std::vector<Exchange> exchanges_;
  std::size_t next_ = 0;  ///< the one that is looked at first
  std::size_t longest_ = 0;
  std::vector<std::uint8_t> heard_;
  std::optional<std::size_t> answering_;
  std::size_t said_ = 0;  ///< pieces
  Clock::TimePoint asked_{};
};

}  // namespace touch
