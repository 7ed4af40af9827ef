#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "reports/report_decoder.h"

namespace touch::bench {

// What the report decoder is compared with: state machines that look at one byte after the other.
// They find the same reports.

class TabletMachine {
 public:
  void feed(std::span<const std::uint8_t> bytes, std::vector<TouchReport>& reports) {
    for (const std::uint8_t byte : bytes)
      take(byte, reports);
  }

 private:
  enum class State : std::uint8_t { status, first, second, third, fourth };

  void take(std::uint8_t byte, std::vector<TouchReport>& reports) {
    ++offset_;
    // A byte was lost: this one may start the next packet.
    if (byte > 0x7F) state_ = State::status;
    switch (state_) {
      case State::status:
        begin(byte);
        return;
      case State::first:
        bytes_[0] = byte;
        state_ = State::second;
        return;
      case State::second:
        bytes_[1] = byte;
        state_ = State::third;
        return;
      case State::third:
        bytes_[2] = byte;
        state_ = State::fourth;
        return;
      case State::fourth:
        reports.push_back({offset_ - 5, coordinate(bytes_[0], bytes_[1]),
                           coordinate(bytes_[2], byte), 0x3FFF, 5, touching_});
        state_ = State::status;
        return;
    }
  }

  void begin(std::uint8_t status) {
    switch (status) {
      case 0xD8:
      case 0xD9:
        return begin(true, false);
      case 0x98:
      case 0x99:
        return begin(false, false);
      case 0xC8:
      case 0xC9:
        return begin(true, true);
      case 0x88:
        return begin(false, true);
      default:
        return;
    }
  }
  void begin(bool touching, bool highFirst) {
    touching_ = touching;
    highFirst_ = highFirst;
    state_ = State::first;
  }

  std::uint16_t coordinate(unsigned first, unsigned second) const {
    return static_cast<std::uint16_t>(highFirst_ ? first << 7U | second : second << 7U | first);
  }

  State state_ = State::status;
  bool touching_ = false;
  bool highFirst_ = false;
  std::array<std::uint8_t, 3> bytes_{};
  std::uint64_t offset_ = 0;
};

class E02Machine {
 public:
  void feed(std::span<const std::uint8_t> bytes, std::vector<TouchReport>& reports) {
    for (const std::uint8_t byte : bytes)
      take(byte, reports);
  }

 private:
  void take(std::uint8_t byte, std::vector<TouchReport>& reports) {
    ++offset_;
    switch (place_) {
      case 0:
        if (byte == 'U') place_ = 1;
        return;
      case 1:
        place_ = byte == 'T' ? 2 : byte == 'U' ? 1 : 0;
        return;
      case 2:
        touching_ = byte != 0x84;
        place_ = 3;
        return;
      case 3:
        x_ = byte;
        place_ = 4;
        return;
      case 4:
        x_ = static_cast<std::uint16_t>(byte << 8 | x_);
        place_ = 5;
        return;
      case 5:
        y_ = byte;
        place_ = 6;
        return;
      case 6:
        y_ = static_cast<std::uint16_t>(byte << 8 | y_);
        reports.push_back({offset_ - 7, x_, y_, 0xFFFF, 10, touching_});
        place_ = 7;
        return;
      case 7:
      case 8:
        ++place_;
        return;
      default:
        place_ = 0;
        return;
    }
  }

  int place_ = 0;
  bool touching_ = false;
  std::uint16_t x_ = 0;
  std::uint16_t y_ = 0;
  std::uint64_t offset_ = 0;
};

}  // namespace touch::bench
