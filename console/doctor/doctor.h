#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/driver/bound_driver.h"
#include "core/session.h"
#include "ports/com_ports.h"

namespace touch {

/// `note`: worth knowing, and nothing that keeps the program from its work.
enum class FindingState : std::uint8_t { ok, note, problem };

/// What the program itself can do about a finding.
enum class Mend : std::uint8_t { none, askAgain, searchPorts };

/// One thing that was looked at.
struct Finding {
  FindingState state = FindingState::ok;
  std::string_view
      topic;  ///< "library", "controllers", "ports", "folder", "screens", "files", "versions"
  std::string what;
  std::string why;       ///< why it matters; may be empty
  std::string nextStep;  ///< may be empty
  Mend mend = Mend::none;
};

/// A controller that the driver knows of and this system serves.
struct ExaminedController {
  std::string name;
  bool answers = false;
};

struct Diagnosis {
  std::vector<Finding> findings;  ///< problems first, then notes; each in the order of the topics
  std::vector<ExaminedController> controllers;
  bool complete = true;  ///< false: no controller was asked, and nothing was written

  std::size_t count(FindingState state) const;
  bool controllerAnswers() const;
};

/// A screen as its user has set it up.
struct ExaminedScreen {
  std::string name;
  int width = 0;    ///< pixels
  int height = 0;   ///< pixels
  int scale = 100;  ///< percent
};

/// What the doctor is to look at.
struct Patient {
  std::optional<Access> access{};      ///< nothing: no library is bound
  std::filesystem::path driverPath{};  ///< of the library that is bound
  bool simulated = false;              ///< that library is the simulated driver, or was to be
  std::optional<BindError> refused{};  ///< why the library that was wanted is not bound
  ComPorts ports{};
  std::filesystem::path workFolder{};
  std::optional<std::vector<ExaminedScreen>> screens{};  ///< nothing: the program has no display
  std::vector<std::string> versions{};  ///< of the program and of what it stands on
};

/// Told what is looked at next.
using DoctorProgress = std::function<void(const std::string& what)>;

/// Whether files can be made in the working folder. It may be anybody's: what is planted there
/// under the name of the file that is tried is neither followed nor removed.
Result<void, std::string> tryOutWorkFolder(const std::filesystem::path& path);

/// Looks at what can be seen without asking a controller and without writing anything.
Diagnosis look(const Patient& patient);

/// Looks at everything that has to be there for a controller to be found and worked with. Changes
/// no setting and no controller, opens no serial port and leaves nothing behind; each controller is
/// opened, asked what it is, and closed.
Diagnosis examine(const Patient& patient, const DoctorProgress& progress = nullptr);

}  // namespace touch
