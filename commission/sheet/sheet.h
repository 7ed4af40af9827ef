#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commission/run/run.h"
#include "measure/files/json_reader.h"
#include "measure/judging/verdict.h"
#include "measure/report/report_pages.h"

namespace touch::commission {

struct Fact {
  std::string caption;
  std::string text;
};

/// The worst of all figures of a kind beside its limit.
struct SheetFigure {
  std::string what;
  std::string found;
  std::string limit;
  measure::Outcome outcome = measure::Outcome::pass;
  std::string how;        ///< where the worst was found, and of how many
  bool deciding = false;  ///< it stands on the first page
};

struct SheetStep {
  std::string caption;
  std::string state;  ///< "done", "done 2 times", "skipped: the reason"
  std::vector<std::string> found;
};

/// What is handed over, in the user's language: as much as a reader needs to accept the panel, or
/// not to. It says what was simulated, skipped, repeated or nominal.
struct Sheet {
  std::string subtitle;  ///< which panel
  measure::Outcome outcome = measure::Outcome::incomplete;
  std::string reason;  ///< why it is no PASS; empty: the figures say it
  std::string use;
  bool simulated = false;  ///< neither controller nor panel was real
  std::vector<Fact> panel;
  std::vector<Fact> conduct;  ///< when, by whom, with what
  std::vector<SheetFigure> figures;
  std::vector<Fact> remarks;  ///< simulated, repeated, skipped, nominal
  std::vector<Fact> calibration;
  std::vector<SheetStep> steps;
};

/// What a run comes to.
struct Judgement {
  measure::Outcome outcome = measure::Outcome::incomplete;
  std::string reason;  ///< why it is no PASS; empty: the figures say it
};
/// `report` is what follows from the measurement; null when nothing was measured.
Judgement judgeRun(const Run& run, const measure::Report* report);
/// What the step of the verdict said; nothing before it was done.
std::optional<Judgement> judgementIn(const Run& run);
/// Neither controller nor panel was real.
bool isSimulated(const Run& run);
Sheet sheetOf(const Run& run, const measure::Report* report);
/// What stands below the outcome: what it holds for.
std::string outcomeNote(const Sheet& sheet);
/// Whose colours the outcome has: nobody takes a simulated PASS for one that was earned.
measure::Outcome outcomeLook(measure::Outcome outcome, bool simulated);

/// "12 Nov 2026 14:05 to 14:17 (+0100)" for two times as in "2026-11-12T14:05:59+0100"; what is no
/// such time stands as it is.
std::string periodText(const std::string& from, const std::string& to);

/// A page that needs nothing from elsewhere, with the map and the lines as pictures in it.
std::string sheetHtml(const Sheet& sheet, const measure::Report* report);
/// The same for programs; docs/file-formats.md describes it.
inline constexpr const char* sheetSchema = "touch commissioning sheet";
inline constexpr int sheetVersion = 1;
measure::Json sheetJson(const Run& run, const measure::Report* report);

}  // namespace touch::commission
