#include "commission/bundle/bundle.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>
#include <map>

#include "measure/files/json_reader.h"
#include "measure/files/measurement_file.h"
#include "support/files/sha256.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"
#include "support/text/personal_names.h"
#include "support/text/text_encoding.h"

namespace touch::commission {

namespace {

namespace fs = std::filesystem;
using measure::Json;

constexpr std::size_t largestBundle = std::size_t{512} << 20U;
constexpr std::size_t mostProblems = 20;  // of one file; the rest is counted
constexpr std::size_t hashLength = 64;

/// What a run's folder holds that is handed over, by the beginning and the end of its name.
struct Kind {
  std::string_view begins;
  std::string_view ends;
  bool isText = true;
};
constexpr Kind kinds[] = {
    {RunFolder::runName, ""},
    {RunFolder::measurementName, ""},
    {RunFolder::sheetName, ".pdf", false},
    {RunFolder::sheetName, ".html"},
    {RunFolder::sheetName, ".json"},
    {RunFolder::doctorName, ".txt"},
    {RunFolder::doctorName, ".json"},
    {RunFolder::traceName, ".jsonl"},
    {RunFolder::recordingName, ".txt"},
    {"Tvm-", ".txt"},
};

const Kind* kindOf(std::string_view name) {
  const auto found = std::ranges::find_if(kinds, [name](const Kind& kind) {
    return name.starts_with(kind.begins) && name.ends_with(kind.ends);
  });
  return found == std::end(kinds) || name.ends_with(unfinishedEnding) ? nullptr : found;
}

std::string blockText(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    text += word + "\r\n";
  return text;
}

/// What stands in a bundle beside the run, for those who need only that.
std::map<std::string, std::string> excerptsOf(const Run& run) {
  std::map<std::string, std::string> files{
      {"limits.json", measure::limitsText(measure::findProfile(run.use)->limits)},
      {"settings.json", Json(run.settings).dump(2) + '\n'}};
  if (!run.blockBefore.empty()) files["block-before.vrq"] = blockText(run.blockBefore);
  if (!run.blockAfter.empty()) files["block-after.vrq"] = blockText(run.blockAfter);
  return files;
}

/// As `sha256sum` writes and reads it.
std::string manifestOf(const std::vector<ZipEntry>& entries) {
  std::string text;
  for (const ZipEntry& entry : entries)
    text += sha256(entry.content) + "  " + entry.name + '\n';
  return text;
}

/// Where two values differ, as "path is X; it comes to Y". Numbers that differ by no more than
/// another processor's rounding are the same.
class Differences {
 public:
  std::vector<std::string> between(const Json& said, const Json& computed) {
    compare(said, computed, "");
    if (count_ > mostProblems)
      found_.push_back(
          filled(say("commission", "and %1 more places"), {std::to_string(count_ - mostProblems)}));
    return std::move(found_);
  }

 private:
  void compare(const Json& said, const Json& computed, const std::string& path) {
    if (said.is_number() && computed.is_number()) {
      const double a = said.get<double>();
      const double b = computed.get<double>();
      if (std::abs(a - b) > 1e-9 + 1e-7 * std::abs(b)) differ(said, computed, path);
    } else if (said.is_object() && computed.is_object()) {
      compareMembers(said, computed, path);
    } else if (said.is_array() && computed.is_array() && said.size() == computed.size()) {
      for (std::size_t i = 0; i < said.size(); ++i)
        compare(said[i], computed[i], fmt::format("{}[{}]", path, i));
    } else if (said != computed) {
      differ(said, computed, path);
    }
  }

  static std::string placeOf(const std::string& path, const std::string& name) {
    return path.empty() ? name : fmt::format("{}.{}", path, name);
  }

  void compareMembers(const Json& said, const Json& computed, const std::string& path) {
    for (const auto& [name, value] : computed.items()) {
      const std::string place = placeOf(path, name);
      const auto found = said.find(name);
      // These are sentences in the language of whoever made the sheet.
      if (name == "reason" || name == "remarks") {
        if (found == said.end() || found->empty() != value.empty() ||
            (value.is_array() && found->size() != value.size()))
          differ(found == said.end() ? Json() : *found, value, place);
      } else if (found == said.end()) {
        differ(Json(), value, place);
      } else {
        compare(*found, value, place);
      }
    }
    for (const auto& [name, value] : said.items())
      if (!computed.contains(name)) differ(value, Json(), placeOf(path, name));
  }

  void differ(const Json& said, const Json& computed, const std::string& path) {
    if (++count_ > mostProblems) return;
    const auto shown = [](const Json& value) {
      if (value.is_string()) return foundText(value.get<std::string>());
      constexpr std::size_t longest = 40;
      return value.dump(-1, ' ', true, Json::error_handler_t::replace).substr(0, longest);
    };
    found_.push_back(filled(say("commission", "%1 is %2, but comes to %3"),
                            {path, shown(said), shown(computed)}));
  }

