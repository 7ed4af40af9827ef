#include "console/parameters/kept_calibration.h"

#include "console/parameters/parameter_block.h"
#include "console/parameters/vrq_file.h"
#include "core/exchange/exchange.h"
#include "support/files/own_folder.h"
#include "support/files/whole_file.h"
#include "support/prompt.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestNote = 4096;
constexpr std::size_t wordsInBlock = std::tuple_size_v<ParameterBlock>;
// A line may lose an answer now and then; what fails three times fails for good.
constexpr int putBackAttempts = 3;

std::string noteName(const std::string& controller) {
  return "unchecked-" + Backup::fileNamePart(controller) + ".txt";
}

/// A lock keeps words from being written, and so would a controller that is still in its
/// calibration.
void resetQuietly(const Access& access) {
  Connection connection(access);
  connection.flush();
  ask(connection, access.clock, commandFrame("R"), {.wait = commandWait, .tries = 2});
}

}  // namespace

std::string uncheckedText(const UncheckedCalibration& unchecked) {
  return unchecked.controller + "\r\n" + vrqText(unchecked.before) +
         (unchecked.after ? vrqText(*unchecked.after) : "");
}

Result<UncheckedCalibration> parseUnchecked(std::string_view text, const std::string& name) {
  const auto lines = linesOf(text);
  const auto failure = [&name](std::size_t line, std::string expected, std::string found) {
    return tl::unexpected(
        FileError{name, static_cast<int>(line), std::move(expected), std::move(found)});
  };
  const bool hasAfter = lines.size() == 1 + 2 * wordsInBlock;
  if (!hasAfter && lines.size() != 1 + wordsInBlock) {
    return failure(0, say("parameters", "a name and 8 or 16 words, one a line"),
                   filled(say("parameters", "%1 lines"), {std::to_string(lines.size())}));
  }
  UncheckedCalibration unchecked{std::string(lines[0]), {}, {}};
  if (hasAfter) unchecked.after.emplace();
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const auto word = parseWord(lines[i]);
    if (!word)
      return failure(i + 1, say("parameters", "four hexadecimal digits"), foundText(lines[i]));
    ParameterBlock& block = i <= wordsInBlock ? unchecked.before : *unchecked.after;
    block[(i - 1) % wordsInBlock] = *word;
  }
  return unchecked;
}

KeptCalibration::KeptCalibration(const Access& access, Backup backup)
    : access_(access), backup_(std::move(backup)) {
  const auto block = readBlock(access_);
  if (!block) {
    whyNone_ = filled(say("parameters",
                          "The calibration from before is not kept: this controller does not let "
                          "its parameters be read. %1."),
                      {block.error().describe()});
    return;
  }
  kept_ = {printable(access_.session.controllerName), *block, {}};
  if (const auto file = backup_.keep(access_.session.controllerName, *block); !file)
    mind(file.error());
  if (const auto noted = note(); !noted) mind(noted.error());
}

Result<std::unique_ptr<KeptCalibration>> KeptCalibration::leftBehind(const Access& access,
                                                                     Backup backup) {
  const std::string name = noteName(access.session.controllerName);
  std::error_code failed;
  if (!fs::exists(fs::symlink_status(backup.folder() / name, failed)))
    return std::unique_ptr<KeptCalibration>();
  const auto folder = OwnFolder::open(backup.folder());
  if (!folder) return tl::unexpected(folder.error());
  const auto text = folder->read(name, largestNote);
  if (!text) return tl::unexpected(text.error());
  auto unchecked = parseUnchecked(*text, (backup.folder() / name).string());
  if (!unchecked) return tl::unexpected(unchecked.error());
  // Two names can become one file name.
  if (unchecked->controller != printable(access.session.controllerName))
    return std::unique_ptr<KeptCalibration>();
  return std::make_unique<KeptCalibration>(access, std::move(backup), std::move(*unchecked));
}

void KeptCalibration::mind(const FileError& error) {
  if (!trouble_) trouble_ = error;
}

Status KeptCalibration::note() const {
  const auto folder = OwnFolder::openOrMake(backup_.folder());
  if (!folder) return tl::unexpected(folder.error());
  return folder->write(noteName(access_.session.controllerName), uncheckedText(kept_));
}

Status KeptCalibration::settle() {
  if (!whyNone_.empty()) return {};
  return dropUnchecked(access_.session.controllerName, backup_);
}

