#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace touch {

/// The setting of every controller but those that still speak 7 data bits, 2 stop bits.
inline constexpr std::string_view normalLineSettings = "9600,n,8,1";

/// What went wrong on a line since the port was opened.
struct LineFaults {
  std::uint64_t framing = 0;
  std::uint64_t parity = 0;
  std::uint64_t overruns = 0;
  std::uint64_t breaks = 0;
};
/// The plug's wires beside those for bytes.
struct LineState {
  bool cts = false;
  bool dsr = false;
  bool dcd = false;
  bool ri = false;
  std::optional<LineFaults> faults{};  ///< nothing where the driver does not count them
};
/// What this end can switch: two of the wires, and the break, which holds the line for bytes.
enum class LineSwitch : std::uint8_t { dtr, rts, holdBreak };

/// So many bytes that were taken off the line together, and when.
struct ReadPart {
  std::chrono::steady_clock::time_point time;
  std::size_t bytes = 0;
};

/// One serial port at a time, chosen by its COM port number; closed on destruction.
/// A port that goes away while open closes itself: writing and reading then do nothing, and
/// `lost()` says so.
class SerialPort {
 public:
  SerialPort() = default;
  SerialPort(const SerialPort&) = delete;
  SerialPort& operator=(const SerialPort&) = delete;
  virtual ~SerialPort() = default;

  /// "baud,parity,data bits,stop bits", e.g. "9600,n,8,1"; applied at once when the port is open.
  virtual Result<void, std::string> setSettings(std::string_view settings) = 0;
  /// Chooses COM port `number`, counted from 1. Only while closed.
  virtual void selectPort(int number) = 0;
  /// The error says why the port cannot be opened and what to do about it.
  virtual Result<void, std::string> open() = 0;
  virtual void close() = 0;
  virtual bool isOpen() const = 0;
  /// Who else had the port open when it was last opened and takes bytes that are for this program,
  /// as a sentence; empty when nobody is known.
  virtual std::string sharedWith() const { return {}; }
  /// The reason why the port closed by itself since it was last opened.
  virtual std::optional<std::string> lost() const = 0;

  virtual std::size_t inBufferCount() = 0;  ///< bytes waiting to be read
  virtual void clearInput() = 0;
  virtual void clearOutput() = 0;
  /// False when they did not go out: the port is closed or gone, or the line did not take them in
  /// time. What it has not taken is thrown away.
  virtual bool write(std::span<const std::uint8_t> bytes) = 0;
  virtual std::vector<std::uint8_t> readAll() = 0;  ///< every byte that has arrived
  /// What the last readAll is made of, in order; nothing where the port does not tell.
  virtual std::vector<ReadPart> readParts() const { return {}; }
  /// How many of the bytes read since it was asked last came damaged over the line: with a wrong
  /// parity or without a stop bit, or a break in place of a byte.
  virtual std::size_t takeDamaged() { return 0; }

  /// Nothing where the device has no such wires, and while closed.
  virtual std::optional<LineState> lineState() { return std::nullopt; }
  /// False when nothing was switched: the device has no such wire, or the port is closed.
  virtual bool switchLine(LineSwitch /*which*/, bool /*on*/) { return false; }

  /// What a window's event loop can wait on for something to come in or the device to go, as a file
  /// descriptor; nothing where the platform has no such thing, and while closed.
  virtual std::optional<int> descriptor() const { return std::nullopt; }
};

}  // namespace touch
