#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "measure/figures/coverage.h"
#include "measure/figures/line.h"
#include "measure/figures/rest.h"
#include "measure/measurement.h"

namespace touch::measure {

enum class CauseId : std::uint8_t {
  offset,
  scale,
  tilt,
  turned,
  swapped,
  bow,
  noise,
  deadStrip,
  jump,
  drift,
  wires,
  hand,
};

/// What may be wrong with a panel, in words, and what to do about it. Texts are said in the context
/// "measure".
struct CauseRow {
  CauseId id;
  std::string_view name;  ///< in files
  const char* words;
  const char* nextStep;
};
std::span<const CauseRow> causeTable();
const CauseRow& rowOf(CauseId id);

/// A figure that speaks for a cause.
struct Sign {
  const char* words;
  double value;
  const char* unit;
};

struct Cause {
  CauseId id;
  /// How far what it does exceeds the limit that it breaks, all doubt taken off; 1 is just so.
  double weight = 0;
  std::vector<Sign> signs;

  /// From 0.5 for one that is just named to nearly 1.
  double confidence() const { return 1 - 0.5 / (weight * weight); }
};

/// By how many mm touches wandered in a second while the lines were drawn. None where the lines do
/// not tell, or chance may have done it.
std::optional<PointMm> driftOfLines(const Measurement& measurement,
                                    std::span<const LineFigures> lines);

/// What most likely is wrong, the weightiest first. Only causes that break a limit by themselves
/// are named; none is an answer, too.
std::vector<Cause> findCauses(const Measurement& measurement, std::span<const LineFigures> lines,
                              std::span<const RestFigures> rests);

}  // namespace touch::measure
