#include "serial/receiving/receive_mode.h"

#include <span>
#include <string_view>
#include <utility>

#include "support/prompt.h"
#include "support/text/language.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto tickInterval = 200ms;
// Less than half a packet takes on the line.
constexpr auto pollInterval = 2ms;
// A tick's share of the fastest line is 80 kB.
constexpr std::size_t mostInOneTick = std::size_t{96} << 10U;

}  // namespace

ReceiveMode::ReceiveMode(Parts parts, ReceivingPort port)
    : parts_(std::move(parts)),
      port_(std::move(port)),
      display_(family(), parts_.formats),
      timer_(parts_.clock.makeTimer([this] { tick(); })),
      pollTimer_(parts_.clock.makeTimer([this] { poll(); })) {}

void ReceiveMode::receive() {
  if (stage_ == Stage::idle) {
    stage_ = Stage::receiving;
    if (port_.gate.isOpen()) port_.port.clearInput();
  }
  if (tooLong_ == TooLong::said) tooLong_ = TooLong::unsaid;
  runTimers();
}

void ReceiveMode::debug() {
  stage_ = Stage::idle;
  display_.idle(replyFormat_, parts_.log);
  runTimers();
}

void ReceiveMode::measureRate(bool on) {
  rate_.reset();
  if (on) {
    rate_.emplace(family(), parts_.formats, line());
    lastStroke_.reset();
    mean_ = {};
    parts_.log.clear();
    parts_.log.note(rateModeLine);
  }
  runTimers();
}

void ReceiveMode::takeOverRate(const ReceiveMode& other) {
  rate_.reset();
  if (other.isMeasuring()) rate_.emplace(family(), parts_.formats, line());
  lastStroke_ = other.lastStroke_;
  mean_ = other.mean_;
  runTimers();
}

void ReceiveMode::suspend() {
  if (stage_ == Stage::receiving) stage_ = Stage::suspended;
  runTimers();
}

void ReceiveMode::resume() {
  if (stage_ == Stage::suspended) stage_ = Stage::receiving;
  runTimers();
}

void ReceiveMode::runTimers() {
  const bool runs = stage_ == Stage::receiving;
  runs ? timer_->start(tickInterval) : timer_->stop();
  runs&& rate_ ? pollTimer_->start(pollInterval) : pollTimer_->stop();
}

void ReceiveMode::poll() {
  if (!rate_ || !(tooLong_ == TooLong::boxIsUp || port_.gate.isOpen())) return;
  collect();
}

void ReceiveMode::tick() {
  // A message box lets timers run while it is up. What comes behind this mode's own is not for
  // anybody else, and would be lost.
  if (tooLong_ == TooLong::boxIsUp) return rate_ ? poll() : display();
  port_.gate.run([this] {
    trim();
    rate_ ? measure() : display();
    if (port_.tellLoss()) debug();
  });
}

void ReceiveMode::trim() {
  if (!parts_.log.isTooLong()) return;
  constexpr std::string_view tooLong = "Text too long !!";
  if (tooLong_ == TooLong::said) {
    remark_ = std::string(tooLong) + ' ' +
              say("receiving", "The last million lines are kept, and \"Save\" writes them.");
  } else {
    tooLong_ = TooLong::boxIsUp;
    runThen([&] { parts_.prompt.message(std::string(tooLong)); },
            [this] { tooLong_ = TooLong::said; });
  }
  parts_.log.tooLongWasSaid();
}

double ReceiveMode::ceiling() const {
  return rateCeiling(line(), lastStroke_ ? lastStroke_->packetLength : packetLength(family()));
}

void ReceiveMode::collect() {
  const ReadBytes read = readTimed(port_.port, parts_.clock.now());
  std::span<const std::uint8_t> rest = read.bytes;
  for (const ReadPart& part : read.parts) {
    rate_->collect(part.time, rest.first(part.bytes));
    rest = rest.subspan(part.bytes);
  }
}

void ReceiveMode::measure() {
  if (rate_->family() != family()) rate_.emplace(family(), parts_.formats, line());
  collect();
  auto stroke = rate_->tick(parts_.clock.now());
  if (!stroke) return;
  for (const std::string& line : rateLines(*stroke))
    parts_.log.note(line);
  if (const auto rate = stroke->evidence ? medianRate(*stroke->evidence) : std::nullopt) {
    ++mean_.strokes;
    mean_.rate += (*rate - mean_.rate) / mean_.strokes;
  }
  lastStroke_ = std::move(stroke);
}

void ReceiveMode::display() {
  if (display_.family() != family()) {
    display_.idle(replyFormat_, parts_.log);
    display_ = ReceiveDisplay(family(), parts_.formats);
  }
  const ReadBytes read = readTimed(port_.port, parts_.clock.now());
  if (read.bytes.empty()) return display_.idle(replyFormat_, parts_.log);
  display_.show(read, line(), replyFormat_, parts_.log);
  // A replay gives what came up to a command that was sent, and then what came after it.
  std::size_t shown = read.bytes.size();
  while (shown < mostInOneTick && port_.port.inBufferCount() > 0) {
    const ReadBytes more = readTimed(port_.port, parts_.clock.now());
    if (more.bytes.empty()) return;
    display_.show(more, line(), replyFormat_, parts_.log);
    shown += more.bytes.size();
  }
}

}  // namespace touch
