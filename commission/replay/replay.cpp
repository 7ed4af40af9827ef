#include "commission/replay/replay.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <string_view>

#include "commission/bundle/bundle.h"
#include "commission/replay/replayed_panel.h"
#include "commission/run/run_folder.h"
#include "console/settings/touch_settings.h"
#include "measure/files/measurement_file.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch::commission {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestName = 19;
constexpr std::size_t longestReply = 8;

bool isPlain(std::string_view text, std::size_t longest, char least) {
  return !text.empty() && text.size() <= longest &&
         std::ranges::all_of(text, [least](char c) { return c >= least && c <= '~'; });
}

void describeIdentity(const Run& run, Replay& replay) {
  const auto lacks = [&](const std::string& what) { replay.unknown.push_back(what); };
  const bool hasName = isPlain(run.controller, longestName, ' ') &&
                       (run.controller.find("RS232") != std::string::npos ||
                        run.controller.find("USB") != std::string::npos);
  if (hasName)
    replay.properties.push_back("name " + run.controller);
  else
    lacks(say("commission", "the controller's name"));
  if (isPlain(run.firmware, longestReply, '!'))
    replay.properties.push_back("identity " + run.firmware);
  else
    lacks(say("commission", "its firmware"));
  if (!isPlain(run.unitType, longestReply, '!')) return lacks(say("commission", "its unit type"));
  replay.properties.push_back("unit-type " + run.unitType);
  // How it answers who asks for its model follows from that: the newer ones end in "2".
  const bool newer = run.unitType.find("QRMV") != std::string::npos;
  std::string model = run.unitType.substr(0, 6);
  model.resize(6, '0');
  replay.properties.push_back(fmt::format("query UI{}0{}", model, newer ? 2 : 1));
}

void describeWords(const ReplaySource& source, Replay& replay) {
  const auto& [run, measurement] = source;
  const auto isWord = [](std::string_view word) {
    return word.size() == 4 && word.find_first_not_of("0123456789ABCDEFabcdef") == word.npos;
  };
  constexpr std::size_t blockSize = 8;
  for (const auto* const block : {measurement ? &measurement->conditions.parameterWords : nullptr,
                                  &run.blockAfter, &run.blockBefore}) {
    if (block == nullptr || block->size() != blockSize || !std::ranges::all_of(*block, isWord))
      continue;
    for (std::size_t address = 0; address < blockSize; ++address)
      replay.properties.push_back(fmt::format("word {:02X} {}", address, (*block)[address]));
    return;
  }
  replay.unknown.push_back(say("commission", "its parameters"));
}

/// The value that is called so, in English or in the user's language. Behind a number stands its
/// unit.
std::optional<int> valueOf(const Setting& setting, const std::string& text) {
  for (const SettingChoice& choice : setting.choices)
    if (choice.name == text || say("settings", choice.name) == text) return choice.value;
  const auto value = parseSetting(setting, text.substr(0, text.find(' ')));
  return value ? std::optional(*value) : std::nullopt;
}

void describeSettings(const Run& run, Replay& replay) {
  std::string lacking;
  for (const Setting& setting : settingTable()) {
    if (setting.get == nullptr) continue;
    const auto told = run.settings.find(std::string(setting.name));
    const auto value = told != run.settings.end() ? valueOf(setting, told->second) : std::nullopt;
    if (!value)
      lacking.append(lacking.empty() ? "" : ", ").append(setting.name);
    else if (setting.name == "touch-panel")
      replay.properties.push_back(*value != 0 ? "reports on" : "reports off");
    else
      replay.properties.push_back(fmt::format("setting {} {}", setting.name, *value));
  }
  if (!lacking.empty())
    replay.unknown.push_back(filled(say("commission", "settings: %1"), {lacking}));
}

/// With the limits and the plan by which the run itself is judged.
ReplaySource sourceOf(Run run, std::optional<measure::Measurement> measurement) {
  if (measurement) {
    measurement->limits = measure::findProfile(run.use)->limits;
    measurement->plan = planOf(run.profile);
  }
  return {std::move(run), std::move(measurement)};
}

/// Not as this user's own folder: it comes from a customer.
Result<ReplaySource> readFolder(const fs::path& path) {
  const fs::path runFile = path / RunFolder::runName;
  const auto text = readWholeFile(runFile, RunFolder::largestRun);
  if (!text) return tl::unexpected(text.error());
  auto run = parseRun(*text, utf8Of(runFile));
  if (!run) return tl::unexpected(run.error());
  const fs::path measurementFile = path / RunFolder::measurementName;
  std::error_code unknown;
  if (!fs::exists(fs::symlink_status(measurementFile, unknown)))
    return ReplaySource{std::move(*run), std::nullopt};
  auto measurement = measure::readMeasurement(measurementFile);
  if (!measurement) return tl::unexpected(measurement.error());
  return sourceOf(std::move(*run), std::move(*measurement));
}

Result<ReplaySource> readBundle(const fs::path& path) {
  const auto bundle = Bundle::open(path);
  if (!bundle) return tl::unexpected(bundle.error());
  auto run = bundle->run();
  if (!run) return tl::unexpected(run.error());
  auto measurement = bundle->measurement();
  if (!measurement) return tl::unexpected(measurement.error());
  return sourceOf(std::move(*run), std::move(*measurement));
}

}  // namespace

Result<ReplaySource> readSource(const fs::path& path) {
  std::error_code unknown;
  const auto found = fs::status(path, unknown);
  if (fs::is_directory(found)) return readFolder(path);
  if (fs::is_regular_file(found)) return readBundle(path);
  return tl::unexpected(FileError{utf8Of(path), 0,
                                  say("commission", "the folder or the bundle of a commissioning"),
                                  fs::exists(found) ? say("commission", "something else")
                                                    : say("commission", "nothing of that name")});
}

Replay replayOf(const ReplaySource& source) {
  const auto& [run, measurement] = source;
  Replay replay;
  describeIdentity(run, replay);
  describeWords(source, replay);
  describeSettings(run, replay);
  if (measurement) replay.size = measurement->size;
  ReplayedPanel panel = measurement ? replayedPanel(*measurement) : ReplayedPanel();
  if (run.rate) panel.rate = run.rate->perSecond;
  describePanel(panel, replay.properties);
  if (!panel.hasError) replay.unknown.push_back(say("commission", "where its touches miss"));
  if (!panel.noise) replay.unknown.push_back(say("commission", "its noise"));
  if (!panel.hasCoverage) replay.unknown.push_back(say("commission", "its dead spots"));
  if (!panel.rate) replay.unknown.push_back(say("commission", "how often it reports"));
  return replay;
}

}  // namespace touch::commission
