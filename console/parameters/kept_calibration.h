#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "calibration/check.h"
#include "console/parameters/backup.h"
#include "console/parameters/parameter_words.h"
#include "core/session.h"

namespace touch {

class Prompt;

/// What a note in the folder `backup` says of a calibration that is not checked yet. It is text:
/// the controller's name in the first line, then the eight words of the block before the
/// calibration and, once putting back has begun, those of the block after it, one a line, of four
/// hexadecimal digits. The file is called "unchecked-RS232_DEVICE_1.txt", written whole before the
/// calibration and again before the first word is put back, and removed when one of the two blocks
/// is settled on. One that is there at the start of a program tells that the computer or the
/// program went down in between.
struct UncheckedCalibration {
  std::string controller;
  ParameterBlock before{};
  std::optional<ParameterBlock> after;
  friend bool operator==(const UncheckedCalibration&, const UncheckedCalibration&) = default;
};

std::string uncheckedText(const UncheckedCalibration& unchecked);
/// `name` is what an error calls the file.
Result<UncheckedCalibration> parseUnchecked(std::string_view text, const std::string& name);

/// The parameter block from before a calibration, which is written back when the calibration turns
/// out bad.
class KeptCalibration final : public WayBack {
 public:
  /// Reads the controller's block, and keeps it as a backup file and as a note. A block that no
  /// file takes is kept as long as this lives.
  KeptCalibration(const Access& access, Backup backup);
  KeptCalibration(const Access& access, Backup backup, UncheckedCalibration unchecked)
      : access_(access), backup_(std::move(backup)), kept_(std::move(unchecked)) {}
  /// There is none to put back.
  KeptCalibration(const Access& access, Backup backup, std::string whyNone)
      : access_(access), backup_(std::move(backup)), whyNone_(std::move(whyNone)) {}
  /// What an earlier run has left of the session's controller; nothing when there is no note.
  static Result<std::unique_ptr<KeptCalibration>> leftBehind(const Access& access, Backup backup);

  std::string whyNone() const override { return whyNone_; }
  Notice putBack() override;
  Status settle() override;

  enum class InForce : std::uint8_t { before, after, neither, unknown };
  /// Reads the controller and compares.
  InForce inForce() const;

 private:
  void mind(const FileError& error);
  [[nodiscard]] Status note() const;
  /// `now` is what the controller holds. Returns at which word it broke off.
  std::optional<WordError> writeBack(const ParameterBlock& now);
  InForce compare(const Result<ParameterBlock, WordError>& block) const;

  Access access_;
  Backup backup_;
  UncheckedCalibration kept_;
  std::string whyNone_;
  std::optional<FileError> trouble_;  ///< the first file that could not be written
};

/// "The calibration from before is in force."
std::string describe(KeptCalibration::InForce inForce);

/// For a check that no calibration has gone before: what an earlier run has left, or that there is
/// nothing.
std::unique_ptr<WayBack> wayBackLeft(const Access& access, const Backup& backup);

/// For a calibration that nobody checks: what was noted before holds no longer.
Status dropUnchecked(const std::string& controller, const Backup& backup);

/// Where an earlier run ended between a calibration and the end of its check: says which block is
/// in force, and offers the one from before. Nothing when there is nothing to say.
std::optional<Notice> settleUnchecked(const Access& access, Prompt& prompt, const Backup& backup);

}  // namespace touch
