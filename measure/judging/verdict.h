#pragma once

#include <optional>
#include <string>
#include <vector>

#include "measure/figures/coverage.h"
#include "measure/figures/line.h"
#include "measure/figures/rest.h"
#include "measure/figures/taps.h"
#include "measure/files/json_reader.h"
#include "measure/judging/causes.h"
#include "measure/judging/field.h"
#include "measure/measurement.h"

namespace touch::measure {

/// Everything that a measurement says, but for what is to be thought of it.
struct Analysis {
  std::vector<LineFigures> lines;  ///< of the chosen set, drawn or not
  std::vector<RestFigures> rests;
  std::optional<TapFigures> taps;
  std::optional<CoverageFigures> coverage;
  std::optional<ErrorField> field;
  std::optional<Advice> advice;
  std::vector<Cause> causes;
};
Analysis analyse(const Measurement& measurement);

/// From the best to the worst: the worst of its parts is that of the whole.
enum class Outcome : std::uint8_t { pass, incomplete, fail };
/// "PASS", "INCOMPLETE" or "FAIL".
const char* wordOf(Outcome outcome);

/// A figure beside its limit.
struct Check {
  std::string_view name;  ///< in files
  const char* words;      ///< said in the context "measure"
  double value = 0;
  double limit = 0;
  const char* unit = "mm";
  bool atLeast = false;  ///< the limit is the least and not the most
  Outcome outcome = Outcome::pass;
  std::optional<Percent> share{};  ///< of the panel's side, for a length
};

/// A line, a resting place, the taps, the coverage or the panel as a whole, with its evidence.
struct Subject {
  std::string name;
  std::vector<Check> checks;
  std::vector<std::string> remarks;  ///< what a figure alone would not say

  Outcome outcome() const;
};

struct Verdict {
  std::vector<Subject> subjects;
  Outcome outcome() const;
  /// Null when it is not judged.
  const Subject* find(std::string_view name) const;
};

Subject judgeLine(const Measurement& measurement, const LineFigures& line);
Verdict judge(const Measurement& measurement, const Analysis& analysis);

/// "covered: 83.20 %; at least 95.00 %"
std::string textOf(const Check& check, const PanelSize& size);

/// All of both for programs.
Json jsonOf(const Measurement& measurement, const Analysis& analysis, const Verdict& verdict);

}  // namespace touch::measure
