#include "console/parameters/backup.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "console/parameters/vrq_file.h"
#include "support/files/own_folder.h"
#include "support/text/hex.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

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

}  // namespace

// Names come from the driver: what is no letter, digit or hyphen could lead out of the folder or
// not be a file name.
std::string Backup::fileNamePart(std::string_view controller) {
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

Result<fs::path> Backup::keep(const std::string& controller, const ParameterBlock& block) const {
  const auto folder = OwnFolder::openOrMake(folder_);
  if (!folder) return tl::unexpected(folder.error());
  const auto name =
      folder->add(fileNameTime(now_()) + '-' + fileNamePart(controller), ".vrq", vrqText(block));
  if (!name) return tl::unexpected(name.error());
  return folder_ / *name;
}

Status Backup::tryOut() const {
  std::error_code failed;
  if (!fs::exists(fs::symlink_status(folder_, failed))) return {};
  const auto folder = OwnFolder::open(folder_);
  if (!folder) return tl::unexpected(folder.error());
  if (fs::exists(fs::symlink_status(journalFile(), failed))) {
    const auto journal = folder->openFile(journalName, OwnFolder::Opening::append);
    if (!journal) return tl::unexpected(journal.error());
  }
  return folder->tryOut();
}

Status Backup::prepare() const {
  const auto folder = OwnFolder::openOrMake(folder_);
  if (!folder) return tl::unexpected(folder.error());
  return tryOut();
}

Status Backup::note(const std::string& controller, const WordChange& change, Stage stage) const {
  constexpr std::array<std::string_view, 3> stages = {"begun", "written", "failed"};
  const auto folder = OwnFolder::openOrMake(folder_);
  if (!folder) return tl::unexpected(folder.error());
  return folder->appendLine(
      journalName, utcText(now_()) + '\t' + printable(controller) + '\t' + hexByte(change.address) +
                       '\t' + wordText(change.before) + '\t' + wordText(change.after) + '\t' +
                       std::string(stages[static_cast<std::size_t>(stage)]));
}

}  // namespace touch
