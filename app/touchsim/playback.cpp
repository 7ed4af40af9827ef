#include "app/touchsim/playback.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

namespace touch::simulator {

namespace {

using namespace std::chrono_literals;

// Less than a report takes on the line.
constexpr auto dueStep = 1ms;
// Nothing is due: whoever lets it go on does not notice.
constexpr auto idleStep = 20ms;
constexpr auto betweenRounds = 500ms;

double secondsOf(ReplayPort::Time time) {
  return std::chrono::duration<double>(time).count();
}

}  // namespace

Result<std::unique_ptr<Playback>> Playback::open(const std::filesystem::path& file, Way way,
                                                 double speed) {
  auto recording = RecordingFile::open(file);
  if (!recording) return tl::unexpected(recording.error());
  if (way == Way::again) return std::make_unique<Playback>(std::move(*recording), nullptr, speed);
  auto answers = RecordedAnswers::read(std::move(*recording), file.string());
  if (!answers) return tl::unexpected(answers.error());
  auto* const asked = answers->get();
  return std::make_unique<Playback>(std::move(*answers), asked, speed);
}

Playback::Playback(std::unique_ptr<TransferSource> recording, RecordedAnswers* answers,
                   double speed)
    : answers_(answers), replay_(std::move(recording), clock_) {
  replay_.setSpeed(speed);
}

Status Playback::serve(Bench& bench, Pause& pause, bool once) {
  if (answers_) bench.listen();
  begin();
  while (pause.of(!answers_ && (replay_.isPaused() || isOver()) ? idleStep : dueStep)) {
    if (answers_)
      if (const auto place = answers_->take(bench.heard())) seek(*place);
    sayDue(bench);
    if (const auto error = replay_.error()) return tl::unexpected(*error);
    if (answers_ || once || !isOver()) continue;
    if (!pause.of(betweenRounds)) break;
    // Meanwhile it may have been told something else.
    if (!isOver()) continue;
    begin();
  }
  return {};
}

void Playback::begin() {
  replay_.close();
  replay_.open();
  // The silence before the first byte is part of what is played.
  if (!answers_) replay_.seek(ReplayPort::Time(0));
}

void Playback::sayDue(Bench& bench) {
  if (replay_.isPaused() && !steps_) return;
  if (rest_.empty()) rest_ = replay_.readAll();
  const auto taken = static_cast<std::ptrdiff_t>(bench.offer(rest_));
  rest_.erase(rest_.begin(), rest_.begin() + taken);
  if (rest_.empty()) steps_ = false;
}

void Playback::seek(ReplayPort::Time time) {
  rest_.clear();
  steps_ = false;
  replay_.seek(time);
}

void Playback::step() {
  replay_.pause(true);
  steps_ = true;
  // What was sent to the controller is passed over.
  while (rest_.empty() && !replay_.isFinished() && replay_.inBufferCount() == 0)
    replay_.step();
}

std::string Playback::carryOut(const ReplayRequest& request) {
  switch (request.action) {
    case ReplayRequest::Action::pause:
    case ReplayRequest::Action::go:
      replay_.pause(request.action == ReplayRequest::Action::pause);
      return {};
    case ReplayRequest::Action::step:
      step();
      return {};
    case ReplayRequest::Action::seek:
      seek(std::chrono::duration_cast<ReplayPort::Time>(
          std::chrono::duration<double>(request.seconds)));
      return {};
    case ReplayRequest::Action::progress:
      break;
  }
  return progress();
}

std::string Playback::progress() const {
  const auto position =
      answers_ ? std::min(replay_.position(), answers_->endOfAnswer()) : replay_.position();
  return fmt::format("{:.3f} of {:.3f} s, {}", secondsOf(position), secondsOf(replay_.length()),
                     replay_.isPaused() ? "paused" : "going on");
}

}  // namespace touch::simulator
