#include "console/doctor/doctor.h"

#include <algorithm>
#include <array>
#include <utility>

#include "console/parameters/backup.h"
#include "console/working_folder/optional_files.h"
#include "core/discovery/discovery.h"
#include "core/discovery/identity.h"
#include "core/driver/connection.h"
#include "core/driver/library_header.h"
#include "core/driver/nexapi.h"
#include "ports/port_holders.h"
#include "ports/port_list.h"
#include "support/clock.h"
#include "support/files/marked_folder.h"
#include "support/files/system_folder.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using enum FindingState;

constexpr auto pauseAfterSilence = 100ms;
// The least that the windows are laid out for, in logical pixels.
constexpr int leastWidth = 400;
constexpr int leastHeight = 240;

/// The findings of one topic, as they are made.
class Findings {
 public:
  Findings(std::vector<Finding>& all, std::string_view topic) : all_(all), topic_(topic) {}

  void add(FindingState state, std::string what, std::string why = {}, std::string nextStep = {},
           Mend mend = Mend::none) {
    all_.push_back({state, topic_, std::move(what), std::move(why), std::move(nextStep), mend});
  }

 private:
  std::vector<Finding>& all_;
  std::string_view topic_;
};

/// The way out when no library could be bound.
std::string libraryNextStep(const Patient& patient, const BindError& refused) {
  if (patient.simulated && !patient.access) {
    return say("doctor", "The installation is incomplete: install TouchUtility again.");
  }
  if (!refused.foundAt.empty()) {
    return filled(say("doctor",
                      "The library in %1 is no touch driver: install the touch driver of your "
                      "controller."),
                  {refused.foundAt.string()});
  }
  return say("doctor",
             "Install the touch driver of your controller, or name its library with --driver "
             "PATH.");
}

/// What cannot be done without one of `operations`.
struct Need {
  std::string_view loss;
  std::array<std::string_view, 10> operations;
};

constexpr std::array needs = {
    Need{marked("doctor", "Controllers cannot be found."),
         {"GetExistControllers", "GetControllerName"}},
    Need{marked("doctor", "No controller can be worked with."),
         {"OpenController", "CloseController"}},
    Need{marked("doctor",
                "No command reaches a controller: it cannot be asked what it is, calibrated, reset "
                "or given parameters."),
         {"FlushReadBuffer", "WriteBuffer", "ReadBuffer"}},
    Need{marked("doctor",
                "The serial debugger and the search of the COM ports do not work, nor does "
                "\"Release comport and Exit\"."),
         {"CloseCOMPort"}},
    Need{marked("doctor",
                "The settings cannot be read, and neither the serial debugger nor the search of "
                "the COM ports works."),
         {"ReopenCOMPort"}},
    Need{marked("doctor", "The settings cannot be read, and \"Confirm\" does not work."),
         {"GetReportMode", "GetRightClickTime", "GetRightClickEnabled", "GetDoubleClickSpeed",
          "GetDoubleClickArea"}},
    Need{marked("doctor", "Not all settings can be read."),
         {"GetReportStatus", "GetDoubleClickEnabled", "GetUpSoundStatus", "GetDownSoundStatus",
          "GetRotation"}},
    Need{marked("doctor", "The settings that these operations make cannot be changed."),
         {"SetReportMode", "SetRotation", "EnableUpSound", "EnableDownSound", "EnableDoubleClick",
          "EnableRightClick"}},
    Need{marked("doctor",
                "\"Confirm\" does not work: double click and right click keep their "
                "timing."),
         {"SetDoubleClickSpeed", "SetDoubleClickArea", "SetRightClickTime"}},
    Need{marked("doctor", "The screen cannot be calibrated."), {"IsPenUp"}},
    Need{marked("doctor", "The screen cannot be calibrated with 2 points."), {"ReadLength"}},
    Need{marked("doctor", "The screen cannot be calibrated with 3, 5 or 9 points."),
         {"SetCalPoint", "CalCurrentPointReady", "StoreCalibrationData"}},
    Need{marked("doctor", "No monitor can be assigned to the panel."),
         {"AskToSetMultiMonitor", "QueryMultiMonitorSetOK"}},
};

void examineOperations(const Patient& patient, Findings& findings) {
  const std::string path = patient.driverPath.string();
  const auto missing = patient.access->driver.missing();
  if (missing.empty()) {
    findings.add(ok,
                 filled(say("doctor", "The driver library is %1; it has all operations."), {path}));
  }
  for (const Need& need : needs) {
    std::string names;
    for (const std::string_view operation : need.operations)
      if (!operation.empty() && std::ranges::find(missing, operation) != missing.end())
        names.append(names.empty() ? "" : ", ").append(operation);
    if (names.empty()) continue;
    findings.add(problem, filled(say("doctor", "The driver library %1 lacks %2."), {path, names}),
                 say("doctor", need.loss), say("doctor", "Install a newer touch driver."));
  }
}

