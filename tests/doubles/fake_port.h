#pragma once

#include "core/serial_port.h"
#include "support/text/hex.h"
#include "tests/doubles/test.h"

namespace touch::test {

/// A serial port that writes what is done with it to the journal, bytes in hexadecimal. At its far
/// end each write is answered at once.
class FakePort final : public SerialPort {
 public:
  explicit FakePort(Lines& journal, std::set<int> ports = {1})
      : present(std::move(ports)), journal_(journal) {}

  std::set<int> present;                 ///< the machine's ports
  std::deque<Bytes> answers;             ///< to the next writes, one each
  std::map<std::string, Bytes> replies;  ///< to all others, by port and command: "5 UT"
  Bytes received;
  std::vector<ReadPart> parts;  ///< that these are made of; empty: nobody knows
  std::string impossible;       ///< settings that it does not take
  bool blocked = false;         ///< the line takes no bytes
  std::size_t damaged = 0;
  std::optional<LineState> state;  ///< nothing: it has no wires but those for bytes

  Result<void, std::string> setSettings(std::string_view settings) override {
    journal_.push_back("settings " + std::string(settings));
    if (settings == impossible) return tl::unexpected(impossible + " is refused");
    return {};
  }
  void selectPort(int number) override {
    EXPECT_FALSE(open_) << "chosen while open";
    number_ = number;
  }
  Result<void, std::string> open() override {
    if (open_) return {};
    open_ = present.contains(number_);
    if (!open_) return tl::unexpected("there is no COM" + std::to_string(number_));
    lost_.reset();
    journal_.push_back("open " + std::to_string(number_));
    return {};
  }
  void close() override {
    if (std::exchange(open_, false)) journal_.push_back("close");
  }
  bool isOpen() const override { return open_; }
  std::optional<std::string> lost() const override { return lost_; }
  /// Its device goes, and is there again at once.
  void unplug() {
    close();
    lost_ = "COM" + std::to_string(number_) + " is gone";
  }
  std::size_t inBufferCount() override { return received.size(); }
  void clearInput() override {
    journal_.push_back("clear input");
    received.clear();
  }
  void clearOutput() override { journal_.push_back("clear output"); }
  bool write(std::span<const std::uint8_t> bytes) override {
    if (!open_ || blocked) return false;
    std::string line;
    for (const std::uint8_t byte : bytes)
      line += (line.empty() ? "" : " ") + hexByte(byte);
    journal_.push_back(line);
    if (answers.empty()) {
      const std::string frame(bytes.begin(), bytes.end());
      received = received + replies[std::to_string(number_) + ' ' +
                                    frame.substr(1, std::max<std::size_t>(frame.size(), 2) - 2)];
    } else {
      received = received + answers.front();
      answers.pop_front();
    }
    return true;
  }
  std::optional<LineState> lineState() override { return state; }
  bool switchLine(LineSwitch which, bool on) override {
    constexpr std::array names = {"DTR", "RTS", "break"};
    journal_.push_back(names.at(static_cast<std::size_t>(which)) +
                       std::string(on ? " on" : " off"));
    return state.has_value();
  }
  std::size_t takeDamaged() override { return std::exchange(damaged, 0); }
  Bytes readAll() override {
    readParts_ = std::exchange(parts, {});
    return std::exchange(received, {});
  }
  std::vector<ReadPart> readParts() const override { return readParts_; }

 private:
  Lines& journal_;
  int number_ = 1;
  bool open_ = false;
  std::optional<std::string> lost_;
  std::vector<ReadPart> readParts_;
};

}  // namespace touch::test
