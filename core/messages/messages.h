#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>

#include "support/result.h"

namespace touch {

/// What the main window shows: a fixed text, which is not the program's own version.
inline constexpr std::string_view versionText = "Version :  3.1.0";

/// The texts that the system addresses by number, named for what they are for.
enum class Message : std::uint8_t {
  noDevice = 0,
  openError = 1,
  passwordError = 2,
  valueTooLarge = 3,
  areYouSure = 4,
  writeOk = 5,
  updateOk = 6,
  updateError = 7,
  restoreOk = 8,
  restoreError = 9,
  resetOk = 10,
  resetError = 11,
  releaseQuestion = 12,
  releaseWarning = 13,
  rawCalibrationError = 16,
  wrongPosition = 17,
  extendedCalibrationError = 18,
  twoPointTitle = 19,
  calibrationError = 20,
  updatePinsQuestion = 25,
  sensorTypeError = 26,
  pinsUpdated = 27,
  disconnectSensor = 28,
  settingOk = 32,
  settingError = 33,
};

/// 101 texts, numbered from 0; the last one is always empty.
class MessageTable {
 public:
  /// The built-in texts.
  MessageTable();

  const std::string& operator[](Message number) const {
    return texts_[static_cast<std::size_t>(number)];
  }
  /// `number` from 0 to 100.
  const std::string& at(std::size_t number) const { return texts_.at(number); }

 private:
  friend Result<MessageTable> parseMessages(std::istream& file, const std::string& name);
  std::array<std::string, 101> texts_;
};

/// The first 100 lines of `file` replace the whole table. UTF-8 where they are valid UTF-8, else
/// Latin-1; the texts in the table are UTF-8 either way. `name` is what an error calls the file.
Result<MessageTable> parseMessages(std::istream& file, const std::string& name);

/// The texts of "errmsg.txt" in `folder`; without that file, the built-in ones.
Result<MessageTable> loadMessages(const std::filesystem::path& folder);

}  // namespace touch