/// What it is, and where it runs.
void examineProcess(const Patient& patient, Findings& findings) {
  const DriverReport report = patient.access->driver.report();
  std::string what;
  if (const auto bits = libraryBits(patient.driverPath))
    what = filled(say("doctor", "The driver library has %1 bits."), {std::to_string(*bits)}) + ' ';
  if (const std::string version = libraryVersion(patient.driverPath); !version.empty())
    what += filled(say("doctor", "Its version is %1."), {version}) + ' ';
  what += report.host.empty()
              ? say("doctor", "It runs in this program.")
              : filled(say("doctor", "It runs in a process of its own, %1."), {report.host});
  findings.add(ok, what);
}

/// How the driver was last lost, be it while the controllers were asked.
void examineLoss(const Patient& patient, Findings findings) {
  if (!patient.access) return;
  const DriverReport report = patient.access->driver.report();
  if (!report.lastLoss) return;
  findings.add(problem, *report.lastLoss,
               say("doctor", "What was being done ended as if the controller did not answer."),
               say("doctor", "Install a newer touch driver if it happens again."));
}

void examineLibrary(const Patient& patient, Findings findings) {
  if (patient.refused) {
    const BindError& refused = *patient.refused;
    findings.add(
        problem, refused.describe() + '.',
        say("doctor", "Without the touch driver no controller can be found, set up or calibrated."),
        libraryNextStep(patient, refused));
    if (refused.library == BoundDriver::makersLibrary && refused.foundAt.empty()) {
      findings.add(
          note,
          filled(say("doctor", "%1 was looked for in %2."),
                 {libraryFileName(refused.library), librarySearchPlaces()}),
          say("doctor",
              "It is never taken from the current folder, where anybody may have put it."));
    }
  }
  if (!patient.access) return;
  examineOperations(patient, findings);
  examineProcess(patient, findings);
  if (patient.simulated) {
    findings.add(note, say("doctor", "The simulated driver is in use."),
                 say("doctor", "Its controllers are simulated; real ones are not reached."),
                 say("doctor", "For a real controller start the program on its touch driver."));
  }
}

/// Whether the session's controller says what it is, asked twice at most.
Identity identify(const Access& access) {
  const auto said = [](const Identity& identity) {
    return !identity.unitType.empty() || !identity.firmware.empty();
  };
  Identity identity = readfw(access);
  if (said(identity)) return identity;
  access.clock.delay(pauseAfterSilence);
  return readfw(access);
}

std::string describe(const Identity& identity) {
  std::string text;
  if (!identity.unitType.empty()) {
    text += ", " + filled(say("doctor", "unit type %1"), {toUtf8(identity.unitType)});
  }
  if (!identity.firmware.empty()) {
    text += ", " + filled(say("doctor", "firmware %1"), {toUtf8(identity.firmware)});
  }
  return text;
}

std::vector<ExaminedController> askControllers(const Access& own, const DoctorProgress& progress,
                                               Findings& findings) {
  // A session of its own: the program's current controller stays what it is.
  Session session;
  const Access access{session, own.driver, own.clock};
  const KnownControllers known = knownControllers(access.driver);
  std::vector<ExaminedController> controllers;
  std::vector<std::string> identities;
  for (const std::string& name : known.served) {
    ExaminedController& controller = controllers.emplace_back(ExaminedController{name, false});
    if (progress) progress(filled(say("doctor", "asking %1"), {toUtf8(controller.name)}));
    session.controllerName = controller.name;
    identities.push_back(describe(identify(access)));
    controller.answers = !identities.back().empty();
  }
  const bool oneAnswers = std::ranges::any_of(controllers, &ExaminedController::answers);
  for (std::size_t i = 0; i < controllers.size(); ++i) {
    const std::string name = toUtf8(controllers[i].name);
    if (controllers[i].answers) {
      findings.add(ok, filled(say("doctor", "%1 answers%2."), {name, identities[i]}));
    } else {
      const bool isSerial = isSerialController(controllers[i].name);
      // One that was unplugged may stay in the driver's list beside those that work.
      findings.add(
          oneAnswers ? note : problem,
          filled(say("doctor", "%1 is known to the driver, but does not answer."), {name}),
          say("doctor", "Nothing can be read from it or changed in it."),
          isSerial ? say("doctor", "Check its cable and power; then search the COM ports for it.")
                   : say("doctor", "Check its cable and power, then look again."),
          isSerial ? Mend::searchPorts : Mend::askAgain);
    }
  }
  if (!known.others.empty()) {
    std::string others;
    for (const std::string& name : known.others)
      others += (others.empty() ? "" : ", ") + toUtf8(name);
    findings.add(note, filled(say("doctor", "The driver also knows of %1."), {others}),
                 say("doctor", "These are of other makers and are left alone."));
  }
  if (controllers.empty()) {
    findings.add(problem, say("doctor", "The driver knows of no controller."),
                 say("doctor", "There is nothing to work with."),
                 say("doctor",
                     "Check cable and power, then look again. A serial controller may be on "
                     "another port than the driver believes: search the COM ports for it."),
                 Mend::searchPorts);
  }
  return controllers;
}

