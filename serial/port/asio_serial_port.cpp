#include "serial/port/asio_serial_port.h"

#include <algorithm>
#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/serial_port.hpp>
#include <asio/steady_timer.hpp>
#include <asio/write.hpp>
#include <mutex>
#include <utility>

#include "ports/port_holders.h"
#include "ports/serial_device.h"
#include "serial/receiving/damage_marks.h"
#include "support/text/language.h"

namespace touch {

/// One open device, from opening to closing.
class AsioSerialPort::Line {
 public:
  asio::serial_port& port() { return port_; }

  std::error_code open(const std::string& device, Times times);
  std::error_code apply(const LineSettings& settings);
  /// `timed_out`: the line did not take them.
  std::error_code write(std::span<const std::uint8_t> bytes, std::chrono::milliseconds limit);
  /// Waits until what was written has gone out. What the device does not send, so that nothing
  /// moves for `limit`, is thrown away.
  std::error_code finishOutput(std::chrono::milliseconds limit);
  /// Takes in what has arrived, as far as there is room for it.
  std::error_code collect();
  std::error_code clearInput();

  std::size_t received();
  Received takeReceived();
  std::size_t takeDamaged();
  std::optional<LineState> state();
  std::optional<int> descriptor();

 private:
  // Where nobody reads, the platform's own buffer overflows and not this one.
  static constexpr std::size_t mostReceived = std::size_t{64} << 10U;

  /// Starts a transfer and waits for its end, at most for `limit`; returns how it ended.
  template <typename Start>
  std::error_code complete(std::chrono::milliseconds limit, const Start& start);

  /// What has arrived goes to what was received. The guard is held.
  Result<serial_device::Watch::Outcome, std::error_code> takeIn();

