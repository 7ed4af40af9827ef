#pragma once

#include <deque>
#include <map>
#include <memory>

#include "serial/asio_serial_port.h"
#include "serial/console_log.h"
#include "serial/debugger_exchange.h"
#include "serial/debugger_port.h"
#include "serial/receiving_port.h"
#include "serial/recording_ports.h"
#include "tests/serial/pseudo_terminal.h"
#include "tests/support/desk.h"

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

/// The real serial port, writing what is done with it to the journal.
class WatchedPort final : public SerialPort {
 public:
  WatchedPort(ComPorts ports, Lines& journal) : port_(std::move(ports)), journal_(journal) {}

  int selected = DebuggerPort::startPort;
  std::size_t unread = 0;  ///< bytes written that the far end has not looked at
  std::string impossible;  ///< settings that it does not take

  std::optional<std::string> setSettings(std::string_view settings) override {
    journal_.push_back("settings " + std::string(settings));
    if (settings == impossible) return impossible + " is refused";
    return port_.setSettings(settings);
  }
  void selectPort(int number) override {
    selected = number;
    port_.selectPort(number);
  }
  std::optional<std::string> open() override {
    if (port_.isOpen()) return std::nullopt;
    auto refused = port_.open();
    if (!refused) journal_.push_back("open " + std::to_string(selected));
    return refused;
  }
  void close() override {
    if (port_.isOpen()) journal_.push_back("close");
    port_.close();
  }
  bool isOpen() const override { return port_.isOpen(); }
  std::optional<std::string> lost() const override { return port_.lost(); }
  std::size_t inBufferCount() override { return port_.inBufferCount(); }
  void clearInput() override {
    journal_.push_back("clear input");
    port_.clearInput();
  }
  void clearOutput() override {
    journal_.push_back("clear output");
    port_.clearOutput();
  }
  void write(std::span<const std::uint8_t> bytes) override {
    port_.write(bytes);
    if (port_.isOpen()) unread += bytes.size();
  }
  Bytes readAll() override { return port_.readAll(); }

 private:
  AsioSerialPort port_;
  Lines& journal_;
};

/// A debugger on real pseudo-terminals behind COM1 and whatever else is plugged in. While it waits, the far end writes
/// what it has received to the journal, with the line's stop bits, and gives the next answer.
class DebuggerBench : public Desk {
 protected:
  DebuggerBench() {
    plugIn(1);
    clock.onAdvance = [this](auto) { answer(); };
  }

  void TearDown() override {
    port.giveBack();
    Desk::TearDown();
  }

  void plugIn(int number) { terminals[number] = std::make_unique<PseudoTerminal>(); }
  PseudoTerminal& terminal() { return *terminals.at(serial.selected); }

  bool pluggedIn(int number) {
    return terminals.contains(number) && terminals[number]->isPluggedIn();
  }

  /// A port that this comes in on from now on, in place of the bench's own.
  ReceivingPort hearing(const Incoming& incoming) {
    std::vector<Transfer> recording;
    for (const auto& [time, bytes] : incoming)
      recording.push_back({time, Direction::fromController, bytes});
    replay = std::make_unique<ReplayPort>(recording, clock);
    replay->open();
    return {*replay, {}, {}};
  }

  std::unique_ptr<ReplayPort> replay;
  std::map<int, std::unique_ptr<PseudoTerminal>> terminals;
  std::deque<Bytes> answers;
  Lines wire;  ///< what the far end received, one wait a line

  WatchedPort serial{comPorts(), journal};
  DebuggerPort port{access(), prompt, serial};
  ConsoleLog log{clock};
  DebuggerExchange exchange{access(), prompt, port, log};

 private:
  ComPorts comPorts() {
    ComPorts ports;
    for (int number = 1; number <= 16; ++number) {
      ports.assignUnlessGiven(number, [this, number]() -> std::string {
        return pluggedIn(number) ? terminals[number]->path() : "/dev/there-is-none";
      });
    }
    return ports;
  }

  void answer() {
    const std::size_t unread = std::exchange(serial.unread, 0);
    if (!pluggedIn(serial.selected)) return;
    if (unread > 0) {
      const bool twoStopBits = (terminal().settings().c_cflag & CSTOPB) != 0;
      wire.push_back(hexText(terminal().receive(unread)));
      journal.push_back(wire.back() + (twoStopBits ? " at 7N2" : ""));
    }
    if (answers.empty()) return;
    terminal().send(answers.front());
    answers.pop_front();
  }
};

}  // namespace touch::test
