#pragma once

#include <string>
#include <vector>

#include "console/parameters/backup.h"
#include "console/pins/sensor_pins.h"
#include "core/session.h"
#include "support/notice.h"

namespace touch {

class Prompt;

/// The pin definition dialog without its window: the definition that the user makes, what is wrong
/// with it, and the way back. Each action answers with one line for the user.
class PinEditor {
 public:
  PinEditor(const Access& access, Prompt& prompt, Backup backup)
      : access_(access), prompt_(prompt), backup_(std::move(backup)) {
    setType(SensorType::fourWire);
    settle();
  }

  const PinDefinition& definition() const { return definition_; }
  /// Another number of wires: those that both types have keep their pins.
  void setType(SensorType type);
  /// `wire` by its place in wireNames().
  void assign(std::size_t wire, PinAssignment pins) { definition_.wires.at(wire) = pins; }
  std::vector<PinProblem> problems() const;

  /// The definition differs from that of the controller: reading would lose what the user made.
  bool isEdited() const { return definition_ != known_; }
  /// Whose pins they are; empty before the first reading.
  const std::string& controller() const { return controller_; }

  /// Asks first when the user's own definition would be lost.
  Notice read();
  Notice update();
  Notice putBack();
  bool canPutBack() const { return !old_.empty(); }

 private:
  Notice outcome(const PinsWrite& write);
  /// The definition is what the controller holds.
  void settle() { known_ = definition_; }
  /// Keeps words that are to be put back; of two for the same address the first is the one from
  /// before all updates.
  void remember(const std::vector<WordValue>& before);
  /// The error says why nothing may be written now.
  Result<void, std::string> mayWrite() const;

  Access access_;
  Prompt& prompt_;
  Backup backup_;
  PinDefinition definition_;
  PinDefinition known_;     ///< as last read or written
  std::string controller_;  ///< whose pins they are
  std::vector<WordValue> old_;
};

}  // namespace touch
