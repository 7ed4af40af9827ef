#include "measure/files/measurement_file.h"

#include <algorithm>
#include <array>

#include "support/files/whole_file.h"

namespace touch::measure {

namespace {

constexpr std::string_view measurementSchema = "touch measurement";
constexpr std::string_view limitsSchema = "touch limits";
constexpr int version = 1;

constexpr std::size_t largestLimits = std::size_t{64} << 10U;
constexpr std::size_t mostTraces = 50'000;
constexpr double mostSteps = 1e9;
constexpr double longestTime = 1e6;    // seconds
constexpr double largestPanel = 5000;  // mm
constexpr double farthest = 1e6;       // mm or percent

template <typename Value>
struct Word {
  std::string_view name;
  Value value;
};
constexpr Word<SourceKind> sourceKinds[] = {{"pointer", SourceKind::pointer},
                                            {"reports", SourceKind::reports}};
constexpr Word<SizeSource> sizeSources[] = {{"screen data", SizeSource::screenData},
                                            {"user", SizeSource::user},
                                            {"nominal", SizeSource::nominal}};
constexpr Word<Blame> blames[] = {
    {"undecided", Blame::undecided}, {"panel", Blame::panel}, {"hand", Blame::hand}};
constexpr Word<LineSet> lineSets[] = {
    {"ten", LineSet::ten}, {"eighteen", LineSet::eighteen}, {"full", LineSet::full}};
constexpr Word<bool Plan::*> tests[] = {{"lines", &Plan::lines},
                                        {"taps", &Plan::taps},
                                        {"rest", &Plan::rest},
                                        {"coverage", &Plan::coverage}};
constexpr Word<std::string Conditions::*> conditionTexts[] = {
    {"panel", &Conditions::panel},       {"serialNumber", &Conditions::serialNumber},
    {"screen", &Conditions::screen},     {"controller", &Conditions::controller},
    {"firmware", &Conditions::firmware}, {"unitType", &Conditions::unitType},
    {"program", &Conditions::program},   {"date", &Conditions::date},
    {"operator", &Conditions::person},
};

template <typename Value, std::size_t count>
std::string_view wordOf(const Word<Value> (&words)[count], Value value) {
  return std::ranges::find(words, value, &Word<Value>::value)->name;
}

void readHead(const JsonNode& file, std::string_view schema) {
  file.member("schema", [&](const JsonNode& node) {
    if (node.text() != schema) node.refuse(fmt::format("\"{}\"", schema));
  });
  file.member("version", [](const JsonNode& node) {
    if (node.integer(1, 1'000'000) != version) node.refuse(fmt::format("version {}", version));
  });
}

Json limitsJson(const Limits& limits) {
  Json json;
  for (std::size_t i = 0; i < lengthCount; ++i) {
    Json& limit = json[std::string(nameOf(static_cast<Length>(i)).name)] = Json::object();
    if (limits.lengths[i].mm) limit["mm"] = limits.lengths[i].mm->value;
    if (limits.lengths[i].percent) limit["percent"] = limits.lengths[i].percent->value;
  }
  json["coveragePercent"] = limits.coverage.value;
  json["rubbedPercent"] = limits.rubbed.value;
  json["samples"] = limits.samples;
  json["edgeZoneMm"] = limits.edgeZone.value;
  json["restSeconds"] = limits.rest.count();
  json["missedTaps"] = limits.missedTaps;
  json["doubleTaps"] = limits.doubleTaps;
  return json;
}

LengthLimit readLength(const JsonNode& node) {
  LengthLimit limit;
  node.onlyMembers({"mm", "percent"});
  node.optionalMember(
      "mm", [&](const JsonNode& length) { limit.mm = Millimetres{length.number(0, farthest)}; });
  node.optionalMember("percent", [&](const JsonNode& percent) {
    limit.percent = Percent{percent.number(0, farthest)};
  });
  if (!limit.mm && !limit.percent) node.refuse("\"mm\", \"percent\" or both");
  return limit;
}

/// Members that are there take the place of what `limits` holds; `others` are none of them.
void readLimitMembers(const JsonNode& node, Limits& limits,
                      std::initializer_list<std::string_view> others) {
  constexpr int many = 1'000'000;
  node.eachMember([&](std::string_view name, const JsonNode& member) {
    for (std::size_t i = 0; i < lengthCount; ++i)
      if (nameOf(static_cast<Length>(i)).name == name) {
        limits.lengths[i] = readLength(member);
        return;
      }
    if (name == "coveragePercent")
      limits.coverage = Percent{member.number(0, 100)};
    else if (name == "rubbedPercent")
      limits.rubbed = Percent{member.number(0, 100)};
    else if (name == "samples")
      limits.samples = member.integer(4, many);
    else if (name == "edgeZoneMm")
      limits.edgeZone = Millimetres{member.number(0, farthest)};
    else if (name == "restSeconds")
      limits.rest = Seconds(member.number(0, longestTime));
    else if (name == "missedTaps")
      limits.missedTaps = member.integer(0, many);
    else if (name == "doubleTaps")
      limits.doubleTaps = member.integer(0, many);
    else if (std::ranges::find(others, name) == others.end())
      member.refuse("the name of a limit");
  });
}

Json conditionsJson(const Measurement& measurement) {
  Json json;
  for (const auto& [name, text] : conditionTexts)
    json[std::string(name)] = measurement.conditions.*text;
  json["settings"] = measurement.conditions.settings;
  json["parameterWords"] = measurement.conditions.parameterWords;
  json["size"] = {{"widthMm", measurement.size.width.value},
                  {"heightMm", measurement.size.height.value},
                  {"source", wordOf(sizeSources, measurement.size.source)}};
  return json;
}

void readConditions(const JsonNode& node, Measurement& measurement) {
  Conditions& conditions = measurement.conditions;
  node.onlyMembers({"panel", "serialNumber", "screen", "controller", "firmware", "unitType",
                    "program", "date", "operator", "settings", "parameterWords", "size"});
  for (const auto& [name, text] : conditionTexts)
    node.optionalMember(name,
                        [&, at = text](const JsonNode& member) { conditions.*at = member.text(); });
  node.optionalMember("settings", [&](const JsonNode& settings) {
    settings.eachMember([&](std::string_view name, const JsonNode& value) {
      conditions.settings.emplace(name, value.text());
    });
  });
  node.optionalMember("parameterWords", [&](const JsonNode& words) {
    words.eachItem([&](const JsonNode& word) { conditions.parameterWords.push_back(word.text()); });
  });
  node.member("size", [&](const JsonNode& size) {
    size.onlyMembers({"widthMm", "heightMm", "source"});
    size.member("widthMm", [&](const JsonNode& width) {
      measurement.size.width = Millimetres{width.number(1, largestPanel)};
    });
    size.member("heightMm", [&](const JsonNode& height) {
      measurement.size.height = Millimetres{height.number(1, largestPanel)};
    });
    size.member("source", [&](const JsonNode& source) {
      measurement.size.source = source.oneOf(sizeSources);
    });
  });
}

Json planJson(const Plan& plan) {
  Json chosen = Json::array();
  for (const auto& [name, member] : tests)
    if (plan.*member) chosen.push_back(name);
  return {{"tests", chosen},
          {"lineSet", wordOf(lineSets, plan.lineSet)},
          {"tapTargets", plan.tapTargets}};
}

Plan readPlan(const JsonNode& node) {
  Plan plan;
  node.onlyMembers({"tests", "lineSet", "tapTargets"});
  node.member("tests", [&](const JsonNode& names) {
    plan.lines = false;
    names.eachItem([&](const JsonNode& name) { plan.*name.oneOf(tests) = true; });
  });
  node.member("lineSet", [&](const JsonNode& set) { plan.lineSet = set.oneOf(lineSets); });
  node.member("tapTargets", [&](const JsonNode& count) {
    plan.tapTargets = count.integer(9, 25);
    if (plan.tapTargets != 9 && plan.tapTargets != 25) count.refuse("9 or 25");
  });
  return plan;
}

Json sourceJson(const Source& source) {
  return {{"kind", wordOf(sourceKinds, source.kind)},
          {"steps", {source.stepsX, source.stepsY}},
          {"timed", source.timed},
          {"from", source.from}};
}

/// `count` numbers in an array, each handed to `take` with its place.
template <typename Take>
void readNumbers(const JsonNode& node, std::size_t count, double most, const Take& take) {
  std::size_t place = 0;
  node.eachItem([&](const JsonNode& item) {
    if (place < count) take(place, item.number(-most, most));
    ++place;
  });
  if (place != count) node.refuse(fmt::format("{} numbers", count));
}

Source readSource(const JsonNode& node) {
  Source source;
  node.onlyMembers({"kind", "steps", "timed", "from"});
  node.member("kind", [&](const JsonNode& kind) { source.kind = kind.oneOf(sourceKinds); });
  node.member("steps", [&](const JsonNode& steps) {
    readNumbers(steps, 2, mostSteps, [&](std::size_t place, double value) {
      (place == 0 ? source.stepsX : source.stepsY) = value;
    });
    if (source.stepsX < 1 || source.stepsY < 1) steps.refuse("numbers from 1 on");
  });
  node.member("timed", [&](const JsonNode& timed) { source.timed = timed.truth(); });
  node.optionalMember("from", [&](const JsonNode& from) { source.from = from.text(); });
  return source;
}

Json traceJson(const Trace& trace) {
  Json samples = Json::array();
  for (const Sample& sample : trace.samples)
    samples.push_back({sample.time.count(), sample.x, sample.y});
  return {{"task", trace.task},
          {"source", trace.source},
          {"blame", wordOf(blames, trace.blame)},
          {"samples", std::move(samples)}};
}

Trace readTrace(const JsonNode& node, std::size_t sources) {
  Trace trace;
  node.onlyMembers({"task", "source", "blame", "samples"});
  node.member("task", [&](const JsonNode& task) {
    trace.task = task.text();
    if (!isTask(trace.task)) task.refuse("the name of a line or target");
  });
  node.member("source", [&](const JsonNode& source) {
    if (sources == 0) return source.refuse("a source in \"sources\"");
    trace.source = static_cast<std::size_t>(source.integer(0, static_cast<int>(sources) - 1));
  });
  node.member("blame", [&](const JsonNode& blame) { trace.blame = blame.oneOf(blames); });
  node.member("samples", [&](const JsonNode& samples) {
    samples.eachItem([&](const JsonNode& item) {
      std::array<double, 3> values{};
      readNumbers(item, values.size(), mostSteps,
                  [&](std::size_t place, double value) { values[place] = value; });
      trace.samples.push_back({Seconds(values[0]), values[1], values[2]});
    });
  });
  return trace;
}

}  // namespace

std::string measurementText(const Measurement& measurement, const Json& verdict) {
  Json sources = Json::array();
  for (const Source& source : measurement.sources)
    sources.push_back(sourceJson(source));
  Json json{{"schema", measurementSchema},
            {"version", version},
            {"conditions", conditionsJson(measurement)},
            {"plan", planJson(measurement.plan)},
            {"limits", limitsJson(measurement.limits)},
            {"verdict", verdict},
            {"sources", sources},
            {"traces", Json::array()}};
  // A line for each trace: readable, and no line for each number.
  std::string text = json.dump(2, ' ', true);
  constexpr std::string_view end = "[]\n}";
  text.resize(text.size() - end.size());
  std::string_view before = "[\n    ";
  for (const Trace& trace : measurement.traces) {
    text.append(before).append(traceJson(trace).dump(-1, ' ', true));
    before = ",\n    ";
  }
  return text + (measurement.traces.empty() ? "[]\n}\n" : "\n  ]\n}\n");
}

Result<Measurement> parseMeasurement(std::string_view text, const std::string& name) {
  return readJson<Measurement>(text, name, [](const JsonNode& file) {
    Measurement measurement;
    readHead(file, measurementSchema);
    file.onlyMembers(
        {"schema", "version", "conditions", "plan", "limits", "verdict", "sources", "traces"});
    file.member("conditions", [&](const JsonNode& node) { readConditions(node, measurement); });
    file.member("plan", [&](const JsonNode& node) { measurement.plan = readPlan(node); });
    file.member("limits",
                [&](const JsonNode& node) { readLimitMembers(node, measurement.limits, {}); });
    file.member("sources", [&](const JsonNode& node) {
      node.eachItem(
          [&](const JsonNode& source) { measurement.sources.push_back(readSource(source)); });
    });
    file.member("traces", [&](const JsonNode& node) {
      node.eachItem([&](const JsonNode& trace) {
        if (measurement.traces.size() == mostTraces)
          return node.refuse(fmt::format("at most {} traces", mostTraces));
        measurement.traces.push_back(readTrace(trace, measurement.sources.size()));
      });
    });
    return measurement;
  });
}

Result<Measurement> readMeasurement(const std::filesystem::path& file) {
  const auto text = readWholeFile(file, largestMeasurement);
  if (!text) return tl::unexpected(text.error());
  return parseMeasurement(*text, file.string());
}

Status writeMeasurement(const std::filesystem::path& file, const Measurement& measurement,
                        const Json& verdict) {
  const std::string text = measurementText(measurement, verdict);
  if (text.size() > largestMeasurement || measurement.traces.size() > mostTraces)
    return tl::unexpected(FileError{file.string(), 0,
                                    fmt::format("a measurement of at most {} bytes and {} strokes",
                                                largestMeasurement, mostTraces),
                                    "more"});
  return writeWholeFile(file, text);
}

std::string limitsText(const Limits& limits) {
  Json json{{"schema", limitsSchema}, {"version", version}};
  json.update(limitsJson(limits));
  return json.dump(2) + '\n';
}

Result<Limits> parseLimits(std::string_view text, const std::string& name) {
  return readJson<Limits>(text, name, [](const JsonNode& file) {
    Limits limits = profiles().front().limits;
    readHead(file, limitsSchema);
    file.optionalMember("profile", [&](const JsonNode& node) {
      const Profile* profile = findProfile(node.text());
      if (profile)
        limits = profile->limits;
      else
        node.refuse("one of \"industrial\", \"kiosk\", \"signature\"");
    });
    readLimitMembers(file, limits, {"schema", "version", "profile"});
    return limits;
  });
}

Result<Limits> readLimits(const std::filesystem::path& file) {
  const auto text = readWholeFile(file, largestLimits);
  if (!text) return tl::unexpected(text.error());
  return parseLimits(*text, file.string());
}

}  // namespace touch::measure