std::vector<ExaminedController> examineControllers(const Patient& patient,
                                                   const DoctorProgress& progress,
                                                   Findings findings) {
  if (!patient.access) {
    findings.add(note, say("doctor", "No controller was looked for: there is no driver to ask."));
    return {};
  }
  try {
    return askControllers(*patient.access, progress, findings);
  } catch (const MissingOperation& missing) {
    findings.add(note, filled(say("doctor", "The controllers were not asked. %1."),
                              {std::string(missing.what())}));
    return {};
  }
}

void examinePort(const ListedPort& port, const ComPorts& ports, Findings& findings) {
  const std::string name = port.number > 0 ? ports.describe(port.number) : port.device;
  const std::string choose = "--com " + std::to_string(std::max(port.number, 1)) + "=";
  if (port.device.empty()) {
    findings.add(ok, filled(say("doctor",
                                "COM%1: the simulated driver has the simulated controller's port."),
                            {std::to_string(port.number)}));
    return;
  }
  if (!portExists(port.device)) {
    findings.add(
        problem, filled(say("doctor", "%1: there is no such device."), {name}),
        say("doctor", "No controller can be reached over it."),
        filled(say("doctor", "Connect it, or name another one with %1."), {choose + "DEVICE"}));
    return;
  }
  const std::string driver = portDriver(port.device);
  const std::string served =
      driver.empty() ? name : filled(say("doctor", "%1, driver %2"), {name, driver});
  if (const PortPermission permission = portPermission(port.device); !permission.granted) {
    findings.add(
        port.isAssigned ? problem : note,
        filled(say("doctor", "%1: this user may not open it."), {served}),
        say("doctor",
            "A serial controller on it cannot be searched for or talked to without the driver."),
        permission.wayOut());
    return;
  }
  const PortHolders holders = portHolders(port.device);
  if (!holders.known.empty()) {
    findings.add(
        note, filled(say("doctor", "%1: in use by %2."), {served, holders.names()}),
        say("doctor", "Only one program at a time can talk to a controller."),
        say("doctor", "Close it before you search the COM ports or open the serial debugger."));
    return;
  }
  // Nobody has tried: what opening would meet with is all that can be said.
  const std::string outlook =
      holders.complete
          ? say("doctor", "%1: this user may open it, and no program has it.")
          : say("doctor",
                "%1: this user may open it. Whether another program has it, opening it will tell.");
  findings.add(ok, filled(outlook, {served}), {},
               port.number > 0
                   ? std::string()
                   : filled(say("doctor", "To use it, start with %1."), {choose + port.device}));
}

void examinePorts(const Patient& patient, Findings findings) {
  const auto ports = listedPorts(patient.ports);
  for (const ListedPort& port : ports)
    examinePort(port, patient.ports, findings);
  if (ports.empty()) {
    findings.add(note, say("doctor", "This machine has no serial port."),
                 say("doctor", "Serial controllers need one; USB controllers do not."),
                 say("doctor", "For a serial controller connect an adapter."));
  }
}

/// Those that the program has made in the working folder, or believes to have made.
void examineOwnFolders(const fs::path& folder, Findings& findings) {
  const std::string next =
      say("doctor", "Move it away, or name another working folder with --work-dir DIR.");
  if (const auto tried = Backup(folder).tryOut(); !tried) {
    findings.add(problem, tried.error().describe() + '.',
                 say("doctor", "Parameters are not kept before they are changed."), next);
  }
  if (const auto tried = MarkedFolder::tryOut(folder / "tmp"); !tried) {
    findings.add(note, tried.error().describe() + '.',
                 say("doctor", "It is left alone; strokes that are drawn are kept in another one."),
                 next);
  }
}

void examineFolder(const fs::path& folder, Findings findings) {
  const auto tried = tryOutWorkFolder(folder);
  if (tried) {
    findings.add(ok,
                 filled(say("doctor", "The working folder %1 can be written."), {folder.string()}));
    examineOwnFolders(folder, findings);
    return;
  }
  findings.add(
      problem,
      filled(say("doctor", "The working folder %1 cannot be written: %2."),
             {folder.string(), tried.error()}),
      say("doctor", "Parameters are not kept before they are changed, and results are not saved."),
      say("doctor", "Start the program in another folder, or name one with --work-dir DIR."));
}

