#pragma once

#include <deque>
#include <memory>
#include <set>
#include <utility>

#include "core/serial_port.h"
#include "serial/commands/debugger_exchange.h"
#include "serial/debugger/console_log.h"
#include "serial/debugger/debugger_port.h"
#include "serial/receiving/receiving_port.h"
#include "serial/recording/recording_ports.h"
#include "tests/doubles/desk.h"

namespace touch::test {

template <typename T>
std::vector<T> operator+(std::vector<T> first, const std::vector<T>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}
inline Bytes times(std::size_t count, const Bytes& bytes) {
  return count == 0 ? Bytes() : bytes + times(count - 1, bytes);
}

/// What a controller sends, and when.
using Incoming = std::vector<std::pair<std::chrono::milliseconds, Bytes>>;

/// Transfers that the test has written down.
class KeptTransfers final : public TransferSource {
 public:
  explicit KeptTransfers(std::vector<Transfer> transfers) : transfers_(std::move(transfers)) {}
  std::optional<Transfer> next() override {
    return next_ == transfers_.size() ? std::nullopt : std::optional(transfers_[next_++]);
  }
  void rewind() override { next_ = 0; }

 private:
  std::vector<Transfer> transfers_;
  std::size_t next_ = 0;
};

/// A serial port that writes what is done with it to the journal.
class ScriptedPort final : public SerialPort {
 public:
  explicit ScriptedPort(Lines& journal) : journal_(journal) {}

  std::set<int> pluggedIn = {1};
  Bytes received;
  Bytes unread;            ///< written, and not looked at by the far end
  std::string impossible;  ///< settings that it does not take
  bool blocked = false;    ///< the line takes no bytes
  std::size_t damaged = 0;

  Result<void, std::string> setSettings(std::string_view settings) override {
    journal_.push_back("settings " + std::string(settings));
    if (settings == impossible) return tl::unexpected(impossible + " is refused");
    return {};
  }
  void selectPort(int number) override { selected_ = number; }
  Result<void, std::string> open() override {
    if (isOpen_) return {};
    if (!pluggedIn.contains(selected_))
      return tl::unexpected(std::string("there is no such device"));
    journal_.push_back("open " + std::to_string(selected_));
    isOpen_ = true;
    return {};
  }
  void close() override {
    if (std::exchange(isOpen_, false)) journal_.push_back("close");
  }
  bool isOpen() const override { return isOpen_; }
  std::optional<std::string> lost() const override { return std::nullopt; }
  std::size_t inBufferCount() override { return received.size(); }
  void clearInput() override {
    journal_.push_back("clear input");
    received.clear();
  }
  void clearOutput() override { journal_.push_back("clear output"); }
  bool write(std::span<const std::uint8_t> bytes) override {
    if (!isOpen_ || blocked) return false;
    unread.insert(unread.end(), bytes.begin(), bytes.end());
    return true;
  }
  std::size_t takeDamaged() override { return std::exchange(damaged, 0); }
  Bytes readAll() override { return std::exchange(received, {}); }

 private:
  Lines& journal_;
  int selected_ = DebuggerPort::startPort;
  bool isOpen_ = false;
};

/// A debugger on a scripted port. While it waits, the far end writes what it has received to the
/// journal, and gives the next answer.
class DebuggerBench : public Desk {
 protected:
  DebuggerBench() {
    clock.onAdvance = [this](auto) { answer(); };
  }

  void TearDown() override {
    port.giveBack();
    Desk::TearDown();
  }

  /// A port that this comes in on from now on, in place of the bench's own.
  ReceivingPort hearing(const Incoming& incoming) {
    // Times count from now on, and not from the first byte.
    std::vector<Transfer> recording = {{{}, Direction::fromController, {}}};
    for (const auto& [time, bytes] : incoming)
      recording.push_back({time, Direction::fromController, bytes});
    replay = std::make_unique<ReplayPort>(std::make_unique<KeptTransfers>(recording), clock);
    replay->open();
    return {*replay, port.gate(), {}};
  }

  std::unique_ptr<ReplayPort> replay;
  std::deque<Bytes> answers;
  Lines wire;  ///< what the far end received, one wait a line

  ScriptedPort serial{journal};
  ConsoleLog log{clock};
  DebuggerPort port{access(), prompt, serial, log};
  DebuggerExchange exchange{access(), prompt, port, log};

  /// What stands in the console.
  Lines console() const {
    Lines shown;
    for (const ConsoleLine& line : log.lines())
      shown.push_back(line.bytes.empty() ? line.text
                                         : (line.kind == ConsoleLineKind::sent ? "> " : "< ") +
                                               hexText(line.bytes));
    return shown;
  }

 private:
  void answer() {
    if (!serial.unread.empty()) {
      wire.push_back(hexText(std::exchange(serial.unread, {})));
      journal.push_back(wire.back());
    }
    if (!serial.isOpen() || answers.empty()) return;
    serial.received = serial.received + answers.front();
    answers.pop_front();
  }
};

}  // namespace touch::test
