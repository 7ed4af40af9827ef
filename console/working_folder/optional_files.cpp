#include "console/working_folder/optional_files.h"

#include <array>
#include <string_view>

#include "console/settings/touch_settings.h"
#include "console/working_folder/picture_file.h"
#include "core/messages/messages.h"
#include "reports/report_format.h"
#include "support/files/whole_file.h"
#include "support/text/language.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

/// The error says what is wrong, without a full stop.
using Check = Result<void, std::string>;

template <typename T>
Check checkOf(const Result<T>& read) {
  if (!read) return tl::unexpected(read.error().describe());
  return {};
}

Check checkMessages(const fs::path& file) {
  return checkOf(loadMessages(file.parent_path()));
}

Check checkFormats(const fs::path& file) {
  std::error_code ignored;
  if (!fs::exists(file, ignored)) {
    return tl::unexpected(
        FileError{file.string(), 0, say("main", "a file"), say("main", "none")}.describe());
  }
  const std::string problems = describeProblems(rdformad(file.parent_path()));
  if (problems.empty()) return {};
  std::string complaint;
  for (const std::string_view line : linesOf(problems))
    complaint.append(complaint.empty() ? "" : "; ").append(line);
  // A complaint has no full stop of its own; the count of many problems is a sentence.
  if (complaint.ends_with('.')) complaint.pop_back();
  return tl::unexpected(complaint);
}

Check checkPicture(const fs::path& file) {
  return checkOf(readPicture(file));
}

Check checkNote(const fs::path& file) {
  return checkOf(readWholeFile(file, largestCursorNote));
}

struct Kind {
  std::string_view name;
  Check (*check)(const fs::path& file);
  std::string_view effect;
  std::string_view effectWhenDamaged;
};

constexpr std::array kinds = {
    Kind{"errmsg.txt", checkMessages, marked("main", "Its texts replace the built-in ones."),
         marked("main", "touchutility does not start with it, and touchctl does nothing more.")},
    Kind{"zevrik.fmt", checkFormats, marked("main", "It adds forms of touch reports."),
         marked("main", "Those lines are left out: touch reports of their form are not decoded.")},
    Kind{"pic01.jpg", checkPicture, marked("main", "It is shown in the main window."),
         marked("main", "It is not shown.")},
    Kind{"Zevrik.ico", checkPicture, marked("main", "It is the main window's icon."),
         marked("main", "It is not shown.")},
    Kind{"cursoroff.txt", checkNote, marked("main", "It is shown on \"Hide Cursor\"."),
         marked("main", "It is not shown.")},
};

/// A link that leads nowhere is there as well: its user believes that the file is.
bool isThere(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(file, ignored));
}

/// The icon's name may be written in small letters.
fs::path fileOf(const Kind& kind, const fs::path& folder) {
  const auto file = folder / kind.name;
  return kind.name == "Zevrik.ico" && !isThere(file) ? folder / "zevrik.ico" : file;
}

}  // namespace

std::vector<OptionalFile> examineOptionalFiles(const fs::path& workFolder) {
  std::vector<OptionalFile> files;
  for (const Kind& kind : kinds) {
    const auto path = fileOf(kind, workFolder);
    OptionalFile file{std::string(kind.name), false, kind.check != checkPicture, {}, {}};
    if (isThere(path)) {
      file.there = true;
      const Check checked = kind.check(path);
      if (!checked) file.complaint = checked.error();
      file.effect = say("main", checked ? kind.effect : kind.effectWhenDamaged);
    }
    files.push_back(std::move(file));
  }
  return files;
}

}  // namespace touch
