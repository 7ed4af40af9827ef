#include "serial/scripts/script_run.h"

#include <algorithm>
#include <utility>

#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto pause = 2ms;
constexpr std::size_t shownBytes = 32;
constexpr std::size_t mostUnread = 1U << 20U;

std::string timeText(ScriptTime time) {
  return std::to_string(time.count()) + " ms";
}

}  // namespace

std::string ScriptFailure::describe() const {
  const std::string number = std::to_string(line);
  return found.empty()
             ? filled(say("scripts", "line %1: %2"), {number, expected})
             : filled(say("scripts", "line %1: expected %2, %3"), {number, expected, found});
}

ScriptRun::ScriptRun(const Script& script, SerialPort& port, Clock& clock, ScriptWatcher watcher,
                     std::vector<ReportFormat> added, ReportFamily family)
    : script_(script),
      port_(port),
      clock_(clock),
      watcher_(std::move(watcher)),
      added_(std::move(added)),
      decoder_(family, added_) {}

Result<void, ScriptFailure> ScriptRun::run() {
  auto done = carryOutAll();
  // What a system keeps of a stopped script's bytes is not to go out behind its stop.
  if (isStopped()) port_.clearOutput();
  return done;
}

Result<void, ScriptFailure> ScriptRun::carryOutAll() {
  for (place_ = 0; place_ < script_.steps.size(); ++place_) {
    const ScriptStep& step = script_.steps[place_];
    if (watcher_.onStep) watcher_.onStep(step);
    if (auto rested = rest(); !rested) return rested;
    auto done = std::visit([this](const auto& action) { return carryOut(action); }, step.action);
    if (!done) return done;
  }
  return {};
}

void ScriptRun::serve() {
  if (script_.steps.empty()) return;
  place_ = script_.steps.size() - 1;
  while (take()) {
    unread_.clear();
    clock_.delay(pause);
  }
}

/// Serves the windows and stands still while the script is paused.
ScriptRun::Outcome ScriptRun::rest() {
  clock_.yield();
  const auto begin = clock_.now();
  while (watcher_.isPaused && watcher_.isPaused() && !isStopped())
    clock_.delay(10 * pause, [this] { return isStopped(); });
  rested_ += clock_.now() - begin;
  if (isStopped()) return failure(say("scripts", "stopped"), {});
  if (!port_.isOpen()) return failure(say("scripts", "the port is closed"), {});
  return {};
}

ScriptRun::Outcome ScriptRun::carryOut(const SendStep& step) {
  const auto bytes = parseBytes(filledIn(step.bytes));
  if (!bytes) return failure(bytes.error().expected, bytes.error().found);
  reply_.clear();
  return send(*bytes);
}

ScriptRun::Outcome ScriptRun::carryOut(const ExpectStep& step) {
  const auto pattern = BytePattern::parse(filledIn(step.pattern));
  if (!pattern) return failure(pattern.error().expected, pattern.error().found);
  BytePattern::Search search(*pattern);
  const auto found =
      listen(step.within, [&search](std::uint8_t byte) { return search.take(byte); });
  if (!found) return tl::unexpected(found.error());
  if (*found) return {};
  return failure(filled(say("scripts", "%1 within %2"), {step.pattern, timeText(step.within)}),
                 reply());
}

ScriptRun::Outcome ScriptRun::carryOut(const ExpectReportStep& step) {
  decoder_.reset();
  std::vector<TouchReport> reports;
  const auto found = listen(step.within, [&](std::uint8_t byte) {
    decoder_.feed(std::span(&byte, 1), reports);
    return !reports.empty();
  });
  if (!found) return tl::unexpected(found.error());
  if (*found) return {};
  return failure(filled(say("scripts", "a touch report within %1"), {timeText(step.within)}),
                 reply());
}

ScriptRun::Outcome ScriptRun::carryOut(const ExpectNothingStep& step) {
  if (auto taken = take(); !taken) return taken;
  unread_.clear();
  reply_.clear();
  const auto found = listen(step.during, [](std::uint8_t) { return true; });
  if (!found) return tl::unexpected(found.error());
  if (!*found) return {};
  return failure(filled(say("scripts", "nothing for %1"), {timeText(step.during)}), reply());
}

