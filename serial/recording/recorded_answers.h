#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "serial/recording/recording.h"

namespace touch {

/// A controller that was recorded: to a command it says what it said then, as long after it as it
/// did then, up to the next command. One that was sent several times is answered in the order of
/// the recording, and from its beginning again after its end. What is not in the recording gets no
/// answer. What came before the first command is left out.
///
/// What it says to the command in hand it gives as transfers, for a ReplayPort to pace. Only the
/// commands are kept in memory: the answers are read when they are asked for.
class RecordedAnswers final : public TransferSource {
 public:
  using Time = std::chrono::microseconds;

  /// Knows no command of it.
  explicit RecordedAnswers(std::unique_ptr<TransferSource> recording)
      : recording_(std::move(recording)) {}
  /// Reads all of it once. The error says what is wrong with it.
  static Result<std::unique_ptr<RecordedAnswers>> read(std::unique_ptr<TransferSource> recording,
                                                       const std::string& name);

  /// Takes bytes that came, in pieces of any size. When a command ends among them: the place to
  /// seek, from which on its answer is given.
  std::optional<Time> take(std::span<const std::uint8_t> bytes);
  /// Where the answer in hand ends, and the recording waits for a command.
  Time endOfAnswer() const;

  std::optional<Transfer> next() override;
  /// No command has been heard yet.
  void rewind() override;
  /// Goes on as after the command before `time`, unless it is the place that `take` has named.
  void seek(Time time) override;
  Time length() const override { return recording_->length(); }
  std::optional<FileError> error() const override { return recording_->error(); }

 private:
  /// A command at its place in the recording.
  struct Exchange {
    Time sentAt{};
    /// Transfers of that time up to the answer; none: another command followed at once, and there
    /// is no answer.
    std::size_t before = 0;
  };
  using Bytes = std::vector<std::uint8_t>;

  void addCommands(std::span<const std::uint8_t> sent, Exchange exchange);
  std::optional<std::size_t> commandHeard() const;

  std::unique_ptr<TransferSource> recording_;
  std::vector<Exchange> exchanges_;
  /// By their bytes, the places of each in `exchanges_`.
  std::map<Bytes, std::vector<std::size_t>> commands_;
  std::set<std::size_t> lengths_;  ///< of the commands
  std::size_t next_ = 0;           ///< the one that is looked at first
  Bytes heard_;
  std::optional<std::size_t> named_;  ///< by `take`, and not sought yet
  std::optional<std::size_t> answering_;
  bool ended_ = true;  ///< the answer
};

}  // namespace touch
