#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/process/other_program.h"
#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/commands/panel_size.h"
#include "app/touchctl/commands/simulated_hand.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "calibration/check.h"
#include "commission/run/run_trace.h"
#include "commission/sheet/sheet.h"
#include "commission/steps/guided_run.h"
#include "console/doctor/doctor.h"
#include "measure/report/conditions.h"
#include "support/system_name.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;
using namespace commission;

/// What the command line says.
struct Asked {
  std::string profile = "quick";
  std::string use = "industrial";
  PanelFacts panel;
  int targets = 5;
  std::string panelSize;
  std::string out;
  std::map<std::string, std::string, std::less<>> skipped;  ///< steps and reasons
  bool setsSettings = false;
  bool anew = false;
};

/// The run with a simulated finger.
class ShellRun {
 public:
  ShellRun(Shell& shell, const Asked& asked, GuidedRun& guided)
      : shell_(shell), asked_(asked), guided_(guided), trace_(shell.trace(), guided.folder()) {}

  Result<ExitStatus> go() {
    while (const auto id = guided_.next()) {
      if (interrupted()) {
        complain("ended; the same command goes on where it was");
        return ExitStatus::failed;
      }
      if (const auto taken = take(*id); !taken) return tl::unexpected(taken.error());
    }
    return tellOutcome();
  }

 private:
  Status take(StepId id) {
    const Step& step = stepOf(id);
    tell(shell_, "{}\n", step.caption);
    const auto asked = asked_.skipped.find(step.name);
    auto taken = asked == asked_.skipped.end() ? carryOut(id) : guided_.skip(id, asked->second);
    if (!taken) return taken;
    const StepRecord& record = guided_.run()[id];
    for (const std::string& text : record.found.texts)
      tell(shell_, "  {}\n", printable(text));
    if (record.state == StepState::skipped)
      tell(shell_, "  skipped: {}\n", printable(record.reason));
    return {};
  }

  Status carryOut(StepId id) {
    switch (id) {
      case StepId::prerequisites:
        return guided_.lookAround(examine({.access = shell_.access(),
                                           .simulated = true,
                                           .ports = shell_.options().comPorts,
                                           .workFolder = shell_.options().workFolder,
                                           .versions = {programVersion(), systemName()}}));
      case StepId::panel:
        return guided_.namePanel(asked_.panel);
      case StepId::identity:
        return guided_.identify("simulated");
      case StepId::settings:
        return asked_.setsSettings ? guided_.setAsWanted(shell_.prompt())
                                   : guided_.compareSettings();
      case StepId::calibrate:
        guided_.beginCalibration();
        return guided_.endCalibration(asked_.targets,
                                      calibrate(shell_, asked_.targets) == ExitStatus::done);
      case StepId::check: {
        const auto wayBack = guided_.takeWayBack();
        return guided_.endCheck(checkCalibration(shell_, usualCheckLimit, *wayBack));
      }
      case StepId::measure:
        return measurePanel();
      case StepId::rate:
        return guided_.tellRate();
      case StepId::verdict:
        return guided_.judge();
      case StepId::sheet:
        return handOver();
    }
    return {};
  }

  /// What was drawn before the run was interrupted is not drawn again.
  Status measurePanel() {
    auto measurement = guided_.measurement(
        parsePanelSize(asked_.panelSize).value_or(simulatedSizeOf(shell_.options())));
    if (!measurement) return tl::unexpected(measurement.error());
    if (measurement->sources.empty()) {
      measurement->conditions.screen = screenText(shell_.options());
      measurement->sources = {SimulatedHand::source()};
    }
    SimulatedHand hand(shell_.simulation(), shell_.controller(), measurement->size);
    for (const std::string& task : tasksOf(measurement->plan)) {
      if (std::ranges::find(measurement->traces, task, &measure::Trace::task) !=
          measurement->traces.end())
        continue;
      if (interrupted()) return {};
      const auto traces = hand.carryOut(task, measurement->plan);
      measurement->traces.insert(measurement->traces.end(), traces.begin(), traces.end());
      if (auto kept = guided_.keep(*measurement); !kept) return kept;
    }
    return guided_.endMeasurement();
  }

  /// On paper only where the program with windows is installed, which can draw.
  static Status print(const RunFolder& folder, const Sheet& sheet, const measure::Report* report) {
    const auto printed =
        runNeighbour("touchutility", {"--lang", "en", "--print-sheet", folder.path()});
    if (printed != 0) complain("sheet.pdf was not written: that takes touchutility");
    // Once more, with the very time that the run will have.
    return printHtml(folder, sheet, report);
  }

  Status handOver() {
    const auto bundle = guided_.handOver(trace_, print);
    if (!bundle) return tl::unexpected(bundle.error());
    tell(shell_, "  {}\n", printable(utf8Of(*bundle)));
    return {};
  }

  Result<ExitStatus> tellOutcome() {
    const auto made = guided_.folder().report();
    if (!made) return tl::unexpected(made.error());
    const measure::Report* const report = *made ? &**made : nullptr;
    if (shell_.options().json) printJson(sheetJson(guided_.run(), report));
    const Judgement judged = judgeRun(guided_.run(), report);
    tell(shell_, "{}: {}\n", measure::wordOf(judged.outcome), utf8Of(guided_.folder().path()));
    return statusOf(judged.outcome);
  }

  Shell& shell_;
  const Asked& asked_;
  GuidedRun& guided_;
  RunTrace trace_;
};

