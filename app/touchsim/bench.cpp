#include "app/touchsim/bench.h"

#include <algorithm>
#include <csignal>
#include <utility>

namespace touch::simulator {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostInOneGo = 512;
constexpr auto lineIsFull = 100ms;
constexpr std::size_t mostHeard = std::size_t{64} << 10U;
constexpr auto faultStep = 20ms;

}  // namespace

Pause::Pause() : signals_(context_, SIGINT, SIGTERM) {
  signals_.async_wait([this](const std::error_code&, int) {
    interrupted_ = true;
    context_.stop();
  });
}

bool Pause::until(TimePoint time) {
  if (!interrupted_) context_.run_until(time);
  return !interrupted_;
}

bool Pause::of(TimePoint::duration duration) {
  return until(std::chrono::steady_clock::now() + duration);
}

void Pause::untilInterrupted() {
  if (!interrupted_) context_.run();
}

std::unique_ptr<Bench> Bench::open(const ControllerModel& model, int baud) {
  auto bench = std::make_unique<Bench>(model);
  bench->controller_.setSpeed(baud);
  bench->controller_.connect(LineUser::port, bench->clock_.now());
  bench->line_ = PtyLine::open(bench->controller_, bench->clock_, bench->guard_);
  return bench->line_ ? std::move(bench) : nullptr;
}

void Bench::with(const std::function<void(SimulatedController&, TimePoint)>& action) {
  {
    const std::lock_guard lock(guard_);
    action(controller_, clock_.now());
  }
  line_->wake();
}

void Bench::listen() {
  with([this](SimulatedController& controller, TimePoint) {
    controller.handOver([this](std::span<const std::uint8_t> bytes) {
      // Who is busy sending hears no more than this.
      if (heard_.size() < mostHeard) heard_.insert(heard_.end(), bytes.begin(), bytes.end());
    });
  });
}

std::vector<std::uint8_t> Bench::heard() {
  const std::lock_guard lock(guard_);
  return std::exchange(heard_, {});
}

bool Bench::say(Pause& pause, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto piece = bytes.first(std::min(bytes.size(), mostInOneGo));
    bool taken = false;
    with([&](auto& controller, TimePoint now) { taken = controller.say(piece, now); });
    if (taken) {
      bytes = bytes.subspan(piece.size());
    } else if (!pause.of(lineIsFull)) {
      return false;
    }
  }
  return true;
}

PassingFaults::PassingFaults(Bench& bench, Pause& pause, std::vector<FaultTimes> faults)
    : bench_(bench),
      faults_(std::move(faults)),
      start_(std::chrono::steady_clock::now()),
      timer_(pause.context()) {
  set();
}

void PassingFaults::set() {
  const auto since = std::chrono::steady_clock::now() - start_;
  bench_.with([&](SimulatedController& controller, TimePoint) {
    // One of them may be named several times.
    for (const FaultTimes& times : faults_)
      controller.faults().set(times.fault, std::ranges::any_of(faults_, [&](const auto& other) {
                                return other.fault == times.fault && other.isThere(since);
                              }));
  });
  if (std::ranges::none_of(faults_, &FaultTimes::isTimed)) return;
  timer_.expires_after(faultStep);
  timer_.async_wait([this](const std::error_code& ended) {
    if (!ended) set();
  });
}

}  // namespace touch::simulator
