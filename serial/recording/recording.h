#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "serial/port/line_settings.h"
#include "support/clock.h"
#include "support/files/whole_file.h"
#include "support/result.h"

namespace touch {

// A recording of what passed a serial port, as text: every byte, in both directions, unfiltered.
// The first line says what it is. Then each line is one transfer in three fields with a blank
// between:
//
//   time        seconds since the recording began, with six decimals; never less than on the line
//   before direction   ">" to the controller, "<" from it bytes       hexadecimal, two digits each,
//   with a blank between; at least one
//
// Empty lines, and what follows a "#", are passed over. Lines end with LF or CR LF.
//
// What the program writes says in comments when it began, on which port and line, which controller
// was chosen, which program wrote it and how true its times are; when the line's settings have
// changed, and where the program was held up and has read late.
//
//   touch recording 1
//   # Started: 2026-11-26T20:15:03.250+01:00
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
/// The most that a recording may hold: 30 hours of an endless stream. More is neither read nor
/// written.
inline constexpr std::size_t largestRecording = std::size_t{1} << 30U;

/// Where transfers come from, one after the other.
class TransferSource {
 public:
  TransferSource() = default;
  TransferSource(const TransferSource&) = delete;
  TransferSource& operator=(const TransferSource&) = delete;
  virtual ~TransferSource() = default;
  /// The next one; none at the end, and when it failed.
  virtual std::optional<Transfer> next() = 0;
  /// Begins anew.
  virtual void rewind() = 0;
  /// The next one is the first that is not before `time`.
  virtual void seek(std::chrono::microseconds time) = 0;
  /// When the last one was, as far as that can be told.
  virtual std::chrono::microseconds length() const = 0;
  /// How the line was set for the one that was taken last, where that is known.
  virtual std::optional<LineSettings> line() const { return std::nullopt; }
  /// Why it failed.
  virtual std::optional<FileError> error() const { return std::nullopt; }
};

/// Takes a recording's lines one after the other.
class RecordingParser {
 public:
  /// `name` is what an error calls the file.
  explicit RecordingParser(std::string name) : name_(std::move(name)) {}
  /// One that begins in the middle of a file: its errors name no line.
  static RecordingParser inside(std::string name);

  /// The transfer of a line, without its end, unless it holds none.
  Result<std::optional<Transfer>> take(std::string_view line);
  /// Whether it is whole when no line follows.
  Status end() const;
  /// An error in the line that follows.
  FileError refuse(std::string expected, std::string found) const;
  /// How the line was set, as far as comments have told.
  const std::optional<LineSettings>& line() const { return line_; }

 private:
  void hear(std::string_view comment);

  std::string name_;
  int lines_ = 0;
  bool counts_ = true;  ///< the lines from the beginning on
  bool headed_ = false;
  std::chrono::microseconds last_{};
  std::optional<LineSettings> line_;
};

/// `name` is what an error calls the file.
Result<std::vector<Transfer>> parseRecording(std::string_view text, const std::string& name);

/// The transfers of a file. It is read while they are taken: however long it is, little of it is in
/// memory, and what is wrong in it is told when it is reached.
class RecordingFile final : public TransferSource {
 public:
  /// Refuses what does not begin as a recording does.
  static Result<std::unique_ptr<RecordingFile>> open(const std::filesystem::path& file);

  std::optional<Transfer> next() override;
  void rewind() override { begin(); }
  /// However long the file is, little of it is read for that.
  void seek(std::chrono::microseconds time) override;
  std::chrono::microseconds length() const override { return length_; }
  std::optional<LineSettings> line() const override {
    return parser_ ? parser_->line() : std::nullopt;
  }
  std::optional<FileError> error() const override { return error_; }

 private:
  explicit RecordingFile(std::filesystem::path path) : path_(std::move(path)) {}
  void begin();
  /// Goes on with the first whole line behind `offset`.
  void goOnAt(std::size_t offset);
  std::chrono::microseconds timeOfTheLast();
  std::optional<Transfer> parse();
  std::optional<std::string_view> nextLine();
  bool readOn();

  std::filesystem::path path_;
  std::optional<FileInPieces> file_;
  std::optional<RecordingParser> parser_;
  std::string text_;               ///< read, and not taken yet
  std::size_t line_ = 0;           ///< where in it the next line begins
  std::optional<Transfer> first_;  ///< was looked at already
  std::optional<FileError> error_;
  std::chrono::microseconds length_{};
};

/// What a recording says of itself in comments below its first line; what is empty it leaves out.
struct RecordingHead {
  std::string started{};  ///< date, time and zone
  std::string port{};
  std::string line{};
  std::string controller{};
  std::string program{};
  std::string times{};  ///< what they are of, and how true
};
/// The time of the machine, as a head has it: "2026-11-26T20:15:03.2504+01:00".
std::string zonedTimeNow();

/// Writes a recording while it happens, so that a crash costs nothing but its last moment.
class Recorder {
 public:
  /// It writes at most `limit` bytes.
  explicit Recorder(std::size_t limit = largestRecording) : limit_(limit) {}

  /// Starts a new recording in `file`; times count from `now`.
  Status start(const std::filesystem::path& file, Clock::TimePoint now,
               const RecordingHead& head = {});
  /// Nothing while off. A recording that cannot be written on, or could not be read again, ends
  /// itself. Bytes that came before the last ones, and are told later, count as come with those.
  void add(Clock::TimePoint time, Direction direction, std::span<const std::uint8_t> bytes);
  /// Writes a comment.
  void remark(Clock::TimePoint now, std::string_view text);
  /// Ends the recording. The error is what has gone wrong since it was started.
  Status stop();
  bool isOn() const { return file_ != nullptr; }

 private:
  void write(std::string_view line);
  void breakOff(std::string expected, std::string found);
  /// Since the start, but never before the line above.
  std::chrono::microseconds lineTime(Clock::TimePoint time) const;

  std::size_t limit_;
  std::size_t written_ = 0;
  File file_;
  std::filesystem::path path_;
  Clock::TimePoint start_{};
  std::chrono::microseconds last_{};  ///< of the last line
  std::optional<FileError> problem_;
};

}  // namespace touch
