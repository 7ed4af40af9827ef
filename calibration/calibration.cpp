#include "calibration/calibration.h"

#include <cstdlib>
#include <utility>

#include "core/exchange/exchange.h"

namespace touch {

namespace {

constexpr auto startTick = 200ms;
constexpr int ticksBeforeStart = 3;
constexpr auto pulseTick = 200ms;
constexpr float progressPerTick = 50;  // twips
constexpr auto beforeTarget = 800ms;   // time to move the hand to the next target
constexpr auto afterSetPoint = 600ms;  // the driver settles on the new target
constexpr auto readingPoll = 100ms;
constexpr auto afterStore = 500ms;
constexpr auto penUpPoll = 10ms;
constexpr int penUpPollsPerPoint = 101;
constexpr int penUpPollsInAll = 270;
constexpr int restPasses = 3001;
constexpr std::int32_t samplesPerPoint = 60;
// Two targets are never this close in raw counts: the finger has stayed where it was.
constexpr std::int32_t samePlace = 200;

constexpr int rawCalibrationAttempts = 3;
constexpr int extendedCalibrationAttempts = 4;
constexpr std::size_t pointReportSize = 3;

constexpr int rings = 4;
constexpr float outerRing = 250;  // twips
constexpr float ringStep = 75;    // twips
// Of the pulsing target, from its outer ring to its inner one.
constexpr std::array<Colour, rings> ringColours = {palette[10], palette[11], palette[12],
                                                   palette[13]};
constexpr int lineWidth = 2;

}  // namespace

Calibration::Calibration(const Access& access, Prompt& prompt, CalibrationScreen& screen,
                         TwipsSize size)
    : access_(access),
      prompt_(prompt),
      screen_(screen),
      size_(size),
      pulseTimer_(access.clock.makeTimer([this] { tickPulse(); })),
      startTimer_(access.clock.makeTimer([this] { tickStartDelay(); })),
      gate_(access.clock) {}

void Calibration::activate() {
  count_ = static_cast<std::uint8_t>(access_.session.calibrationPoints);
  targets_ = calibrationTargets(count_, size_);
  phase_ = Phase::beforeStart;
  progress_ = 0;
  startTicks_ = 0;
  pulseTimer_->stop();
  startTimer_->start(startTick);
  // With two targets nothing is to be pressed: the lower left target lies where a hand would reach
  // for the buttons.
  screen_.showButtons(count_ != 2, count_ != 2);
  screen_.allowExit(true);
}

void Calibration::tickStartDelay() {
  if (targets_.empty()) {
    startTimer_->stop();
    return;
  }
  if (++startTicks_ < ticksBeforeStart) return;
  startTimer_->stop();
  pulseTimer_->start(pulseTick);
  screen_.showButtons(false, count_ != 2);
  if (count_ >= 3) showgrid();
  calibrate();
}

void Calibration::start() {
  if (targets_.empty()) return;
  bool ready = false;
  gate_.run([this, &ready] {
    startTimer_->stop();
    screen_.showButtons(false, false);
    showgrid();
    ready = canBeOpened(access_);
    if (ready) return;
    prompt_.message(access_.session.messages[Message::openError]);
    screen_.showButtons(true, true);
  });
  if (ready) calibrate();
}

void Calibration::cancel() {
  if (phase_ == Phase::storing) return;
  abandon(Stop::cancelled);
  leave();
}

void Calibration::escape() {
  if (phase_ == Phase::storing || left_ || stop_ == Stop::escaped) return;
  const bool procedureResets = isProceeding();
  abandon(Stop::escaped);
  stop_ = Stop::escaped;
  const auto reset = [this] {
    Connection connection(access_);
    resetController(connection);
  };
  gate_.leave([this, procedureResets, reset] {
    if (procedureResets) return leave();
    runThen([this, reset] { gate_.run(reset); }, [this] { leave(); });
  });
}

void Calibration::abandon(Stop reason) {
  pulseStopped_ = true;
  progress_ = size_.width + 100;
  pulseTimer_->stop();
  startTimer_->stop();
  if (isProceeding()) stop_ = reason;
}

void Calibration::leave() {
  pulseTimer_->stop();
  startTimer_->stop();
  const auto leaveScreen = [this] {
    if (!std::exchange(left_, true)) screen_.leave();
  };
  // Whoever waits for the end hears of it, whatever becomes of the screen.
  runThen(leaveScreen, [this] {
    gate_.leave([this] {
      gate_.shut();
      screen_.ended(outcome_);
    });
  });
}

const TwipsPoint* Calibration::awaitedTarget() const {
  return phase_ == Phase::awaitingTouch && !stopped() ? &targets_[index_] : nullptr;
}

void Calibration::wait(Milliseconds duration) {
  access_.clock.delay(duration, [this] { return stopped(); });
}

void Calibration::showgrid() {
  Surface& surface = screen_.surface();
  const CalibrationGrid grid(size_);
  surface.clear();
  for (std::size_t i = 0; i < grid.y.size(); ++i) {
    const bool whole = i % 2 == 0;
    surface.line({whole ? 0 : grid.x.front(), grid.y[i]},
                 {whole ? size_.width : grid.x.back(), grid.y[i]}, white, lineWidth);
    surface.line({grid.x[i], whole ? 0 : grid.y.front()},
                 {grid.x[i], whole ? size_.height : grid.y.back()}, white, lineWidth);
  }
  for (std::size_t i = 0; i < targets_.size(); ++i)
    drawTarget(i, 0, white);
}

void Calibration::drawTarget(std::size_t target, int ring, Colour colour) {
  const float radius = outerRing - ringStep * static_cast<float>(ring);
  screen_.surface().circle(targets_[target], radius, colour, lineWidth);
}

void Calibration::tickPulse() {
  if (pulseStopped_) return;
  progress_ += progressPerTick;
  if (!isAtTarget()) return;
  drawTarget(index_, ring_, ringColours[static_cast<std::size_t>(ring_)]);
  if (++ring_ < rings) return;
  for (int ring = 0; ring < rings; ++ring)
    drawTarget(index_, ring, lightGrey);
  ring_ = 0;
}

void Calibration::endcal() {
  if (!isAtTarget()) return;
  for (int ring = 0; ring < rings; ++ring)
    drawTarget(index_, ring, yellow);
  pulseStopped_ = true;
}

bool Calibration::enterCalibration(Connection& connection, const char* command, int attempts) {
  connection.flush();
  const Frame frame = commandFrame(command);
  for (int attempt = 1; !stopped(); ++attempt) {
    connection.write(frame);
    wait(commandWait);
    if (stopped()) break;
    if (connection.read().acknowledged()) return true;
    if (attempt == attempts) break;
    connection.flush();
  }
  return false;
}

bool Calibration::awaitTouch(const std::function<bool()>& isReady) {
  phase_ = Phase::awaitingTouch;
  bool ready = false;
  while (!ready && !stopped()) {
    pulseTimer_->start(pulseTick);
    if (progress_ >= size_.width) {
      stop_ = Stop::timedOut;
      outcome_ = CalibrationOutcome::timedOut;
      break;
    }
    screen_.showTimeBar(progress_);
    wait(readingPoll);
    if (stopped()) break;
    pulseStopped_ = false;
    ready = isReady();
  }
  phase_ = Phase::working;
  return ready;
}

void Calibration::takeReading(Reading reading) {
  if (index_ > 0) {
    const Reading& previous = readings_[index_ - 1u];
    // In 64 bits: a driver may report any two numbers.
    const auto apart = [](Counts a, Counts b) { return std::abs(std::int64_t{a.value} - b.value); };
    if (apart(previous.x, reading.x) <= samePlace && apart(previous.y, reading.y) <= samePlace) {
      --index_;
      prompt_.message(access_.session.messages[Message::wrongPosition]);
      return;
    }
  }
  readings_[index_] = reading;
}

void Calibration::awaitPenUp(const Connection& connection) {
  penUpPolls_ = 0;
  while (penUpPolls_ < penUpPollsPerPoint && !stopped()) {
    ++penUpPolls_;
    if (access_.driver.IsPenUp(connection.handle()) != 0) break;
    access_.clock.delay(penUpPoll);
  }
}

void Calibration::awaitPenUpAtEnd(const Connection& connection) {
  access_.clock.yield(restPasses);
  while (penUpPolls_ < penUpPollsInAll && !stopped()) {
    ++penUpPolls_;
    if (access_.driver.IsPenUp(connection.handle()) != 0) break;
    access_.clock.yield(restPasses);
  }
  access_.clock.yield(restPasses);
}

void Calibration::finishPoint(const Connection& connection) {
  access_.clock.yield();
  endcal();
  access_.clock.yield();
  if (!stopped()) awaitPenUp(connection);
  ++index_;
}

void Calibration::resetController(Connection& connection) {
  connection.flush();
  ask(connection, access_.clock, commandFrame("R"), {.wait = commandWait, .tries = 2});
}

void Calibration::calibrate() {
  const auto procedure = [this] {
    index_ = 0;
    phase_ = Phase::working;
    stop_ = Stop::none;
    Connection connection(access_);
    docal(connection);
    if (stop_ == Stop::escaped) resetController(connection);
  };
  try {
    gate_.run(procedure);
  } catch (...) {
    if (outcome_ != CalibrationOutcome::stored) outcome_ = CalibrationOutcome::failed;
    leave();
    throw;
  }
  leave();
}

void Calibration::docal(Connection& connection) {
  if (count_ < 3) {
    docal2pts(connection);
    return;
  }
  if (!enterCalibration(connection, "CR", rawCalibrationAttempts)) {
    if (!stopped()) {
      outcome_ = CalibrationOutcome::failed;
      prompt_.message(access_.session.messages[Message::rawCalibrationError]);
      access_.session.calibrationPoints = 0;
    }
  } else {
    screen_.showTimeBar(0);
    while (index_ < count_ && !stopped()) {
      wait(beforeTarget);
      if (stopped()) break;
      progress_ = 0;
      access_.driver.SetCalPoint(connection.handle(), index_, samplesPerPoint, count_);
      wait(afterSetPoint);
      // A driver that writes more than its two numbers damages the rest of this instead of our
      // memory.
      std::array<std::int32_t, 64> raw{};
      const bool taken = awaitTouch([&] {
        return access_.driver.CalCurrentPointReady(connection.handle(), raw.data()) != 0;
      });
      if (taken) {
        pulseTimer_->stop();
        takeReading({{raw[0]}, {raw[1]}});
      }
      finishPoint(connection);
    }
    if (!stopped()) {
      pulseTimer_->stop();
      awaitPenUpAtEnd(connection);
    }
    if (!stopped()) {
      phase_ = Phase::storing;
      screen_.allowExit(false);
      access_.driver.StoreCalibrationData(connection.handle());
      outcome_ = CalibrationOutcome::stored;
      wait(afterStore);
    }
  }
}

void Calibration::docal2pts(Connection& connection) {
  if (!enterCalibration(connection, "CX", extendedCalibrationAttempts)) {
    if (!stopped()) {
      outcome_ = CalibrationOutcome::failed;
      prompt_.message(access_.session.messages[Message::extendedCalibrationError]);
    }
  } else {
    while (index_ < count_ && !stopped()) {
      wait(beforeTarget);
      if (stopped()) break;
      progress_ = 0;
      bool refused = false;
      const bool accepted = awaitTouch([&] {
        if (access_.driver.ReadLength(connection.handle()) <
            static_cast<std::int32_t>(pointReportSize)) {
          return false;
        }
        const Reply report = connection.read(pointReportSize);
        if (report.size() < 2) return false;
        refused = report.bytes[1] == '2';
        return refused || report.bytes[1] == '1';
      });
      if (refused) {
        outcome_ = CalibrationOutcome::failed;
        prompt_.message(access_.session.messages[Message::calibrationError],
                        access_.session.messages[Message::twoPointTitle]);
        break;
      }
      // The controller keeps its own result as soon as it has the last point; giving up after that
      // undoes nothing.
      if (accepted && index_ + 1 == count_) outcome_ = CalibrationOutcome::stored;
      finishPoint(connection);
    }
    if (!stopped() && outcome_ == CalibrationOutcome::stored) {
      pulseTimer_->stop();
      awaitPenUpAtEnd(connection);
    }
  }
}

}  // namespace touch