  std::vector<std::string> found_;
  std::size_t count_ = 0;
};

/// Which of the files is not as the manifest says, is missing, or is not in it.
void checkHashes(const ZipReader& files, std::vector<std::string>& problems) {
  const auto manifest = files.content(Bundle::manifestName);
  if (!manifest) return problems.push_back(manifest.error().describe());
  std::map<std::string, std::string, std::less<>> hashes;
  int number = 0;
  for (const std::string_view line : linesOf(*manifest)) {
    ++number;
    const bool isWhole = line.size() > hashLength + 2 && line.substr(hashLength, 2) == "  ";
    if (!isWhole || !hashes.emplace(line.substr(hashLength + 2), line.substr(0, hashLength)).second)
      problems.push_back(FileError{Bundle::manifestName, number,
                                   say("commission", "a hash and a name that stands once"),
                                   foundText(line)}
                             .describe());
  }
  for (const std::string& name : files.names()) {
    if (name == Bundle::manifestName) continue;
    const auto known = hashes.find(name);
    if (known == hashes.end()) {
      problems.push_back(
          filled(say("commission", "%1 was added: the manifest does not name it"), {name}));
      continue;
    }
    const auto content = files.content(name);
    if (!content)
      problems.push_back(content.error().describe());
    else if (sha256(*content) != known->second)
      problems.push_back(filled(say("commission", "%1 was changed: its hash is another"), {name}));
    hashes.erase(known);
  }
  for (const auto& [name, hash] : hashes)
    problems.push_back(filled(say("commission", "%1 was removed"), {name}));
}

/// What can be made anew from the run and its samples has to come out as it is.
void checkContents(const Bundle& bundle, const Run& run, const measure::Report* report,
                   std::string_view program, BundleCheck& check) {
  const ZipReader& files = bundle.files();
  for (const auto& [name, made] : excerptsOf(run)) {
    const auto there = files.content(name);
    if (!there)
      check.problems.push_back(there.error().describe());
    else if (*there != made)
      check.problems.push_back(
          filled(say("commission", "%1 is not what the run and its use come to"), {name}));
  }

  const auto said = bundle.sheet();
  if (!said) {
    check.problems.push_back(said.error().describe());
  } else {
    for (const std::string& difference : Differences().between(*said, sheetJson(run, report)))
      check.problems.push_back("sheet.json: " + difference);
  }

  const std::string html = sheetHtml(sheetOf(run, report), report);
  const auto page = files.content("sheet.html");
  if (!page) {
    check.problems.push_back(page.error().describe());
  } else if (run.program != program || !page->starts_with(html.substr(0, html.find("<head>")))) {
    check.notes.push_back(say(
        "commission", "sheet.html is of another version or language: only its hash was checked"));
  } else if (*page != html) {
    check.problems.push_back(say("commission", "sheet.html is not what the samples come to"));
  }
  if (files.holds("sheet.pdf"))
    check.notes.push_back(say("commission", "sheet.pdf: only its hash was checked"));
}

}  // namespace

fs::path bundleOf(const RunFolder& folder) {
  fs::path file = folder.path();
  file += bundleEnding;
  return file;
}

Result<fs::path> writeBundle(const RunFolder& folder, const Run& run) {
  const PersonalNames personal = personalNames();
  std::vector<ZipEntry> entries;
  for (const std::string& name : folder.names()) {
    const Kind* const kind = kindOf(name);
    if (kind == nullptr) continue;
    auto content = name == RunFolder::runName ? runText(run) : folder.read(name);
    if (!content) return tl::unexpected(content.error());
    entries.push_back(
        {name, kind->isText ? withoutPersonalNames(*content, personal) : std::move(*content)});
  }
  for (auto& [name, content] : excerptsOf(run))
    entries.push_back({name, withoutPersonalNames(content, personal)});
  std::ranges::sort(entries, {}, &ZipEntry::name);
  entries.push_back({Bundle::manifestName, manifestOf(entries)});
  const fs::path file = bundleOf(folder);
  auto written = writeWholeFile(file, zipArchive(entries, std::chrono::system_clock::now()));
  if (!written) return tl::unexpected(written.error());
  return file;
}

Result<Bundle> Bundle::open(const fs::path& file) {
  auto bytes = readWholeFile(file, largestBundle);
  if (!bytes) return tl::unexpected(bytes.error());
  auto files = ZipReader::open(std::move(*bytes), utf8Of(file), {});
  if (!files) return tl::unexpected(files.error());
  return Bundle(std::move(*files), utf8Of(file));
}

std::string Bundle::nameOf(std::string_view file) const {
  return fmt::format("{}: {}", name_, file);
}

Result<Run> Bundle::run() const {
  const auto text = files_.content(RunFolder::runName);
  if (!text) return tl::unexpected(text.error());
  return parseRun(*text, nameOf(RunFolder::runName));
}

Result<std::optional<measure::Measurement>> Bundle::measurement() const {
  if (!files_.holds(RunFolder::measurementName)) return std::nullopt;
  const auto text = files_.content(RunFolder::measurementName);
  if (!text) return tl::unexpected(text.error());
  auto read = measure::parseMeasurement(*text, nameOf(RunFolder::measurementName));
  if (!read) return tl::unexpected(read.error());
  return std::optional(std::move(*read));
}

Result<Json> Bundle::sheet() const {
  const auto text = files_.content("sheet.json");
  if (!text) return tl::unexpected(text.error());
  return measure::parseJson(*text, nameOf("sheet.json"));
}

Result<BundleCheck> verifyBundle(const Bundle& bundle, std::string_view program) {
  BundleCheck check;
  checkHashes(bundle.files(), check.problems);
  auto run = bundle.run();
  if (!run) return tl::unexpected(run.error());
  auto measurement = bundle.measurement();
  if (!measurement) return tl::unexpected(measurement.error());
  std::optional<measure::Report> report;
  if (*measurement) report = reportOf(*run, std::move(**measurement));
  const measure::Report* const made = report ? &*report : nullptr;
  checkContents(bundle, *run, made, program, check);
  check.judged = judgeRun(*run, made);
  check.run = std::move(*run);
  return check;
}

}  // namespace touch::commission