void examineScreens(const std::optional<std::vector<ExaminedScreen>>& screens, Findings findings) {
  if (!screens) {
    findings.add(note, say("doctor", "No display: a shell has none to look at."),
                 say("doctor", "Panels are calibrated on the screen."),
                 say("doctor", "The page \"Doctor\" of touchutility lists the screens."));
    return;
  }
  for (const ExaminedScreen& screen : *screens) {
    const std::string what = filled(say("doctor", "%1: %2 x %3 pixels at %4 %"),
                                    {screen.name, std::to_string(screen.width),
                                     std::to_string(screen.height), std::to_string(screen.scale)});
    const bool small = screen.width * 100 < leastWidth * screen.scale ||
                       screen.height * 100 < leastHeight * screen.scale;
    if (small) {
      findings.add(note, filled(say("doctor", "%1, which is little."), {what}),
                   say("doctor", "Some windows may not fit."),
                   say("doctor", "Choose a smaller scale."));
    } else {
      findings.add(ok, what + '.');
    }
  }
}

void examineFiles(const fs::path& folder, Findings findings) {
  std::string absent;
  for (const OptionalFile& file : examineOptionalFiles(folder)) {
    if (!file.there) {
      absent += (absent.empty() ? "" : ", ") + file.name;
    } else if (file.complaint.empty()) {
      const std::string sound =
          file.decoded ? say("doctor", "%1 is sound.")
                       : say("doctor", "The structure of %1 is sound; it was not decoded.");
      findings.add(ok, filled(sound, {file.name}), file.effect);
    } else {
      findings.add(problem, file.complaint + '.', file.effect,
                   say("doctor", "Mend the file or remove it."));
    }
  }
  if (!absent.empty()) {
    findings.add(ok,
                 filled(say("doctor", "Not in the working folder, and not needed: %1."), {absent}));
  }
}

void examineVersions(const std::vector<std::string>& versions, Findings findings) {
  std::string all;
  for (const std::string& version : versions)
    all += (all.empty() ? "" : "; ") + version;
  findings.add(ok, all + '.');
}

}  // namespace

std::size_t Diagnosis::count(FindingState state) const {
  return static_cast<std::size_t>(std::ranges::count(findings, state, &Finding::state));
}

bool Diagnosis::controllerAnswers() const {
  return std::ranges::any_of(controllers, &ExaminedController::answers);
}

namespace {

Diagnosis examined(const Patient& patient, const DoctorProgress& progress, bool complete) {
  Diagnosis diagnosis;
  diagnosis.complete = complete;
  auto& all = diagnosis.findings;
  if (!complete && patient.access) {
    Findings(all, "controllers")
        .add(note, say("doctor", "The controllers are not asked yet."), {},
             say("doctor", "Press \"Refresh\" to ask each of them what it is."));
  }
  examineLibrary(patient, {all, "library"});
  if (complete) {
    diagnosis.controllers = examineControllers(patient, progress, {all, "controllers"});
    if (progress) progress(say("doctor", "looking at the ports"));
  }
  examineLoss(patient, {all, "library"});
  examinePorts(patient, {all, "ports"});
  if (complete) examineFolder(patient.workFolder, {all, "folder"});
  examineScreens(patient.screens, {all, "screens"});
  examineFiles(patient.workFolder, {all, "files"});
  examineVersions(patient.versions, {all, "versions"});
  std::ranges::stable_sort(all, std::greater(), &Finding::state);
  return diagnosis;
}

}  // namespace

Result<void, std::string> tryOutWorkFolder(const fs::path& path) {
  constexpr int mostNames = 1000;
  const auto folder = SystemFolder::open(path, false);
  if (!folder) return tl::unexpected(folder.error().found);
  for (int number = 0; number < mostNames; ++number) {
    const std::string name = "doctor-" + std::to_string(number) + ".tmp";
    const auto probe = folder->openFile(name, SystemFolder::Opening::create);
    if (!probe && probe.error().exists()) continue;
    if (!probe) return tl::unexpected(probe.error().found);
    const auto failed = writeOut(probe->get(), "can this be written?\n");
    folder->remove(name);
    if (failed) return tl::unexpected(failed.message());
    return {};
  }
  return tl::unexpected(say("files", "too many that were left unfinished"));
}

Diagnosis look(const Patient& patient) {
  return examined(patient, nullptr, false);
}

Diagnosis examine(const Patient& patient, const DoctorProgress& progress) {
  return examined(patient, progress, true);
}

}  // namespace touch