  asio::io_context context_{1};
  asio::serial_port port_{context_};
  std::unique_ptr<serial_device::Before> before_;  // behind the port: it is given back while open
  LineFaults counted_;                             ///< what had been counted before it was opened
  std::mutex guard_;  ///< of the four below: a thread of the watch fills them, too
  DamageMarks marks_;
  Received received_;
  std::size_t damaged_ = 0;
  Times times_ = Times::ofReading;
  std::unique_ptr<serial_device::Watch> watch_;  // last: its thread ends before what it uses goes
};

std::error_code AsioSerialPort::Line::open(const std::string& device, Times times) {
  using Outcome = serial_device::Watch::Outcome;
  auto opened = serial_device::open(port_, device);
  if (!opened) return opened.error();
  before_ = std::move(*opened);
  if (const auto state = serial_device::lineState(port_); state && state->faults)
    counted_ = *state->faults;
  if (times == Times::ofReading) return {};
  watch_ = serial_device::watch(port_, [this] {
    const std::lock_guard lock(guard_);
    // Whoever reads finds out why.
    return takeIn().value_or(Outcome::gone);
  });
  if (watch_) times_ = times;
  return {};
}

std::optional<int> AsioSerialPort::Line::descriptor() {
  return watch_ ? watch_->descriptor() : serial_device::descriptor(port_);
}

std::optional<LineState> AsioSerialPort::Line::state() {
  auto now = serial_device::lineState(port_);
  if (!now || !now->faults) return now;
  for (const auto counter :
       {&LineFaults::framing, &LineFaults::parity, &LineFaults::overruns, &LineFaults::breaks})
    (*now->faults).*counter -= std::min((*now->faults).*counter, counted_.*counter);
  return now;
}

std::error_code AsioSerialPort::Line::apply(const LineSettings& settings) {
  using Options = asio::serial_port_base;
  const auto parity = settings.parity == Parity::even  ? Options::parity::even
                      : settings.parity == Parity::odd ? Options::parity::odd
                                                       : Options::parity::none;
  const auto stopBits = settings.stopBits == 2 ? Options::stop_bits::two : Options::stop_bits::one;
  std::error_code error;
  const auto set = [&](const auto& option) {
    if (!error) port_.set_option(option, error);
  };
  const auto taken = serial_device::takenBy(port_);
  if (taken == serial_device::Takes::nothing) return {};
  // The baud rate comes first: it is what a port may refuse, and then nothing else has changed.
  set(Options::baud_rate(static_cast<unsigned>(settings.baud)));
  if (taken == serial_device::Takes::everything) {
    set(Options::parity(parity));
    set(Options::character_size(static_cast<unsigned>(settings.dataBits)));
  }
  set(Options::stop_bits(stopBits));
  set(Options::flow_control(Options::flow_control::none));
  return error ? error : serial_device::reportDamage(port_);
}

template <typename Start>
std::error_code AsioSerialPort::Line::complete(std::chrono::milliseconds limit,
                                               const Start& start) {
  std::optional<std::error_code> end;
  start([&end](const std::error_code& error, std::size_t) { end = error; });
  context_.restart();
  context_.run_for(limit);
  if (!end) {
    std::error_code ignored;
    port_.cancel(ignored);
    context_.run();
  }
  return end.value_or(asio::error::operation_aborted);
}

std::error_code AsioSerialPort::Line::write(std::span<const std::uint8_t> bytes,
                                            std::chrono::milliseconds limit) {
  const auto error = complete(limit, [&](auto done) {
    asio::async_write(port_, asio::buffer(bytes.data(), bytes.size()), std::move(done));
  });
  if (error != asio::error::operation_aborted) return error;
  // The rest must not come out later, in front of another command.
  const auto gone = serial_device::clearOutput(port_);
  return gone ? gone : std::make_error_code(std::errc::timed_out);
}

std::error_code AsioSerialPort::Line::finishOutput(std::chrono::milliseconds limit) {
  constexpr std::chrono::milliseconds littleLater{2};
  // What is on no wire is there at once, and may be read by nobody.
  if (serial_device::takenBy(port_) != serial_device::Takes::everything) return {};
  std::optional<std::size_t> least;
  for (auto fell = std::chrono::steady_clock::now();
       std::chrono::steady_clock::now() - fell < limit;) {
    const auto waiting = serial_device::waitingOutput(port_);
    if (!waiting) return waiting.error();
    if (*waiting == 0) return {};
    if (!least || *waiting < *least) fell = std::chrono::steady_clock::now();
    least = std::min(least.value_or(*waiting), *waiting);
    asio::steady_timer(context_, littleLater).wait();
  }
  return serial_device::clearOutput(port_);
}

Result<serial_device::Watch::Outcome, std::error_code> AsioSerialPort::Line::takeIn() {
  using Outcome = serial_device::Watch::Outcome;
  const auto waiting = serial_device::waiting(port_);
  if (!waiting) return tl::unexpected(waiting.error());
  damaged_ += waiting->damaged;
  std::vector<std::uint8_t>& received = received_.bytes;
  const std::size_t before = received.size();
  std::vector<std::uint8_t> bytes(std::min(waiting->bytes, mostReceived - before));
  if (bytes.empty()) return before < mostReceived ? Outcome::taken : Outcome::full;
  const auto taken = serial_device::read(port_, bytes);
  if (!taken) return tl::unexpected(taken.error());
  const auto arrived = std::span(bytes).first(*taken);
  if (serial_device::marksDamage) {
    damaged_ += marks_.take(arrived, received);
  } else {
    received.insert(received.end(), arrived.begin(), arrived.end());
  }
  if (times_ == Times::ofArrival && received.size() > before)
    received_.parts.push_back({std::chrono::steady_clock::now(), received.size() - before});
  return received.size() < mostReceived ? Outcome::taken : Outcome::full;
}

std::error_code AsioSerialPort::Line::collect() {
  if (watch_) watch_->settle();
  const std::lock_guard lock(guard_);
  const auto taken = takeIn();
  return taken ? std::error_code() : taken.error();
}

std::error_code AsioSerialPort::Line::clearInput() {
  const std::lock_guard lock(guard_);
  received_ = {};
  marks_.forget();
  return serial_device::clearInput(port_);
}

std::size_t AsioSerialPort::Line::received() {
  const std::lock_guard lock(guard_);
  return received_.bytes.size();
}

AsioSerialPort::Received AsioSerialPort::Line::takeReceived() {
  const std::lock_guard lock(guard_);
  return std::exchange(received_, {});
}

std::size_t AsioSerialPort::Line::takeDamaged() {
  const std::lock_guard lock(guard_);
  return std::exchange(damaged_, 0);
}

AsioSerialPort::AsioSerialPort(ComPorts ports, std::chrono::milliseconds transferLimit, Times times)
    : ports_(std::move(ports)), transferLimit_(transferLimit), times_(times) {}

std::unique_ptr<AsioSerialPort> AsioSerialPort::withTrueTimes(ComPorts ports) {
  return std::make_unique<AsioSerialPort>(std::move(ports), usualTransferLimit, Times::ofArrival);
}

AsioSerialPort::~AsioSerialPort() = default;

Result<void, std::string> AsioSerialPort::setSettings(std::string_view settings) {
  const auto wanted = parseLineSettings(settings);
  if (!wanted) return tl::unexpected(wanted.error());
  const auto before = std::exchange(settings_, *wanted);
  if (!isOpen()) return {};
  // What was written goes out as it was meant to.
  if (settings_ != before) loseOn(line_->finishOutput(transferLimit_));
  if (!isOpen()) return tl::unexpected(lost_.value());
  const auto refused = line_->apply(settings_);
  if (!refused) return {};
  settings_ = before;
  // A device that is gone refuses as well, but for another reason.
  inBufferCount();
  if (!isOpen()) return tl::unexpected(lost_.value());
  line_->apply(before);
  return tl::unexpected(refusesSettings(*wanted, refused));
}

void AsioSerialPort::selectPort(int number) {
  number_ = number;
}

Result<void, std::string> AsioSerialPort::open() {
  if (isOpen()) return {};
  lost_.reset();
  left_ = {};
  sharedWith_.clear();
  const std::string device = ports_.device(number_);
  if (device.empty()) {
    return tl::unexpected(
        filled(say("ports", "%1 cannot be opened: %2"),
               {ports_.describe(number_), serial_device::explainNoSimulatedPort()}));
  }
  try {
    auto line = std::make_unique<Line>();
    if (const auto error = line->open(device, times_)) return tl::unexpected(cannotOpen(error));
    if (const auto error = line->apply(settings_))
      return tl::unexpected(refusesSettings(settings_, error));
    line_ = std::move(line);
    // From here on nobody else gets at it; who had it open before is seen now.
    const std::string sharing = sharingText(portHolders(device));
    if (!sharing.empty()) sharedWith_ = ports_.describe(number_) + ": " + sharing;
    return {};
  } catch (const std::system_error& error) {
    // The platform has nothing left to wait for a port with.
    return tl::unexpected(cannotOpen(error.code()));
  }
}

void AsioSerialPort::close() {
  if (isOpen()) line_->finishOutput(transferLimit_);
  line_.reset();
}

void AsioSerialPort::collect() {
  if (isOpen()) loseOn(line_->collect());
}

std::size_t AsioSerialPort::inBufferCount() {
  collect();
  return isOpen() ? line_->received() : 0;
}

void AsioSerialPort::clearInput() {
  left_ = {};
  if (isOpen()) loseOn(line_->clearInput());
}

void AsioSerialPort::clearOutput() {
  if (isOpen()) loseOn(serial_device::clearOutput(line_->port()));
}

bool AsioSerialPort::write(std::span<const std::uint8_t> bytes) {
  if (!isOpen()) return false;
  const auto error = line_->write(bytes, transferLimit_);
  if (error != std::errc::timed_out) loseOn(error);
  return !error;
}

std::vector<std::uint8_t> AsioSerialPort::readAll() {
  collect();
  auto read = isOpen() ? line_->takeReceived() : std::exchange(left_, {});
  readParts_ = std::move(read.parts);
  return std::move(read.bytes);
}

std::size_t AsioSerialPort::takeDamaged() {
  return isOpen() ? line_->takeDamaged() : 0;
}

std::optional<LineState> AsioSerialPort::lineState() {
  return isOpen() ? line_->state() : std::nullopt;
}

bool AsioSerialPort::switchLine(LineSwitch which, bool on) {
  return isOpen() && serial_device::switchLine(line_->port(), which, on);
}

std::optional<int> AsioSerialPort::descriptor() const {
  return isOpen() ? line_->descriptor() : std::nullopt;
}

void AsioSerialPort::loseOn(const std::error_code& error) {
  if (!error) return;
  lost_ =
      filled(say("ports", "%1 is gone: it was unplugged or switched off (%2). Connect it again."),
             {ports_.describe(number_), error.message()});
  left_ = line_->takeReceived();
  line_.reset();
}

std::string AsioSerialPort::cannotOpen(const std::error_code& error) const {
  return filled(say("ports", "%1 cannot be opened: %2"),
                {ports_.describe(number_),
                 serial_device::explainRefusal(error, ports_.device(number_), number_)});
}

std::string AsioSerialPort::refusesSettings(const LineSettings& settings,
                                            const std::error_code& error) const {
  return filled(say("ports", "%1 cannot be set to %2: %3."),
                {ports_.describe(number_), describe(settings), error.message()});
}

}  // namespace touch
