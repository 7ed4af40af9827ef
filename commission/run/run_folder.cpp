#include "commission/run/run_folder.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cctype>

#include "commission/run/word.h"
#include "measure/files/json_reader.h"
#include "measure/files/measurement_file.h"
#include "support/text/text_encoding.h"

namespace touch::commission {

namespace {

namespace fs = std::filesystem;
using measure::Json;
using measure::JsonNode;

constexpr std::string_view schema = "touch commissioning";
constexpr int version = 1;
constexpr std::size_t largestFile = std::size_t{300} << 20U;  // a trace may have 256 MB
constexpr std::size_t longestSerialNumber = 40;               // in the name of a folder
constexpr int mostTimes = 1'000'000;
constexpr double fastestRate = 1e6;
constexpr double longestInterval = 1e9;

constexpr Word<StepState> states[] = {
    {"open", StepState::open}, {"done", StepState::done}, {"skipped", StepState::skipped}};
constexpr Word<std::string PanelFacts::*> panelTexts[] = {
    {"serialNumber", &PanelFacts::serialNumber},
    {"operator", &PanelFacts::person},
    {"place", &PanelFacts::place},
    {"order", &PanelFacts::order},
    {"note", &PanelFacts::note}};
constexpr Word<std::string Run::*> runTexts[] = {
    {"use", &Run::use},           {"began", &Run::began},           {"program", &Run::program},
    {"driver", &Run::driver},     {"controller", &Run::controller}, {"unitType", &Run::unitType},
    {"firmware", &Run::firmware},
};
constexpr Word<std::vector<std::string> Run::*> blocks[] = {{"blockBefore", &Run::blockBefore},
                                                            {"blockAfter", &Run::blockAfter}};
constexpr Word<double ReportRate::*> rateNumbers[] = {{"perSecond", &ReportRate::perSecond},
                                                      {"medianMs", &ReportRate::medianMs},
                                                      {"longestMs", &ReportRate::longestMs}};

template <typename Value, std::size_t count>
std::string_view wordOf(const Word<Value> (&words)[count], Value value) {
  return std::ranges::find(words, value, &Word<Value>::value)->name;
}

Json stepsJson(const Run& run) {
  Json json;
  for (const Step& step : steps()) {
    const StepRecord& record = run[step.id];
    json[std::string(step.name)] = {{"state", wordOf(states, record.state)},
                                    {"times", record.times},
                                    {"good", record.found.good},
                                    {"found", record.found.texts},
                                    {"reason", record.reason},
                                    {"ended", record.ended}};
  }
  return json;
}

StepRecord readRecord(const JsonNode& node) {
  StepRecord record;
  node.onlyMembers({"state", "times", "good", "found", "reason", "ended"});
  node.member("state", [&](const JsonNode& state) { record.state = state.oneOf(states); });
  node.member("times", [&](const JsonNode& times) { record.times = times.integer(0, mostTimes); });
  node.member("good", [&](const JsonNode& good) { record.found.good = good.truth(); });
  node.member("found", [&](const JsonNode& found) {
    found.eachItem([&](const JsonNode& text) { record.found.texts.push_back(text.text()); });
  });
  node.member("reason", [&](const JsonNode& reason) { record.reason = reason.text(); });
  node.member("ended", [&](const JsonNode& ended) { record.ended = ended.text(); });
  return record;
}

CalibrationFacts readCalibration(const JsonNode& node) {
  CalibrationFacts facts;
  node.onlyMembers({"targets", "check"});
  node.member("targets", [&](const JsonNode& count) { facts.targets = count.integer(2, 9); });
  node.member("check", [&](const JsonNode& check) { facts.check = check.text(); });
  return facts;
}

ReportRate readRate(const JsonNode& node) {
  ReportRate rate;
  node.onlyMembers({"perSecond", "medianMs", "longestMs"});
  for (const auto& [name, number] : rateNumbers)
    node.member(name, [&, at = number](const JsonNode& value) {
      rate.*at = value.number(0, at == &ReportRate::perSecond ? fastestRate : longestInterval);
    });
  return rate;
}

Run readRun(const JsonNode& file) {
  Run run;
  file.onlyMembers({"schema", "version", "profile", "use", "began", "program", "driver",
                    "controller", "unitType", "firmware", "panel", "settings", "blockBefore",
                    "blockAfter", "calibration", "rate", "steps"});
  file.member("schema", [](const JsonNode& node) {
    if (node.text() != schema) node.refuse(fmt::format("\"{}\"", schema));
  });
  file.member("version", [](const JsonNode& node) {
    if (node.integer(1, mostTimes) != version) node.refuse(fmt::format("version {}", version));
  });
  file.member("profile", [&](const JsonNode& node) { run.profile = node.oneOf(profileNames); });
  for (const auto& [name, text] : runTexts)
    file.member(name, [&, at = text](const JsonNode& node) { run.*at = node.text(); });
  if (measure::findProfile(run.use) == nullptr)
    file.member("use",
                [](const JsonNode& node) { node.refuse("the name of a profile of limits"); });
  file.member("panel", [&](const JsonNode& panel) {
    panel.onlyMembers({"serialNumber", "operator", "place", "order", "note"});
    for (const auto& [name, text] : panelTexts)
      panel.member(name, [&, at = text](const JsonNode& node) { run.panel.*at = node.text(); });
  });
  file.member("settings", [&](const JsonNode& settings) {
    settings.eachMember([&](std::string_view name, const JsonNode& value) {
      run.settings.emplace(name, value.text());
    });
  });
  for (const auto& [name, block] : blocks)
    file.member(name, [&, at = block](const JsonNode& words) {
      words.eachItem([&](const JsonNode& word) { (run.*at).push_back(word.text()); });
    });
  file.optionalMember("calibration",
                      [&](const JsonNode& node) { run.calibration = readCalibration(node); });
  file.optionalMember("rate", [&](const JsonNode& node) { run.rate = readRate(node); });
  file.member("steps", [&](const JsonNode& all) {
    for (const Step& step : steps())
      all.member(step.name, [&](const JsonNode& node) { run[step.id] = readRecord(node); });
  });
  return run;
}

/// What of a serial number can stand in a file's name on every system.
std::string fileNamePart(std::string_view text) {
  std::string part(text.substr(0, longestSerialNumber));
  std::ranges::replace_if(
      part,
      [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 || (std::isalnum(byte) == 0 && c != '-' && c != '_');
      },
      '_');
  return part.empty() ? "panel" : part;
}

std::string stemOf(const Run& run) {
  return fileNamePart(run.panel.serialNumber) + '-' + run.began.substr(0, 10);
}

}  // namespace

std::string runText(const Run& run) {
  Json json{{"schema", schema}, {"version", version}, {"profile", nameOf(run.profile)}};
  for (const auto& [name, text] : runTexts)
    json[std::string(name)] = run.*text;
  Json& panel = json["panel"] = Json::object();
  for (const auto& [name, text] : panelTexts)
    panel[std::string(name)] = run.panel.*text;
  json["settings"] = run.settings;
  for (const auto& [name, block] : blocks)
    json[std::string(name)] = run.*block;
  if (run.calibration)
    json["calibration"] = {{"targets", run.calibration->targets},
                           {"check", run.calibration->check}};
  if (run.rate)
    for (const auto& [name, number] : rateNumbers)
      json["rate"][std::string(name)] = (*run.rate).*number;
  json["steps"] = stepsJson(run);
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

Result<Run> parseRun(std::string_view text, const std::string& name) {
  return measure::readJson<Run>(text, name, readRun);
}

measure::Report reportOf(const Run& run, measure::Measurement measurement) {
  measurement.limits = measure::findProfile(run.use)->limits;
  measurement.plan = planOf(run.profile);
  return measure::reportOf(std::move(measurement));
}

Result<RunFolder> RunFolder::make(const fs::path& base, const Run& run) {
  const std::string stem = stemOf(run);
  std::string name = stem;
  std::error_code unknown;
  for (int number = 2; fs::exists(fs::symlink_status(base / name, unknown)); ++number)
    name = fmt::format("{}-{}", stem, number);
  auto made = OwnFolder::make(base / name);
  if (!made) return tl::unexpected(made.error());
  RunFolder folder(std::move(*made));
  if (const auto saved = folder.save(run); !saved) return tl::unexpected(saved.error());
  return folder;
}

Result<RunFolder> RunFolder::open(const fs::path& path) {
  auto folder = OwnFolder::open(path);
  if (!folder) return tl::unexpected(folder.error());
  return RunFolder(std::move(*folder));
}

bool RunFolder::isNamedAfter(const Run& run) const {
  const std::string name = path().filename().string();
  const std::string stem = stemOf(run);
  if (!name.starts_with(stem)) return false;
  const std::string_view behind = std::string_view(name).substr(stem.size());
  return behind.empty() ||
         (behind.front() == '-' && behind.find_first_not_of("0123456789", 1) == behind.npos);
}

Status RunFolder::save(const Run& run) const {
  return folder_.write(runName, runText(run));
}

Result<Run> RunFolder::run() const {
  const auto text = folder_.read(runName, largestRun);
  if (!text) return tl::unexpected(text.error());
  return parseRun(*text, utf8Of(path() / runName));
}

Status RunFolder::saveMeasurement(const measure::Measurement& measurement) const {
  return folder_.write(measurementName, measure::measurementText(measurement, nullptr));
}

Result<std::optional<measure::Measurement>> RunFolder::measurement() const {
  const auto names = folder_.names();
  if (std::ranges::find(names, measurementName) == names.end()) return std::nullopt;
  const auto text = folder_.read(measurementName, measure::largestMeasurement);
  if (!text) return tl::unexpected(text.error());
  auto read = measure::parseMeasurement(*text, utf8Of(path() / measurementName));
  if (!read) return tl::unexpected(read.error());
  return std::optional(std::move(*read));
}

Status RunFolder::forgetMeasurement() const {
  for (const std::string& name : folder_.names())
    if (name == measurementName || name.starts_with("Tvm-"))
      if (auto removed = folder_.remove(name); !removed) return removed;
  return {};
}

Result<std::optional<measure::Report>> RunFolder::report() const {
  auto stored = measurement();
  if (!stored) return tl::unexpected(stored.error());
  if (!*stored) return std::nullopt;
  const auto begun = run();
  if (!begun) return tl::unexpected(begun.error());
  return std::optional(reportOf(*begun, std::move(**stored)));
}

Result<RunFolder> RunFolder::copyTo(const fs::path& base, const Run& run) const {
  auto made = make(base, run);
  if (!made) return made;
  for (const std::string& name : folder_.names()) {
    if (name == runName) continue;
    const auto content = folder_.read(name, largestFile);
    if (!content) return tl::unexpected(content.error());
    if (auto kept = made->write(name, *content); !kept) return tl::unexpected(kept.error());
  }
  return made;
}

Status RunFolder::discard() const {
  // Without its run it is no run's folder any more, however far this comes.
  if (auto removed = folder_.remove(runName); !removed) return removed;
  for (const std::string& name : folder_.names())
    if (auto removed = folder_.remove(name); !removed) return removed;
  std::error_code notEmpty;
  fs::remove(path(), notEmpty);
  return {};
}

Status RunFolder::write(const std::string& name, std::string_view content) const {
  return folder_.write(name, content);
}

Result<std::string> RunFolder::read(const std::string& name) const {
  return folder_.read(name, largestFile);
}

const UnfinishedRun* UnfinishedRuns::of(std::string_view serialNumber) const {
  const auto found = std::ranges::find(runs, serialNumber, [](const UnfinishedRun& one) {
    return std::string_view(one.run.panel.serialNumber);
  });
  return found == runs.end() ? nullptr : &*found;
}

UnfinishedRuns unfinishedRuns(const fs::path& base) {
  UnfinishedRuns found;
  std::error_code failed;
  for (const auto& entry : fs::directory_iterator(base, failed)) {
    const auto folder = RunFolder::open(entry.path());
    if (!folder) continue;
    std::error_code unknown;
    if (!fs::exists(fs::symlink_status(entry.path() / RunFolder::runName, unknown))) continue;
    auto run = folder->run();
    if (!run)
      found.damaged.push_back(run.error());
    else if (nextStep(*run))
      found.runs.push_back({entry.path(), std::move(*run)});
  }
  std::ranges::sort(found.runs, std::greater{},
                    [](const UnfinishedRun& one) { return one.run.began; });
  return found;
}

}  // namespace touch::commission
