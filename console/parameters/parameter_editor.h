#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "console/maintenance/maintenance.h"
#include "console/parameters/backup.h"
#include "console/parameters/parameter_block.h"
#include "console/parameters/parameter_table.h"
#include "core/session.h"
#include "support/notice.h"

namespace touch {

class Prompt;

/// What the pages "Parameters" and "Maintenance" do with the parameter block without their windows.
/// Each action answers with one line for the user; what needs more words is shown by the prompt.
class ParameterEditor {
 public:
  ParameterEditor(const Access& access, Prompt& prompt, Backup backup)
      : access_(access), prompt_(prompt), backup_(std::move(backup)) {}

  ParameterTable& table() { return table_; }
  const ParameterTable& table() const { return table_; }

  /// Another controller is the current one: nothing that was read or typed is its own.
  void forget();
  /// The controller has another calibration: nothing that was read still holds, and undoing would
  /// destroy what has come since.
  void calibrated();

  Notice read();
  Notice write();
  Notice undo();
  bool canUndo() const { return !undo_.empty(); }

  Notice load(const std::filesystem::path& file);
  Notice save(const std::filesystem::path& file) const;
  /// The differences, one a line, shown by the prompt.
  Notice compare(const std::filesystem::path& file) const;

  /// "Defaults"; the way back is then `undo()`, also after a second time: to what was there before
  /// the first.
  Notice restoreDefaults();
  /// "Reset"
  Notice reset();

  /// The word at address 01 as last read.
  std::optional<ParameterWord> parameter01() const;

 private:
  /// Adds to `outcome` that the controller does not let itself be read, if so: then nobody knows
  /// what it holds.
  Notice andReadAgain(Notice outcome);
  Notice outcome(const BlockWrite& write, const std::string& done) const;

  Access access_;
  Prompt& prompt_;
  Backup backup_;
  ParameterTable table_;
  std::vector<WordValue> undo_;
  bool undoesDefaults_ = false;
};

}  // namespace touch
