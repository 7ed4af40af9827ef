#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "reports/raw_counts.h"
#include "reports/report_format.h"

namespace touch {

// Touch reports as controllers stream them over the serial line, found by their status byte. Two
// families, chosen by the active command set.
//
// Tablet packets, 5 bytes: the status byte and four bytes of 7 bits.
//
//   status byte   the panel is   X                Y
//   D8, D9        touched        b1 + 128 * b2    b3 + 128 * b4
//   98, 99        released       the same
//   C8, C9        touched        128 * b1 + b2    128 * b3 + b4
//   88            released       the same
//
// A byte above 7F among the four means that a byte was lost: the status byte then starts no packet.
//
// E02 packets, 10 bytes: "U", "T", 84 when released and anything else when touched, X and Y of 16
// bits each, low byte first, three more bytes.
//
// The formats of "zevrik.fmt" are known beside those of either family, which come first.
enum class ReportFamily : std::uint8_t { tablet, e02 };

/// How the controllers of a command set report.
constexpr ReportFamily familyOf(CommandSet set) {
  return set == CommandSet::e02 ? ReportFamily::e02 : ReportFamily::tablet;
}
/// How long the family's packets are, in bytes.
constexpr std::size_t packetLength(ReportFamily family) {
  return family == ReportFamily::e02 ? 10 : 5;
}

/// The built-in format that has this status byte: "tablet" or "E02"; empty when none has.
std::string_view builtInFormat(std::uint8_t status);

/// One touch report and where its packet lies.
struct TouchReport {
  std::uint64_t offset = 0;  ///< of its first byte, counted from the stream's first byte
  RawCounts x;
  RawCounts y;
  RawCounts greatest;       ///< that x and y can be
  std::uint8_t length = 0;  ///< of its packet, in bytes
  bool touching = false;    ///< false: the pen is lifted here
  friend bool operator==(const TouchReport&, const TouchReport&) = default;
};

/// Finds touch reports in a stream that comes in pieces of any size. What the pieces are makes no
/// difference to what is found. Bytes that start no packet are dropped one at a time. A packet
/// whose end has not come yet waits for it, but an E02 packet only for its coordinates.
class ReportDecoder {
 public:
  /// How many bytes can wait to be decoded.
  static constexpr std::size_t capacity = 5000;

  explicit ReportDecoder(ReportFamily family, std::span<const ReportFormat> added = {});

  /// Takes bytes until `capacity` wait. Returns how many it took.
  std::size_t append(std::span<const std::uint8_t> bytes);
  /// Appends the reports in what waits to `reports`. Only a packet's beginning waits then.
  void decode(std::vector<TouchReport>& reports);
  /// Both, for any number of bytes: none is lost.
  void feed(std::span<const std::uint8_t> bytes, std::vector<TouchReport>& reports);
  /// Drops what waits: it belongs to no packet.
  void reset() {
    decided_ += held_;
    stray_ += held_;
    held_ = owed_ = 0;
  }
  /// What the byte at `place` of a packet that begins with `first` holds.
  enum class Part : std::uint8_t { state, xLow, xHigh, yLow, yHigh, other };
  Part partAt(std::uint8_t first, std::size_t place) const;
  /// Counts bytes of the stream that are not to be decoded; they interrupt what came before them.
  void passOver(std::size_t count) {
    reset();
    decided_ += count;
  }

  /// Bytes that wait to be decoded.
  std::size_t pending() const { return held_; }
  /// Bytes that have been taken so far: the offset of the next one.
  std::uint64_t received() const { return decided_ + pending(); }
  /// All bytes before this offset either belong to a report or do not.
  std::uint64_t decided() const { return decided_; }
  /// Bytes that were decoded and belong to no packet, so far.
  std::uint64_t strayBytes() const { return stray_; }

 private:
  /// How a packet with a certain first byte is read. Places are counted from that byte.
  struct Kind {
    std::uint8_t length = 0;  ///< 0: no packet starts so
    std::uint8_t needed = 0;  ///< bytes that must be there
    std::uint8_t second = 0;  ///< the second byte, where it must be a certain one
    std::uint8_t xLow = 0;
    std::uint8_t xHigh = 0;
    std::uint8_t yLow = 0;
    std::uint8_t yHigh = 0;
    std::uint8_t lowBits = 0;    ///< how many bits a low byte has
    std::uint8_t clearBits = 0;  ///< those that no coordinate byte has
    std::uint8_t liftPlace = 0;
    std::uint8_t lift = 0;  ///< the value at liftPlace that says that the pen is lifted
    RawCounts greatest;

    /// Whether a packet lies here, where its first byte and `needed` bytes do.
    bool isAt(const std::uint8_t* packet) const {
      return length != 0 && (second == 0 || packet[1] == second) &&
             ((packet[xLow] | packet[xHigh] | packet[yLow] | packet[yHigh]) & clearBits) == 0;
    }
    /// Whether more bytes than the `held` ones are needed to tell.
    bool beginsAt(const std::uint8_t* packet, std::size_t held) const {
      return held < needed && (second == 0 || held == 1 || packet[1] == second);
    }
    TouchReport report(const std::uint8_t* packet, std::uint64_t offset) const {
      return {
          offset, both(packet[xHigh], packet[xLow]), both(packet[yHigh], packet[yLow]), greatest,
          length, packet[liftPlace] != lift};
    }
    RawCounts both(unsigned high, unsigned low) const {
      return {static_cast<std::uint16_t>(high << lowBits | low)};
    }
  };

  void know(const ReportFormat& format);
  /// Passes over what is still to come of a packet that is already reported; returns how many.
  std::size_t passOwed(std::size_t count);
  /// Appends the reports in `bytes`, which follow on the decided ones, and returns how many of them
  /// are decided now. Only a packet's beginning is left.
  std::size_t find(std::span<const std::uint8_t> bytes, std::vector<TouchReport>& reports);

  std::array<Kind, 256> kinds_{};  ///< by first byte
  std::array<std::uint8_t, capacity> bytes_{};
  std::size_t held_ = 0;  ///< how many of them wait to be decoded
  std::size_t owed_ = 0;  ///< bytes still to come of a packet that is already reported
  std::uint64_t decided_ = 0;
  std::uint64_t stray_ = 0;
};

}  // namespace touch
