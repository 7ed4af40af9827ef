#include "console/doctor/diagnostics_file.h"

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>
#include <utility>

#include "console/doctor/doctor_report.h"
#include "console/parameters/parameter_block.h"
#include "core/driver/connection.h"
#include "core/driver/trace.h"
#include "support/files/whole_file.h"
#include "support/files/zip_archive.h"
#include "support/text/language.h"
#include "support/text/personal_names.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;
using Content = Result<std::string, Missing>;

// The last part of a trace is what tells of the fault, and the file is to be mailed.
constexpr std::size_t longestTrace = std::size_t{16} << 20U;

tl::unexpected<Missing> missing(std::string why) {
  return tl::unexpected(Missing{std::move(why)});
}

std::string versionsText(const Patient& patient) {
  std::string text;
  for (const std::string& version : patient.versions)
    text += version + '\n';
  if (patient.driverPath.empty()) return text + say("doctor", "No driver library is bound.") + '\n';
  std::error_code unknown;
  const auto size = fs::file_size(patient.driverPath, unknown);
  const std::string path = patient.driverPath.string();
  if (unknown) return text + filled(say("doctor", "Driver library %1"), {path}) + '\n';
  return text + filled(say("doctor", "Driver library %1, %2 bytes"), {path, std::to_string(size)}) +
         '\n';
}

/// What the driver reports, number by number and unjudged. Asking changes nothing.
Content settingsOf(const Access& access) {
  const Connection connection(access);
  if (!connection.isOpen()) return missing(say("doctor", "the driver cannot open the controller"));
  Driver& driver = access.driver;
  const std::int32_t handle = connection.handle();
  const nlohmann::ordered_json settings = {
      {"GetReportStatus", driver.GetReportStatus(handle)},
      {"GetReportMode", driver.GetReportMode(handle)},
      {"GetRotation", driver.GetRotation(handle)},
      {"GetUpSoundStatus", driver.GetUpSoundStatus(handle)},
      {"GetDownSoundStatus", driver.GetDownSoundStatus(handle)},
      {"GetDoubleClickEnabled", driver.GetDoubleClickEnabled(handle)},
      {"GetDoubleClickSpeed", driver.GetDoubleClickSpeed(handle)},
      {"GetDoubleClickArea", driver.GetDoubleClickArea(handle)},
      {"GetRightClickEnabled", driver.GetRightClickEnabled(handle)},
      {"GetRightClickTime", driver.GetRightClickTime(handle)},
  };
  return settings.dump(2) + '\n';
}

/// As a ".vrq" file, which can be loaded again.
Content parametersOf(const Access& access) {
  const auto block = readBlock(access);
  if (!block) return missing(block.error().describe());
  std::string text;
  for (const ParameterWord& word : *block)
    text += wordText(word) + "\r\n";
  return text;
}

Content endOfTrace(const Trace& trace) {
  auto text = trace.end(longestTrace);
  if (!text) return missing(say("doctor", "the trace cannot be read"));
  return std::move(*text);
}

/// The controller's name, as far as it may stand in the name of a file.
std::string fileName(std::string name) {
  std::ranges::replace_if(
      name,
      [](char c) { return (c < '0' || c > '9') && (c < 'A' || c > 'Z') && (c < 'a' || c > 'z'); },
      '_');
  return name;
}

using PartOfController = Content (*)(const Access& access);

DiagnosticsPart partOf(const Patient& patient, const ExaminedController& controller,
                       std::string name, PartOfController make, const DoctorProgress& progress) {
  return {std::move(name), [&patient, &controller, make, &progress]() -> Content {
            if (!controller.answers)
              return missing(say("doctor", "the controller does not answer"));
            if (progress) progress(filled(say("doctor", "reading %1"), {toUtf8(controller.name)}));
            Session session;
            session.controllerName = controller.name;
            return make({session, patient.access->driver, patient.access->clock});
          }};
}

