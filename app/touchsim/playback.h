#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/touchsim/bench.h"
#include "app/touchsim/outside.h"
#include "serial/recording/recorded_answers.h"
#include "serial/recording/recording_ports.h"
#include "support/system_clock.h"

namespace touch::simulator {

/// A recording at the controller's end of the line, which can be held, stepped and moved from
/// outside.
class Playback {
 public:
  enum class Way : std::uint8_t {
    again,    ///< what came from the controller is sent again
    answers,  ///< commands are answered as they were then
  };
  /// `speed` is how many times as fast as it was. The error says what is wrong with the file.
  static Result<std::unique_ptr<Playback>> open(const std::filesystem::path& file, Way way,
                                                double speed);
  Playback(std::unique_ptr<TransferSource> recording, RecordedAnswers* answers, double speed);

  /// Plays until the user wants the program to end; over and over, unless only `once`. The error
  /// says why the file could not be read on.
  Status serve(Bench& bench, Pause& pause, bool once);
  /// Returns what there is to tell of it.
  std::string carryOut(const ReplayRequest& request);

 private:
  void begin();
  void seek(ReplayPort::Time time);
  void step();
  std::string progress() const;
  void sayDue(Bench& bench);
  bool isOver() const { return !replay_.isPaused() && replay_.isFinished() && rest_.empty(); }

  SystemClock clock_;
  RecordedAnswers* answers_;  ///< null: it is played again. The port has it
  ReplayPort replay_;
  std::vector<std::uint8_t> rest_;  ///< due, and not on the line yet
  bool steps_ = false;              ///< while paused: what is due goes out
};

}  // namespace touch::simulator
