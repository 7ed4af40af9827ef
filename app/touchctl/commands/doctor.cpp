#include <fmt/core.h>

#include <filesystem>
#include <optional>

#include "app/driver_choice.h"
#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "console/doctor/diagnostics_file.h"
#include "console/doctor/doctor_report.h"
#include "support/system_name.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr const char* doctorDescription =
    "Say what is in the way of working with a controller, why it matters, and what to do";
constexpr const char* statusHelp =
    "Exit status: 0 nothing is wrong, 1 there are problems, 3 there is no driver, 4 no controller "
    "answers.";

ExitStatus statusOf(const Diagnosis& diagnosis, bool bound) {
  if (!bound) return ExitStatus::noDriver;
  if (!diagnosis.controllerAnswers()) return ExitStatus::noController;
  return diagnosis.count(FindingState::problem) == 0 ? ExitStatus::done : ExitStatus::failed;
}

bool mayReplace(const fs::path& file, const ShellOptions& options) {
  std::error_code ignored;
  return !fs::exists(file, ignored) ||
         ShellPrompt(options.assumeYes)
             .confirm(file.string() + " is there already. Replace it?", defaultTitle);
}

/// Unlike other commands it goes on where there is no driver: that is what it is for.
ExitStatus examineMachine(const ShellOptions& options, const std::optional<fs::path>& save) {
  if (save && !mayReplace(*save, options)) return ExitStatus::failed;
  Trace trace;
  if (options.trace) {
    if (const auto started = trace.start(*options.trace); !started) {
      complain(started.error());
      return ExitStatus::failed;
    }
  }
  catchInterrupt();
  SystemClock clock;
  ShellPatience patience(options.driverTimeout);
  const auto bound = bindChosenDriver(options, clock, patience);
  Patient patient{.simulated = options.simulate,
                  .ports = options.comPorts,
                  .workFolder = options.workFolder,
                  .versions = {programVersion(), systemName()}};
  Session session;
  std::optional<TracingDriver> driver;
  if (bound) {
    driver.emplace(**bound, trace);
    patient.access.emplace(Access{session, *driver, clock});
    patient.driverPath = (*bound)->path();
    patient.simulated = (**bound).isSimulated();
    addSimulatedPort(**bound, patient.ports);
  } else {
    patient.refused = bound.error();
  }
  const Diagnosis diagnosis = examine(patient);
  print("{}", options.json ? findingsAsJson(diagnosis) : findingsAsText(diagnosis));
  if (save) {
    complain(diagnosticsContents(patient, diagnosis, trace));
    const DiagnosticsSaved saved = saveDiagnostics(*save, patient, diagnosis, trace);
    complain(saved.describe(*save));
    if (!saved.written) return ExitStatus::failed;
  }
  if (const auto reason = trace.takeBreak()) complain(*reason);
  return statusOf(diagnosis, patient.access.has_value());
}

}  // namespace

void addDoctorCommand(const CommandLine& line) {
  addCommand(line, line.app, "doctor", doctorDescription, [line](CLI::App& doctor) {
    doctor.footer(statusHelp);
    addJson(line, doctor);
    const auto save = std::make_shared<std::optional<fs::path>>();
    doctor
        .add_option_function<std::string>(
            "--save", [save](const std::string& file) { *save = absolutePathNamed(file); },
            "Also write a diagnostics file: what was found, the settings and parameters of each "
            "controller, and, with "
            "--trace, all that was said")
        ->type_name("FILE.zip");
    doctor.callback([line, save] {
      line.fileCommand = [save, &options = line.options] { return examineMachine(options, *save); };
    });
  });
}

}  // namespace touch