std::optional<WordError> KeptCalibration::writeBack(const ParameterBlock& now) {
  if (!kept_.after) {
    // Otherwise nobody could tell after a power cut what is in the controller.
    kept_.after = now;
    if (const auto noted = note(); !noted) mind(noted.error());
  }
  const WriteReport report = touch::putBack(access_, backup_, wordsOf(kept_.before));
  if (report.journalError) mind(*report.journalError);
  return report.error;
}

Notice KeptCalibration::putBack() {
  std::optional<WordError> error;
  auto now = readBlock(access_);
  for (int attempt = 0; attempt < putBackAttempts && now != kept_.before; ++attempt) {
    if (now) error = writeBack(*now);
    if (!now || error) resetQuietly(access_);
    now = readBlock(access_);
  }
  std::string text = touch::describe(compare(now));
  const bool isBack = now == kept_.before;
  if (isBack) {
    if (const auto settled = settle(); !settled) mind(settled.error());
  } else if (error) {
    text += ' ' + error->describe() + '.';
  }
  if (trouble_) text += ' ' + trouble_->describe() + '.';
  return isBack ? Notice::success(text) : Notice::error(text);
}

KeptCalibration::InForce KeptCalibration::inForce() const {
  return compare(readBlock(access_));
}

KeptCalibration::InForce KeptCalibration::compare(
    const Result<ParameterBlock, WordError>& block) const {
  if (!block) return InForce::unknown;
  if (*block == kept_.before) return InForce::before;
  // As long as nothing has been put back, what is not the old one is what the controller has made
  // of the new one.
  return !kept_.after || *block == *kept_.after ? InForce::after : InForce::neither;
}

std::string describe(KeptCalibration::InForce inForce) {
  switch (inForce) {
    case KeptCalibration::InForce::before:
      return say("parameters", "The calibration from before is in force.");
    case KeptCalibration::InForce::after:
      return say("parameters", "The new calibration is in force.");
    case KeptCalibration::InForce::neither:
      return say("parameters", "The controller holds words of both calibrations.");
    case KeptCalibration::InForce::unknown:
      break;
  }
  return say("parameters", "Which calibration is in force cannot be read.");
}

std::unique_ptr<WayBack> wayBackLeft(const Access& access, const Backup& backup) {
  auto left = KeptCalibration::leftBehind(access, backup);
  if (left && *left) return std::move(*left);
  const std::string why = left ? say("parameters",
                                     "No calibration from before is kept. To be able to go back, "
                                     "switch on \"Check after "
                                     "calibrating\" before you calibrate.")
                               : left.error().describe() + '.';
  return std::make_unique<KeptCalibration>(access, backup, why);
}

Status dropUnchecked(const std::string& controller, const Backup& backup) {
  std::error_code failed;
  if (!fs::exists(fs::symlink_status(backup.folder() / noteName(controller), failed))) return {};
  const auto folder = OwnFolder::open(backup.folder());
  if (!folder) return tl::unexpected(folder.error());
  return folder->remove(noteName(controller));
}

std::optional<Notice> settleUnchecked(const Access& access, Prompt& prompt, const Backup& backup) {
  const auto left = KeptCalibration::leftBehind(access, backup);
  if (!left) return Notice::error(left.error().describe());
  if (*left == nullptr) return std::nullopt;
  KeptCalibration& kept = **left;
  const auto broken = say("parameters", "The last check of the calibration broke off.");
  const auto inForce = kept.inForce();
  const std::string found = broken + ' ' + describe(inForce);
  if (inForce == KeptCalibration::InForce::unknown) return Notice::error(found);
  if (inForce == KeptCalibration::InForce::before) {
    const auto settled = kept.settle();
    return settled ? Notice(found) : Notice::error(settled.error().describe());
  }
  const auto question = found + ' ' + say("parameters", "Put back the calibration from before?");
  switch (prompt.choose(question, say("parameters", "Put back"), say("parameters", "Keep"))) {
    case Answer::yes:
      return kept.putBack();
    case Answer::no:
      if (const auto settled = kept.settle(); !settled)
        return Notice::error(settled.error().describe());
      return Notice(say("parameters", "The new calibration is kept."));
    case Answer::none:
      break;
  }
  return Notice(found);
}

}  // namespace touch
