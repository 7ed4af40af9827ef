#include "serial/debugger/script_player.h"

#include <utility>
#include <variant>

#include "serial/debugger/console_log.h"
#include "support/prompt.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

Status ScriptPlayer::choose(const std::filesystem::path& file) {
  auto read = readScript(file);
  if (!read) return tl::unexpected(read.error());
  script_ = std::move(*read);
  file_ = file;
  line_ = 0;
  return {};
}

std::string ScriptPlayer::run() {
  std::string outcome;
  if (script_) port_.gate().run([&] { outcome = readAndRun(); });
  return outcome;
}

void ScriptPlayer::pause(bool on) {
  if (state_ == State::running || state_ == State::paused)
    state_ = on ? State::paused : State::running;
}

void ScriptPlayer::stop() {
  if (isRunning()) state_ = State::stopping;
}

std::string ScriptPlayer::readAndRun() {
  if (const auto read = choose(file_); !read) return read.error().describe();
  if (const auto question = script_->question(); question && !prompt_.confirm(*question))
    return say("scripts", "The script was not run.");
  state_ = State::running;
  std::string outcome;
  runThen([&] { outcome = carryOut(); }, [this] { state_ = State::idle; });
  return outcome;
}

std::string ScriptPlayer::carryOut() {
  log_.note(filled(say("scripts", "Script %1"), {toUtf8(script_->name)}));
  port_.serial().clearOutput();
  port_.serial().clearInput();
  ScriptRun run(*script_, port_.serial(), access_.clock, watcher(), formats_,
                familyOf(access_.session.commandSet));
  const auto done = run.run();
  // Behind an error nobody would know how the line is set.
  port_.setUsualLine();
  port_.noteDamage();
  port_.tellLoss();
  if (!done) return toUtf8(script_->name) + ", " + done.error().describe();
  line_ = 0;
  return filled(
      say("scripts", "%1: passed; %2 bytes sent, %3 received"),
      {toUtf8(script_->name), std::to_string(run.sent()), std::to_string(run.received())});
}

ScriptWatcher ScriptPlayer::watcher() {
  return {.onStep =
              [this](const ScriptStep& step) {
                line_ = step.line;
                if (std::holds_alternative<LineStep>(step.action)) log_.note(step.text);
              },
          .onNote = [this](const std::string& note) { log_.note(toUtf8(note)); },
          .onSent = [this](std::span<const std::uint8_t> bytes) { log_.sent(bytes); },
          .onReceived = [this](std::span<const std::uint8_t> bytes) { log_.received(bytes); },
          .isStopped = [this] { return state_ == State::stopping || port_.gate().isCutShort(); },
          .isPaused = [this] { return isPaused(); }};
}

}  // namespace touch
