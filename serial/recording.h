#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/clock.h"
#include "core/result.h"

namespace touch {

// A recording of what passed a serial port, as text: every byte, in both directions, unfiltered. The
// first line says what it is. Then each line is one transfer in three fields with a blank between:
//
//   time        seconds since the recording began, with six decimals; never less than on the line before
//   direction   ">" to the controller, "<" from it
//   bytes       hexadecimal, two digits each, with a blank between; at least one
//
// Empty lines, and what follows a "#", are passed over. Lines end with LF or CR LF.
//
//   touch recording 1
//   0.000000 > 01 55 54 0D
//   0.104250 < 01 51 52 4D 56 30 33 30 31 0D
//   3.250000 < D8 10 20 30 01   # the first touch

enum class Direction : std::uint8_t { toController, fromController };

/// Bytes that passed the port in one go.
struct Transfer {
  std::chrono::microseconds time{};  ///< since the recording began
  Direction direction = Direction::fromController;
  std::vector<std::uint8_t> bytes;
  friend bool operator==(const Transfer&, const Transfer&) = default;
};

/// The line of a recording, without its end.
std::string recordingLine(const Transfer& transfer);
/// `name` is what an error calls the file.
Result<std::vector<Transfer>, FileError> parseRecording(std::string_view text,
                                                        const std::string& name);
/// The transfers of a recording of at most 64 MiB.
Result<std::vector<Transfer>, FileError> readRecording(const std::filesystem::path& file);

/// Writes a recording while it happens, so that a crash costs nothing but its last moment.
class Recorder {
 public:
  /// Starts a new recording in `file`; times count from `now`. Returns why it cannot be written.
  std::optional<FileError> start(const std::filesystem::path& file, Clock::TimePoint now);
  /// Nothing while off. A recording that cannot be written on ends itself.
  void add(Clock::TimePoint now, Direction direction, std::span<const std::uint8_t> bytes);
  /// Ends the recording; returns what has gone wrong since it was started.
  std::optional<FileError> stop();
  bool isOn() const { return file_.is_open(); }

 private:
  void write(std::string_view line);

  std::ofstream file_;
  std::filesystem::path path_;
  Clock::TimePoint start_{};
  std::optional<FileError> problem_;
};

}  // namespace touch
