#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "measure/judging/verdict.h"
#include "support/result.h"

namespace touch::commission {

// Many panels side by side, and each over the years, from the sheets in their bundles. What a sheet
// says is taken as it is: `verifyBundle` is who judges samples anew.

/// The worst of a kind of figure of one panel.
struct FleetFigure {
  double value = 0;
  double limit = 0;
  bool atLeast = false;  ///< the limit is the least and not the most
  std::string unit;

  /// Of what the limit allows; 1 is just so.
  double used() const;
};

/// What one bundle says of its panel.
struct Visit {
  std::filesystem::path file;
  std::string sheetHash;  ///< one bundle under two names, or from two machines, is one visit
  std::string serialNumber, began, place, order, person, controller, firmware;
  measure::Outcome outcome = measure::Outcome::incomplete;
  std::map<std::string, FleetFigure> worst;  ///< by the names that sheets give to figures
  std::vector<std::string> causes;           ///< their names, the likeliest first
};
Result<Visit> readVisit(const std::filesystem::path& bundle);

/// All bundles in a folder and in those below it, by name. Links to folders are not followed.
Result<std::vector<std::filesystem::path>> bundlesIn(const std::filesystem::path& folder);

/// A figure that has become worse since the panel's first visit.
struct Drift {
  std::string figure;
  FleetFigure first;
  FleetFigure last;
};

/// A panel with its last visit.
struct FleetPanel {
  Visit last;
  std::size_t visits = 1;
  std::vector<Drift> drifts;
};
/// One for each serial number, the worst outcome first. Panels without a number are each one of
/// their own. Copies of a bundle count once.
std::vector<FleetPanel> panelsOf(std::vector<Visit> visits);

}  // namespace touch::commission
