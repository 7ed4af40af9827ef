#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "core/serial_port.h"
#include "reports/report_decoder.h"
#include "serial/scripts/script.h"
#include "support/clock.h"

namespace touch {

/// Who follows a running script. All of it may be left out.
struct ScriptWatcher {
  std::function<void(const ScriptStep&)> onStep;  ///< it begins
  std::function<void(const std::string&)> onNote;
  std::function<void(std::span<const std::uint8_t>)> onSent;
  std::function<void(std::span<const std::uint8_t>)> onReceived;
  std::function<bool()> isStopped;  ///< asked again and again; nothing is sent once it is true
  std::function<bool()> isPaused;
};

/// Where and why a script ended before its last step.
struct ScriptFailure {
  int line = 0;  ///< of the script's file
  std::string expected;
  std::string found;
  /// "line 4: expected 01 30 0D within 300 ms, received 01 31 0D".
  std::string describe() const;
};

/// Runs a script once, on an open port that nobody else reads or writes meanwhile.
class ScriptRun {
 public:
  /// `family`: how touches are reported until a step of the script says so.
  ScriptRun(const Script& script, SerialPort& port, Clock& clock, ScriptWatcher watcher,
            std::vector<ReportFormat> added = {}, ReportFamily family = ReportFamily::tablet);

  Result<void, ScriptFailure> run();
  /// Goes on giving the answers that are wanted to what comes, until it is stopped. Behind `run`.
  void serve();

  /// Bytes, so far.
  std::size_t sent() const { return sent_; }
  std::size_t received() const { return received_; }

 private:
  using Outcome = Result<void, ScriptFailure>;
  struct Answer {
    BytePattern::Search search;
    const std::vector<std::uint8_t>* bytes = nullptr;
  };

  Outcome carryOut(const SendStep& step);
  Outcome carryOut(const ExpectStep& step);
  Outcome carryOut(const ExpectReportStep& step);
  Outcome carryOut(const ExpectNothingStep& step);
  Outcome carryOut(const WaitStep& step);
  Outcome carryOut(const LineStep& step);
  Outcome carryOut(const ReportsStep& step);
  Outcome carryOut(const AnswerStep& step);
  Outcome carryOut(const NoteStep& step);
  Outcome carryOut(const RepeatStep& step);
  Outcome carryOut(const EndStep& step);

  /// Waits until `isFound` says true of a byte that came, or the time is over.
  Result<bool, ScriptFailure> listen(ScriptTime time,
                                     const std::function<bool(std::uint8_t)>& isFound);
  Outcome send(std::span<const std::uint8_t> bytes);
  /// Takes in what has come, and gives the answers that are wanted to it.
  Outcome take();
  Outcome carryOutAll();
  bool isStopped() const { return watcher_.isStopped && watcher_.isStopped(); }
  Outcome rest();
  /// Stands still while the script does.
  Clock::TimePoint now() const { return clock_.now() - rested_; }
  /// The text with the numbers of the loops in their places.
  std::string filledIn(std::string text) const;
  tl::unexpected<ScriptFailure> failure(std::string expected, std::string found) const;
  std::string reply() const;

  const Script& script_;
  SerialPort& port_;
  Clock& clock_;
  ScriptWatcher watcher_;
  std::vector<ReportFormat> added_;
  ReportDecoder decoder_;
  std::vector<Answer> answers_;
  std::map<std::size_t, int> counts_;  ///< of the running loops, by place
  std::vector<std::uint8_t> unread_;   ///< came, and no step has looked at it
  std::vector<std::uint8_t> reply_;    ///< the first bytes since the last sending
  std::size_t sent_ = 0;
  std::size_t received_ = 0;
  std::size_t place_ = 0;
  Clock::TimePoint::duration rested_{};  ///< how long it was paused
};

}  // namespace touch