/// All references must outlive the parts.
std::vector<DiagnosticsPart> partsOf(const Patient& patient, const Diagnosis& diagnosis,
                                     const Trace& trace, const DoctorProgress& progress) {
  std::vector<DiagnosticsPart> parts = {
      {"doctor.txt", [&]() -> Content { return findingsAsText(diagnosis); }},
      {"doctor.json", [&]() -> Content { return findingsAsJson(diagnosis); }},
      {"versions.txt", [&]() -> Content { return versionsText(patient); }},
  };
  int number = 0;
  for (const ExaminedController& controller : diagnosis.controllers) {
    // Two controllers may have the same name.
    const std::string name = std::to_string(++number) + '-' + fileName(controller.name);
    parts.push_back(
        partOf(patient, controller, "settings-" + name + ".json", settingsOf, progress));
    parts.push_back(
        partOf(patient, controller, "parameters-" + name + ".vrq", parametersOf, progress));
  }
  if (diagnosis.controllers.empty()) {
    for (const char* const name : {"settings.json", "parameters.vrq"})
      parts.push_back(
          {name, []() -> Content { return missing(say("doctor", "there is no controller")); }});
  }
  // At the end, so that reading the controllers is in it.
  if (trace.isOn())
    parts.push_back({"trace.jsonl", [&]() -> Content { return endOfTrace(trace); }});
  return parts;
}

std::string contentOf(const DiagnosticsPart& part, const PersonalNames& personal,
                      std::vector<std::string>& failed) {
  std::string why;
  try {
    const auto content = part.make();
    if (content) return withoutPersonalNames(*content, personal);
    why = content.error().why;
  } catch (const std::exception& error) {
    why = error.what();
  }
  failed.push_back(part.name);
  return withoutPersonalNames(filled(say("doctor", "This part is missing: %1."), {why}) + '\n',
                              personal);
}

}  // namespace

PackedParts packParts(const std::vector<DiagnosticsPart>& parts,
                      std::chrono::system_clock::time_point time) {
  PackedParts packed;
  const PersonalNames personal = personalNames();
  std::vector<ZipEntry> entries;
  entries.reserve(parts.size());
  for (const DiagnosticsPart& part : parts)
    entries.push_back({part.name, contentOf(part, personal, packed.failed)});
  packed.archive = zipArchive(entries, time);
  return packed;
}

std::string DiagnosticsSaved::describe(const fs::path& file) const {
  if (!written)
    return filled(say("doctor", "The diagnostics are not saved: %1."),
                  {written.error().describe()});
  std::string text = filled(say("doctor", "The diagnostics are saved in %1."), {file.string()});
  if (failed.empty()) return text;
  std::string names;
  for (const std::string& name : failed)
    names += (names.empty() ? "" : ", ") + name;
  return text + ' ' +
         filled(say("doctor", "Missing, with the reason in their place: %1."), {names});
}

std::string diagnosticsContents(const Patient& patient, const Diagnosis& diagnosis,
                                const Trace& trace) {
  std::string names;
  for (const DiagnosticsPart& part : partsOf(patient, diagnosis, trace, nullptr))
    names += (names.empty() ? "" : ", ") + part.name;
  return filled(say("doctor",
                    "The diagnostics file will contain %1: what was found, the versions, the "
                    "settings and parameters of each controller and, while a trace is written, "
                    "its last 16 MB, with all that was said to and by them. Your home folder and "
                    "this computer's name are left out."),
                {names});
}

DiagnosticsSaved saveDiagnostics(const fs::path& file, const Patient& patient,
                                 const Diagnosis& diagnosis, const Trace& trace,
                                 const DoctorProgress& progress) {
  const auto parts = partsOf(patient, diagnosis, trace, progress);
  auto packed = packParts(parts, std::chrono::system_clock::now());
  return {writeWholeFile(file, packed.archive), std::move(packed.failed)};
}

}  // namespace touch
