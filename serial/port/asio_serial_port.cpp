#include "serial/port/asio_serial_port.h"

#include <algorithm>
#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/serial_port.hpp>
#include <asio/write.hpp>
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

  std::error_code open(const std::string& device);
  std::error_code apply(const LineSettings& settings);
  /// `timed_out`: the line did not take them.
  std::error_code write(std::span<const std::uint8_t> bytes, std::chrono::milliseconds limit);
  /// Takes in what has arrived, as far as there is room for it.
  std::error_code collect(std::chrono::milliseconds limit);
  std::error_code clearInput();

  std::size_t received() const { return received_.size(); }
  std::vector<std::uint8_t> takeReceived() { return std::exchange(received_, {}); }
  std::size_t takeDamaged() { return std::exchange(damaged_, 0); }
  std::optional<LineState> state();

 private:
  // Where nobody reads, the platform's own buffer overflows and not this one.
  static constexpr std::size_t mostReceived = std::size_t{64} << 10U;

  /// Starts a transfer and waits for its end, at most for `limit`; returns how it ended.
  template <typename Start>
  std::error_code complete(std::chrono::milliseconds limit, const Start& start);

  asio::io_context context_{1};
  asio::serial_port port_{context_};
  std::unique_ptr<serial_device::Before> before_;  // behind the port: it is given back while open
  DamageMarks marks_;
  std::vector<std::uint8_t> received_;
  std::size_t damaged_ = 0;
  LineState counted_;  ///< what had been counted before it was opened
};

std::error_code AsioSerialPort::Line::open(const std::string& device) {
  auto opened = serial_device::open(port_, device);
  if (!opened) return opened.error();
  before_ = std::move(*opened);
  counted_ = serial_device::lineState(port_).value_or(LineState{});
  return {};
}

std::optional<LineState> AsioSerialPort::Line::state() {
  auto now = serial_device::lineState(port_);
  if (!now) return std::nullopt;
  for (const auto counter :
       {&LineState::framing, &LineState::parity, &LineState::overruns, &LineState::breaks})
    (*now).*counter -= std::min((*now).*counter, counted_.*counter);
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
  // The baud rate comes first: it is what a port may refuse, and then nothing else has changed.
  set(Options::baud_rate(static_cast<unsigned>(settings.baud)));
  if (!serial_device::isPseudoTerminal(port_)) {
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

std::error_code AsioSerialPort::Line::collect(std::chrono::milliseconds limit) {
  const auto waiting = serial_device::waiting(port_);
  if (!waiting) return waiting.error();
  damaged_ += waiting->damaged;
  std::vector<std::uint8_t> bytes(std::min(waiting->bytes, mostReceived - received_.size()));
  if (bytes.empty()) return {};
  std::size_t taken = 0;
  const auto error = complete(limit, [&](auto done) {
    port_.async_read_some(asio::buffer(bytes), [&taken, done](auto end, std::size_t count) mutable {
      taken = count;
      done(end, count);
    });
  });
  if (error && error != asio::error::operation_aborted) return error;
  const auto arrived = std::span(bytes).first(taken);
  if (serial_device::marksDamage) {
    damaged_ += marks_.take(arrived, received_);
  } else {
    received_.insert(received_.end(), arrived.begin(), arrived.end());
  }
  return {};
}

std::error_code AsioSerialPort::Line::clearInput() {
  received_.clear();
  marks_.forget();
  return serial_device::clearInput(port_);
}

AsioSerialPort::AsioSerialPort(ComPorts ports, std::chrono::milliseconds transferLimit)
    : ports_(std::move(ports)), transferLimit_(transferLimit) {}

AsioSerialPort::~AsioSerialPort() = default;

Result<void, std::string> AsioSerialPort::setSettings(std::string_view settings) {
  const auto wanted = parseLineSettings(settings);
  if (!wanted) return tl::unexpected(wanted.error());
  const auto before = std::exchange(settings_, *wanted);
  if (!isOpen()) return {};
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
  left_.clear();
  sharedWith_.clear();
  const std::string device = ports_.device(number_);
  if (device.empty()) {
    return tl::unexpected(
        filled(say("ports", "%1 cannot be opened: %2"),
               {ports_.describe(number_), serial_device::explainNoSimulatedPort(number_)}));
  }
  try {
    auto line = std::make_unique<Line>();
    if (const auto error = line->open(device)) return tl::unexpected(cannotOpen(error));
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
  line_.reset();
}

void AsioSerialPort::collect() {
  if (isOpen()) loseOn(line_->collect(transferLimit_));
}

std::size_t AsioSerialPort::inBufferCount() {
  collect();
  return isOpen() ? line_->received() : 0;
}

void AsioSerialPort::clearInput() {
  left_.clear();
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
  return isOpen() ? line_->takeReceived() : std::exchange(left_, {});
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
  return isOpen() ? serial_device::descriptor(line_->port()) : std::nullopt;
}

void AsioSerialPort::loseOn(const std::error_code& error) {
  if (!error) return;
  lost_ = filled(say("ports",
                     "%1 is gone: it was unplugged or switched off (%2). Connect it and open it "
                     "again."),
                 {ports_.describe(number_), error.message()});
  left_ = line_->takeReceived();
  close();
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
