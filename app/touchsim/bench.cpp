#include "app/touchsim/bench.h"

#include <algorithm>
#include <csignal>
#include <utility>

namespace touch::simulator {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostInOneGo = 512;
// The fastest line takes longer to empty itself.
constexpr auto lineIsFull = 5ms;
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

Result<std::unique_ptr<Bench>, std::string> Bench::open(const ControllerModel& model, int baud,
                                                        const MakePort& makePort) {
  auto bench = std::make_unique<Bench>(model);
  bench->controller_.setSpeed(baud);
  bench->controller_.connect(LineUser::port, bench->clock_.now());
  auto port = makePort({bench->controller_, bench->clock_, bench->guard_});
  if (!port) return tl::unexpected(port.error());
  bench->port_ = std::move(*port);
  return bench;
}

void Bench::with(const std::function<void(SimulatedController&, TimePoint)>& action) {
  {
    const std::lock_guard lock(guard_);
    action(controller_, clock_.now());
  }
  port_->wake();
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

std::size_t Bench::offer(std::span<const std::uint8_t> bytes) {
  std::size_t offered = 0;
  bool taken = true;
  while (taken && offered < bytes.size()) {
    const auto rest = bytes.subspan(offered);
    const auto piece = rest.first(std::min(rest.size(), mostInOneGo));
    with([&](auto& controller, TimePoint now) { taken = controller.say(piece, now); });
    if (taken) offered += piece.size();
  }
  return offered;
}

bool Bench::say(Pause& pause, std::span<const std::uint8_t> bytes) {
  while (true) {
    bytes = bytes.subspan(offer(bytes));
    if (bytes.empty()) return true;
    if (!pause.of(lineIsFull)) return false;
  }
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
