#pragma once

#include "serial/commands/debugger_exchange.h"
#include "serial/debugger/console_log.h"
#include "serial/debugger/debugger_port.h"
#include "serial/receiving/receiving_port.h"
#include "serial/recording/recording_ports.h"
#include "tests/doubles/desk.h"
#include "tests/doubles/fake_port.h"

namespace touch::test {

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
  void seek(std::chrono::microseconds time) override {
    for (next_ = 0; next_ < transfers_.size() && transfers_[next_].time < time;)
      ++next_;
  }
  std::chrono::microseconds length() const override {
    return transfers_.empty() ? std::chrono::microseconds(0) : transfers_.back().time;
  }

 private:
  std::vector<Transfer> transfers_;
  std::size_t next_ = 0;
};

/// A debugger on a port that is not there.
class DebuggerBench : public Desk {
 protected:
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
  FakePort serial{journal};
  ConsoleLog log{clock};
  DebuggerPort port{access(), prompt, serial, log};
  DebuggerExchange exchange{access(), prompt, port, log};

  /// What the far end received.
  Lines sent() const { return matching(journal, "^[0-9A-F]{2}( |$)"); }
  /// What stands in the console.
  Lines console() const {
    Lines shown;
    for (const ConsoleLine& line : log.lines())
      shown.push_back(line.bytes.empty() ? line.text
                                         : (line.kind == ConsoleLineKind::sent ? "> " : "< ") +
                                               hexText(line.bytes));
    return shown;
  }
};

}  // namespace touch::test
