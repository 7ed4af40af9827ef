#pragma once

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/serial_port.h"
#include "tests/doubles/recording_script.h"

namespace touch::test {

/// Writes what is done with it to the journal; on each port a controller answers as the replies
/// say.
class FakePorts final : public SerialPort {
 public:
  explicit FakePorts(std::vector<std::string>& journal) : journal_(journal) {}

  std::set<int> present;
  std::map<std::string, Bytes> replies;  ///< by port and command: "5 UT"

  Result<void, std::string> setSettings(std::string_view settings) override {
    journal_.push_back("settings " + std::string(settings));
    return {};
  }
  void selectPort(int number) override {
    EXPECT_FALSE(open_) << "chosen while open";
    number_ = number;
  }
  Result<void, std::string> open() override {
    journal_.push_back("open " + std::to_string(number_));
    open_ = present.contains(number_);
    if (!open_) return tl::unexpected(std::string("absent"));
    return {};
  }
  void close() override {
    if (open_) journal_.push_back("close");
    open_ = false;
  }
  bool isOpen() const override { return open_; }
  std::optional<std::string> lost() const override { return std::nullopt; }
  std::size_t inBufferCount() override { return pending_.size(); }
  void clearInput() override {}
  void clearOutput() override {}
  bool write(std::span<const std::uint8_t> bytes) override {
    const std::string frame(bytes.begin(), bytes.end());
    journal_.push_back("write " + frame);
    pending_ = replies[std::to_string(number_) + ' ' + frame.substr(1, frame.size() - 2)];
    return true;
  }
  Bytes readAll() override { return std::exchange(pending_, {}); }

 private:
  std::vector<std::string>& journal_;
  int number_ = 0;
  bool open_ = false;
  Bytes pending_;
};

}  // namespace touch::test
