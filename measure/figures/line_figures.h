#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "measure/figures/line.h"

namespace touch::measure {

/// A figure of a line, as every file, table and page has it.
struct LineFigure {
  std::string_view name;  ///< in files
  const char* caption;    ///< for people; said in the context "measure"
  const char* heading;    ///< the same for a narrow column; null: not in tables
  const char* unit;
  int decimals;
  std::optional<double> (*value)(const LineFigures&);  ///< nothing where it is not known
};
std::span<const LineFigure> lineFigureList();

}  // namespace touch::measure