ScriptRun::Outcome ScriptRun::carryOut(const WaitStep& step) {
  const auto end = now() + step.duration;
  while (now() < end) {
    if (auto taken = take(); !taken) return taken;
    clock_.delay(pause);
  }
  return {};
}

ScriptRun::Outcome ScriptRun::carryOut(const LineStep& step) {
  const auto set = port_.setSettings(describe(step.settings));
  if (!set) return failure(set.error(), {});
  return {};
}

ScriptRun::Outcome ScriptRun::carryOut(const ReportsStep& step) {
  decoder_ = ReportDecoder(familyOf(step.set), added_);
  return {};
}

ScriptRun::Outcome ScriptRun::carryOut(const AnswerStep& step) {
  answers_.push_back({BytePattern::Search(step.pattern), &step.answer});
  return {};
}

ScriptRun::Outcome ScriptRun::carryOut(const NoteStep& step) {
  if (watcher_.onNote) watcher_.onNote(filledIn(step.text));
  return {};
}

ScriptRun::Outcome ScriptRun::carryOut(const RepeatStep& step) {
  counts_[place_] = step.first;
  return {};
}

ScriptRun::Outcome ScriptRun::carryOut(const EndStep& step) {
  const auto& repeat = std::get<RepeatStep>(script_.steps[step.repeat].action);
  if (++counts_[step.repeat] <= repeat.last) {
    place_ = step.repeat;
  } else {
    counts_.erase(step.repeat);
  }
  return {};
}

Result<bool, ScriptFailure> ScriptRun::listen(ScriptTime time,
                                              const std::function<bool(std::uint8_t)>& isFound) {
  const auto end = now() + time;
  while (true) {
    if (auto taken = take(); !taken) return tl::unexpected(taken.error());
    const auto found = std::ranges::find_if(unread_, [&](std::uint8_t byte) {
      if (reply_.size() < shownBytes) reply_.push_back(byte);
      return isFound(byte);
    });
    if (found != unread_.end()) {
      unread_.erase(unread_.begin(), found + 1);
      return true;
    }
    unread_.clear();
    if (now() >= end) return false;
    clock_.delay(pause);
  }
}

ScriptRun::Outcome ScriptRun::take() {
  if (auto rested = rest(); !rested) return rested;
  const auto bytes = port_.readAll();
  if (watcher_.onReceived && !bytes.empty()) watcher_.onReceived(bytes);
  for (const std::uint8_t byte : bytes) {
    unread_.push_back(byte);
    ++received_;
    for (Answer& answer : answers_) {
      if (!answer.search.take(byte)) continue;
      if (auto sent = send(*answer.bytes); !sent) return sent;
    }
  }
  if (unread_.size() > mostUnread)
    unread_.erase(unread_.begin(), unread_.end() - std::ptrdiff_t{mostUnread});
  return {};
}

ScriptRun::Outcome ScriptRun::send(std::span<const std::uint8_t> bytes) {
  if (isStopped()) return failure(say("scripts", "stopped"), {});
  if (port_.write(bytes)) {
    sent_ += bytes.size();
    if (watcher_.onSent) watcher_.onSent(bytes);
    return {};
  }
  return failure(say("scripts", "the bytes did not go out"), {});
}

std::string ScriptRun::filledIn(std::string text) const {
  for (const auto& [place, count] : counts_) {
    text = withNumber(std::move(text), std::get<RepeatStep>(script_.steps[place].action), count);
  }
  return text;
}

tl::unexpected<ScriptFailure> ScriptRun::failure(std::string expected, std::string found) const {
  return tl::unexpected(
      ScriptFailure{script_.steps[place_].line, std::move(expected), std::move(found)});
}

std::string ScriptRun::reply() const {
  if (reply_.empty()) return say("scripts", "received nothing");
  std::string bytes;
  for (const std::uint8_t byte : reply_)
    bytes.append(bytes.empty() ? "" : " ").append(hexByte(byte));
  return filled(say("scripts", "received %1"), {bytes});
}

}  // namespace touch
