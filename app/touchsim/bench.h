#pragma once

#include <asio/io_context.hpp>
#include <asio/signal_set.hpp>
#include <asio/steady_timer.hpp>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "core/serial_port.h"
#include "simulator/controller/fault_times.h"
#include "simulator/port/served_port.h"
#include "support/system_clock.h"

namespace touch::simulator {

/// Waits that the user can end with Ctrl+C. What else is to be done meanwhile runs on its context.
class Pause {
 public:
  Pause();

  asio::io_context& context() { return context_; }
  bool isInterrupted() const { return interrupted_; }
  /// False when the user wants the program to end.
  bool until(TimePoint time);
  bool of(TimePoint::duration duration);
  void untilInterrupted();

 private:
  asio::io_context context_{1};
  asio::signal_set signals_;
  bool interrupted_ = false;
};

/// A controller with a port of its own.
class Bench {
 public:
  /// Makes the port, or says why there is none.
  using MakePort = std::function<Result<std::unique_ptr<ServedPort>, std::string>(
      const ControllerEnd& controller)>;
  static Result<std::unique_ptr<Bench>, std::string> open(const ControllerModel& model, int baud,
                                                          const MakePort& makePort);
  explicit Bench(const ControllerModel& model) : controller_(model) {}

  const std::string& path() const { return port_->path(); }

  /// Does something with the controller: `action` is given it and the time.
  void with(const std::function<void(SimulatedController&, TimePoint)>& action);

  /// The controller obeys nothing from now on: what it hears is for `heard`.
  void listen();
  /// What came since it was asked last.
  std::vector<std::uint8_t> heard();
  /// Sends of `bytes` what there is room for on the line, and returns how many that were.
  std::size_t offer(std::span<const std::uint8_t> bytes);
  /// Sends `bytes`, however many, as the line takes them. False when the user wants the program to
  /// end.
  bool say(Pause& pause, std::span<const std::uint8_t> bytes);

 private:
  std::mutex guard_;
  std::vector<std::uint8_t> heard_;
  SimulatedClock clock_;
  SimulatedController controller_;
  std::unique_ptr<ServedPort> port_;  // last: its thread ends before what it uses goes
};

/// Makes faults of a bench's controller come and go. Both outlive it.
class PassingFaults {
 public:
  PassingFaults(Bench& bench, Pause& pause, std::vector<FaultTimes> faults);

 private:
  void set();

  Bench& bench_;
  std::vector<FaultTimes> faults_;
  TimePoint start_;
  asio::steady_timer timer_;
};

/// The controller's end of the line as a script talks over it. How the other end has set the line
/// is not its business.
class BenchPort final : public SerialPort {
 public:
  BenchPort(Bench& bench, Pause& pause) : bench_(bench), pause_(pause) { bench_.listen(); }

  Result<void, std::string> setSettings(std::string_view) override { return {}; }
  void selectPort(int) override {}
  Result<void, std::string> open() override { return {}; }
  void close() override {}
  bool isOpen() const override { return true; }
  std::optional<std::string> lost() const override { return std::nullopt; }
  std::size_t inBufferCount() override { return 0; }
  void clearInput() override { bench_.heard(); }
  void clearOutput() override {}
  bool write(std::span<const std::uint8_t> bytes) override { return bench_.say(pause_, bytes); }
  std::vector<std::uint8_t> readAll() override { return bench_.heard(); }

 private:
  Bench& bench_;
  Pause& pause_;
};

/// Time whose waits the user can end.
class BenchClock final : public QueuedClock {
 public:
  explicit BenchClock(Pause& pause) : pause_(pause) {}
  TimePoint now() const override { return std::chrono::steady_clock::now(); }

 private:
  void sleepUntil(TimePoint time) override { pause_.until(time); }

  Pause& pause_;
};

}  // namespace touch::simulator