/// The run of this panel that has not come to its end, or a new one.
Result<GuidedRun> takeUp(Shell& shell, const Asked& asked, const fs::path& base) {
  const Backup backup(shell.options().workFolder);
  const UnfinishedRuns found = unfinishedRuns(base);
  for (const FileError& error : found.damaged)
    complain(error.describe());
  const UnfinishedRun* const left = found.of(asked.panel.serialNumber);
  if (left != nullptr && !asked.anew) {
    auto folder = RunFolder::open(left->folder);
    if (!folder) return tl::unexpected(folder.error());
    tell(shell, "Going on with {}, {:.0f} % done\n", utf8Of(left->folder),
         100 * progress(left->run));
    return GuidedRun(shell.access(), backup, std::move(*folder), left->run);
  }
  Run run;
  run.profile = std::ranges::find(profileNames, asked.profile, &NamedProfile::name)->value;
  run.use = asked.use;
  run.panel = asked.panel;
  run.program = programVersion();
  run.began = measure::dateOf(std::chrono::system_clock::now());
  auto folder = RunFolder::make(base, run);
  if (!folder) return tl::unexpected(folder.error());
  return GuidedRun(shell.access(), backup, std::move(*folder), std::move(run));
}

ExitStatus commissionPanel(Shell& shell, const Asked& asked) {
  const fs::path base = asked.out.empty() ? shell.options().workFolder / "commissioning"
                                          : absolutePathNamed(asked.out);
  auto guided = takeUp(shell, asked, base);
  const auto status = guided ? ShellRun(shell, asked, *guided).go()
                             : Result<ExitStatus>(tl::unexpected(guided.error()));
  if (status) return *status;
  complain(status.error().describe());
  return ExitStatus::failed;
}

ExitStatus commissionSimulated(Shell& shell, const Asked& asked) {
  if (!shell.simulation().isThere()) {
    complain(
        "commissioning needs somebody who touches the panel: use touchutility at the panel. Here "
        "only simulated controllers can be commissioned (--simulate).");
    return ExitStatus::failed;
  }
  return onController([&asked](Shell& chosen) { return commissionPanel(chosen, asked); })(shell);
}

/// "STEP=REASON"
void addSkipped(Asked& asked, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    const auto [name, reason] = nameAndValue(text);
    const auto step = std::ranges::find(steps(), name, &Step::name);
    if (step == steps().end() || !step->mayBeSkipped || reason.empty()) {
      std::string names;
      for (const Step& one : steps())
        if (one.mayBeSkipped) names += fmt::format("{}{}", names.empty() ? "" : ", ", one.name);
      refuseArgument("--skip", fmt::format("expected STEP=REASON with one of the steps {}, e.g. "
                                           "rate=no port, found \"{}\"",
                                           names, text));
    }
    asked.skipped[std::string(name)] = reason;
  }
}

}  // namespace

void addCommissionCommand(const CommandLine& line) {
  addControllerCommand(
      line, line.app, "commission",
      "Commission a simulated panel: from what has to be there to the sheet that is handed over",
      [line](CLI::App& command) {
        command.footer(
            "Exit status: 0 PASS, 1 FAIL, 5 INCOMPLETE. A run that was interrupted goes on where "
            "it was.");
        const auto asked = std::make_shared<Asked>();
        std::vector<std::string> profiles;
        for (const NamedProfile& profile : profileNames)
          profiles.emplace_back(profile.name);
        command.add_option("--profile", asked->profile, "How much is measured")
            ->check(CLI::IsMember(profiles))
            ->capture_default_str();
        std::vector<std::string> uses;
        for (const measure::Profile& profile : measure::profiles())
          uses.emplace_back(profile.name);
        command.add_option("--use", asked->use, "What the panel is for: its limits and settings")
            ->check(CLI::IsMember(uses))
            ->capture_default_str();
        command.add_option("--serial", asked->panel.serialNumber, "The panel's serial number")
            ->required();
        command.add_option("--operator", asked->panel.person, "Who commissions it");
        command.add_option("--place", asked->panel.place, "Where it stands");
        command.add_option("--order", asked->panel.order, "The customer's order");
        command.add_option("--note", asked->panel.note, "Anything else for the sheet");
        command.add_option("--points", asked->targets, "Targets of the calibration: 2, 3, 5 or 9")
            ->check(CLI::IsMember({2, 3, 5, 9}))
            ->capture_default_str();
        command
            .add_option("--panel-size", asked->panelSize,
                        "The active area in mm (default: that of --simulate-from, else nominal, 96 "
                        "pixels an inch)")
            ->type_name("WxH");
        command
            .add_option("--out", asked->out,
                        "Where the run's folder is made (default: \"commissioning\" in the working "
                        "folder)")
            ->type_name("FOLDER");
        const auto skipped = std::make_shared<std::vector<std::string>>();
        command
            .add_option("--skip", *skipped, "A step to leave out; the reason stands on the sheet")
            ->type_name("STEP=REASON")
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        command.add_flag("--set", asked->setsSettings,
                         "Also set what the use wants otherwise (default: only name it)");
        command.add_flag("--anew", asked->anew,
                         "Begin a new run also where one of this panel is unfinished");
        addJson(line, command);
        command.callback([line, asked, skipped] {
          checkPanelSize(asked->panelSize);
          addSkipped(*asked, *skipped);
          line.command = [asked](Shell& shell) { return commissionSimulated(shell, *asked); };
        });
      });
}

}  // namespace touch
