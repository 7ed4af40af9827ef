#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/session.h"
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
  std::uint16_t x = 0;       ///< in the controller's counts, from 0 to `greatest`
  std::uint16_t y = 0;
  std::uint16_t greatest = 0;
  std::uint8_t length = 0;  ///< of its packet, in bytes
  bool touching = false;    ///< false: the pen is lifted here
  friend bool operator==(const TouchReport&, const TouchReport&) = default;
};

/// Finds touch reports in a stream that comes in pieces of any size. What the pieces are makes no
/// difference to what is found. Bytes that start no packet are dropped one at a time. A packet
/// whose end has not come yet waits for it, but an E02 packet only for its coordinates.
class ReportDecoder {
 public:
  /// The ring's entries. One is always free, so it holds up to one byte less.
  static constexpr std::size_t ringSize = 5001;

  explicit ReportDecoder(ReportFamily family, std::span<const ReportFormat> added = {});

  /// Puts bytes in the ring until it is full. Returns how many it took.
  std::size_t append(std::span<const std::uint8_t> bytes);
  /// Appends the reports in the ring to `reports`, and frees the ring but for a packet's beginning.
  void decode(std::vector<TouchReport>& reports);
  /// Both, for any number of bytes: none is lost, however small the ring.
  void feed(std::span<const std::uint8_t> bytes, std::vector<TouchReport>& reports);
  /// Empties the ring: what lay in it belongs to no packet.
  void reset();
  /// What the byte at `place` of a packet that begins with `first` holds.
  enum class Part : std::uint8_t { state, xLow, xHigh, yLow, yHigh, other };
  Part partAt(std::uint8_t first, std::size_t place) const;
  /// Counts bytes of the stream that are not to be decoded; they interrupt what came before them.
  void passOver(std::size_t count);

  /// Bytes in the ring.
  std::size_t pending() const {
    return write_ >= read_ ? write_ - read_ : write_ + ringSize - read_;
  }
  /// Bytes that have been taken so far: the offset of the next one.
  std::uint64_t received() const { return decided_ + pending(); }
  /// All bytes before this offset either belong to a report or do not.
  std::uint64_t decided() const { return decided_; }
  /// Bytes that were decoded and belong to no packet, so far.
  std::uint64_t strayBytes() const { return stray_; }

 private:
  static constexpr std::size_t longestPacket = 64;

  /// How a packet with a certain first byte is read. Places are counted from that byte.
  struct Kind {
    std::uint8_t length = 0;  ///< 0: no packet starts so
    std::uint8_t needed = 0;  ///< bytes that must be there
    std::uint8_t second = 0;  ///< the second byte, where it must be a certain one
    std::uint8_t x = 0;
    std::uint8_t y = 0;
    std::uint8_t liftPlace = 0;
    std::uint8_t lift = 0;       ///< the value at liftPlace that says that the pen is lifted
    std::uint8_t clearBits = 0;  ///< those that no coordinate byte has
    std::uint16_t greatest = 0;
    std::uint16_t firstWeight = 0;
    std::uint16_t secondWeight = 0;
  };

  void know(const ReportFormat& format);

  std::array<Kind, 256> kinds_{};  ///< by first byte
  /// Behind the ring its first bytes stand again, so that every packet lies in one piece.
  std::array<std::uint8_t, ringSize + longestPacket> ring_{};
  std::size_t read_ = 0;
  std::size_t write_ = 0;
  std::size_t owed_ = 0;  ///< bytes still to come of a packet that is already reported
  std::uint64_t decided_ = 0;
  std::uint64_t stray_ = 0;
};

}  // namespace touch
