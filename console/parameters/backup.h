#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "console/parameters/parameter_words.h"

namespace touch {

/// The folder `backup` in the working folder: the way back from every write to a controller's
/// parameters. It is made when something is first kept in it, and nothing in it is ever overwritten
/// or deleted but the notes of KeptCalibration; any number of programs may keep at once. A folder
/// or a file of these names that is a link or another user's is not used.
///
/// It holds parameter blocks, as ".vrq" files named after the time (UTC) and the controller,
/// "20261231-235959-RS232_DEVICE_1.vrq", and the file "journal.txt": one line for each word that
/// is to be written and one when that has ended, in six fields with a tab between them: time (UTC),
/// controller, address, old word, new word, and how far it got: "begun" before the word is sent,
/// "written" when the new word was read back, "failed" when it was not and the controller may hold
/// either. A "begun" without an end tells of a computer that went down in between.
///
///   2026-12-31T23:59:59Z  RS232 DEVICE 1  03  1A2B  1A2C  begun
///   2026-12-31T23:59:59Z  RS232 DEVICE 1  03  1A2B  1A2C  written
class Backup {
 public:
  using TimePoint = std::chrono::system_clock::time_point;
  using WallClock = std::function<TimePoint()>;

  explicit Backup(const std::filesystem::path& workingFolder,
                  WallClock now = std::chrono::system_clock::now)
      : folder_(workingFolder / "backup"), now_(std::move(now)) {}

  /// Keeps `block` in a new file and returns which.
  Result<std::filesystem::path> keep(const std::string& controller,
                                     const ParameterBlock& block) const;

  enum class Stage { begun, written, failed };
  /// Adds a line to the journal; it is on the disk when this returns without an error.
  [[nodiscard]] Status note(const std::string& controller, const WordChange& change,
                            Stage stage) const;

  /// Why nothing can be kept in the folder that is there. Nothing when there is none yet.
  Status tryOut() const;
  /// The same for the folder that is to be used next; it is made when there is none.
  [[nodiscard]] Status prepare() const;
  std::filesystem::path journalFile() const { return folder_ / journalName; }
  const std::filesystem::path& folder() const { return folder_; }
  /// What stands for a controller in the names of files.
  static std::string fileNamePart(std::string_view controller);

 private:
  static constexpr const char* journalName = "journal.txt";

  std::filesystem::path folder_;
  WallClock now_;
};

}  // namespace touch
