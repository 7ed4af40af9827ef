#include "console/parameter_editor.h"

#include "console/vrq_file.h"
#include "core/hex.h"
#include "core/language.h"
#include "core/prompt.h"

namespace touch {

namespace {

std::string unreadable(const WordError& error) {
  return say("console", "The parameters cannot be read.") + ' ' + error.describe();
}

}  // namespace

void ParameterEditor::forget() {
  const NumberBase base = table_.base();
  table_ = ParameterTable();
  table_.setBase(base);
  undo_.clear();
}

void ParameterEditor::calibrated() {
  table_.expire();
  undo_.clear();
}

std::string ParameterEditor::read() {
  const auto block = readBlock(access_);
  if (!block) return unreadable(block.error());
  table_.take(*block);
  return say("console", "The parameters are read.");
}

std::string ParameterEditor::readAgain() {
  const auto block = readBlock(access_);
  if (block) {
    table_.take(*block);
    return {};
  }
  table_.forgetOld();
  return ' ' + unreadable(block.error());
}

std::string ParameterEditor::outcome(const BlockWrite& write, const std::string& done) const {
  switch (write.end) {
    case WriteEnd::done:
      return done;
    case WriteEnd::nothingToWrite:
      return say("console", "The controller holds these parameters already.");
    case WriteEnd::declined:
      return say("console", "Nothing was written.");
    case WriteEnd::unreadable:
      return say("console", "Nothing was written: the controller cannot be read.");
    case WriteEnd::brokenOff:
      break;
  }
  return say("console", "The write broke off.") + ' ' + write.report.describe();
}

std::string ParameterEditor::write() {
  const auto changes = table_.changes();
  if (!changes) return changes.error();
  if (changes->empty()) return say("console", "No word is changed.");
  const BlockWrite write = writeBlock(access_, prompt_, backup_, *changes);
  const bool isPutBack = write.putBack && write.putBack->complete();
  if (write.end == WriteEnd::done || (write.end == WriteEnd::brokenOff && !isPutBack)) {
    undo_ = write.report.oldWords();
    undoesDefaults_ = false;
  }
  std::string text =
      outcome(write, say("console", "The parameters are written; Undo takes them back."));
  // What the user typed stays when nothing was written.
  if (write.end == WriteEnd::done || write.end == WriteEnd::brokenOff) text += readAgain();
  return text;
}

std::string ParameterEditor::undo() {
  const BlockWrite write = undoBlock(access_, prompt_, backup_, undo_);
  if (write.end == WriteEnd::done || write.end == WriteEnd::nothingToWrite) undo_.clear();
  return outcome(write, say("console", "The parameters are as they were before.")) + readAgain();
}

std::string ParameterEditor::load(const std::filesystem::path& file) {
  const auto block = loadVrq(file);
  if (!block) return block.error().describe();
  table_.load(*block);
  return filled(say("console", "Loaded %1; Write sends it to the controller."),
                {file.filename().string()});
}

std::string ParameterEditor::save(const std::filesystem::path& file) const {
  const auto block = table_.block();
  if (!block) return block.error();
  const auto error = saveVrq(file, *block);
  return error ? error->describe() : filled(say("console", "Saved %1"), {file.string()});
}

std::string ParameterEditor::compare(const std::filesystem::path& file) const {
  const auto block = loadVrq(file);
  if (!block) return block.error().describe();
  const auto differences = table_.compare(*block);
  if (differences.empty())
    return filled(say("console", "The table and %1 are the same."), {file.filename().string()});
  std::string text;
  for (const WordDifference& difference : differences) {
    text += filled(say("console", "Word %1: here %2, in the file %3"),
                   {hexByte(difference.address),
                    difference.here ? wordText(*difference.here) : say("console", "nothing"),
                    wordText(difference.there)}) +
            '\n';
  }
  text.pop_back();
  prompt_.message(text, say("console", "Compare"));
  return filled(say("console", "%1 of 8 words differ from %2."),
                {std::to_string(differences.size()), file.filename().string()});
}

std::string ParameterEditor::restoreDefaults() {
  const DefaultsRestored outcome = defaults(access_, prompt_, backup_);
  table_.expire();
  // A second time it is the defaults that are replaced: the way back stays the one of the first.
  if (!canUndo() || !undoesDefaults_) {
    undo_ = outcome.before ? wordsOf(*outcome.before) : std::vector<WordValue>();
    undoesDefaults_ = true;
  }
  std::string text =
      outcome.restored
          ? say("console", "Defaults restored; press Read to see them.")
          : say("console", "The controller did not say that its defaults are restored.");
  if (canUndo()) text += ' ' + say("console", "Undo puts back the parameters from before.");
  if (outcome.whyNoBackup.empty()) return text;
  return text + ' ' + filled(say("console", "There is no backup: %1."), {outcome.whyNoBackup});
}

std::string ParameterEditor::reset() {
  const bool done = resetController(access_, prompt_);
  table_.expire();
  return done ? say("console", "The controller is reset.")
              : say("console", "The controller did not acknowledge the reset.");
}

std::optional<ParameterWord> ParameterEditor::parameter01() const {
  if (!table_.old()) return std::nullopt;
  return (*table_.old())[1];
}

}  // namespace touch
