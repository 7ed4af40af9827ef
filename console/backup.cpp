#include "console/backup.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "console/vrq_file.h"
#include "core/hex.h"
#include "core/language.h"
#include "core/text_encoding.h"
#include "core/whole_file.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longestControllerName = 32;

/// "2026-12-31T23:59:59Z"
std::string utcText(Backup::TimePoint time) {
  using namespace std::chrono;
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(floor<seconds>(time) - day);
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text.data();
}

/// "20261231-235959"
std::string fileNameTime(Backup::TimePoint time) {
  std::string text = utcText(time);
  std::erase_if(text, [](char c) { return c == '-' || c == ':' || c == 'Z'; });
  std::replace(text.begin(), text.end(), 'T', '-');
  return text;
}

/// Names come from the driver: what is no letter, digit or hyphen could lead out of the folder or
/// not be a file name.
std::string fileNamePart(std::string_view controller) {
  std::string part(controller.substr(0, longestControllerName));
  std::replace_if(
      part.begin(), part.end(),
      [](char c) {
        return !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                 c == '-');
      },
      '_');
  return part;
}

}  // namespace

std::optional<FileError> Backup::makeFolder() const {
  std::error_code failed;
  fs::create_directories(folder_, failed);
  if (!failed) return std::nullopt;
  return FileError{folder_.string(), 0, say("console", "a folder that can be written"),
                   failed.message()};
}

Result<fs::path, FileError> Backup::keep(const std::string& controller,
                                         const ParameterBlock& block) const {
  if (auto failed = makeFolder()) return *failed;
  const std::string name = fileNameTime(now_()) + '-' + fileNamePart(controller);
  fs::path file = folder_ / (name + ".vrq");
  std::error_code ignored;
  for (int i = 2; fs::exists(fs::symlink_status(file, ignored)); ++i) {
    file = folder_ / (name + '-' + std::to_string(i) + ".vrq");
  }
  if (auto failed = saveVrq(file, block)) return *failed;
  return file;
}

std::optional<FileError> Backup::note(const std::string& controller, const WordChange& change,
                                      Stage stage) const {
  constexpr std::array<std::string_view, 3> stages = {"begun", "written", "failed"};
  if (auto failed = makeFolder()) return failed;
  return appendLine(journalFile(), utcText(now_()) + '\t' + printable(controller) + '\t' +
                                       hexByte(change.address) + '\t' + wordText(change.before) +
                                       '\t' + wordText(change.after) + '\t' +
                                       std::string(stages[static_cast<std::size_t>(stage)]));
}

}  // namespace touch
