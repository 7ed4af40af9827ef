#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commission/run/run.h"
#include "measure/measurement.h"
#include "support/result.h"

namespace touch::commission {

/// What is known of a panel that was commissioned, here or at a customer's.
using ReplaySource = std::pair<Run, std::optional<measure::Measurement>>;

/// Reads the folder of a commissioning, or its bundle, whosever it is. Without a measurement it is
/// one too.
Result<ReplaySource> readSource(const std::filesystem::path& path);

/// How to make a simulated controller the one of a source.
struct Replay {
  /// In the words of the simulator's request "become", one for each request.
  std::vector<std::string> properties;
  /// What the source does not tell and is therefore as in any simulated controller, for people.
  std::vector<std::string> unknown;
  std::optional<measure::PanelSize> size;
};

/// The panel gets what can be told apart from the hand that touched it: the error field, its noise,
/// where it feels no touch, its directions, its drift and the rate of its reports. Each line of the
/// source gives its own course back.
Replay replayOf(const ReplaySource& source);

}  // namespace touch::commission
