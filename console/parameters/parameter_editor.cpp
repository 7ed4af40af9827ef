#include "console/parameters/parameter_editor.h"

#include "console/parameters/vrq_file.h"
#include "support/prompt.h"
#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

std::string unreadable(const WordError& error) {
  return say("parameters", "The parameters cannot be read.") + ' ' + error.describe();
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

Notice ParameterEditor::read() {
  const auto block = readBlock(access_);
  if (!block) return Notice::error(unreadable(block.error()));
  table_.take(*block);
  return Notice::success(say("parameters", "The parameters are read."));
}

Notice ParameterEditor::andReadAgain(Notice outcome) {
  if (const auto block = readBlock(access_)) {
    table_.take(*block);
    return outcome;
  } else {
    table_.forgetOld();
    return Notice::error(outcome.text + ' ' + unreadable(block.error()));
  }
}

Notice ParameterEditor::outcome(const BlockWrite& write, const std::string& done) const {
  switch (write.end) {
    case WriteEnd::done:
      return Notice::success(done);
    case WriteEnd::nothingToWrite:
      return say("parameters", "No change: the controller already has these values.");
    case WriteEnd::declined:
      return say("parameters", "Nothing was written.");
    case WriteEnd::unreadable:
      return Notice::error(
          say("parameters", "Nothing was written: the controller cannot be read."));
    case WriteEnd::brokenOff:
      break;
  }
  return Notice::error(say("parameters", "The write broke off.") + ' ' + write.report.describe());
}

Notice ParameterEditor::write() {
  const auto changes = table_.changes();
  if (!changes) return Notice::error(changes.error());
  if (changes->empty()) return say("parameters", "Nothing to write: no value has been changed.");
  const BlockWrite write = writeBlock(access_, prompt_, backup_, *changes);
  const bool isPutBack = write.putBack && write.putBack->complete();
  if (write.end == WriteEnd::done || (write.end == WriteEnd::brokenOff && !isPutBack)) {
    undo_ = write.report.oldWords();
    undoesDefaults_ = false;
  }
  Notice status =
      outcome(write, say("parameters", "The parameters are written; Undo takes them back."));
  // What the user typed stays when nothing was written.
  if (write.end != WriteEnd::done && write.end != WriteEnd::brokenOff) return status;
  return andReadAgain(status);
}

Notice ParameterEditor::undo() {
  const BlockWrite write = undoBlock(access_, prompt_, backup_, undo_);
  if (write.end == WriteEnd::done || write.end == WriteEnd::nothingToWrite) undo_.clear();
  return andReadAgain(outcome(write, say("parameters", "The parameters are as they were before.")));
}

Notice ParameterEditor::load(const std::filesystem::path& file) {
  const auto block = loadVrq(file);
  if (!block) return Notice::error(block.error().describe());
  table_.load(*block);
  return Notice::success(filled(say("parameters", "Loaded %1; Write sends it to the controller."),
                                {file.filename().string()}));
}

Notice ParameterEditor::save(const std::filesystem::path& file) const {
  const auto block = table_.block();
  if (!block) return Notice::error(block.error());
  if (const auto saved = saveVrq(file, *block); !saved)
    return Notice::error(saved.error().describe());
  return Notice::success(filled(say("parameters", "Saved %1"), {file.string()}));
}

Notice ParameterEditor::compare(const std::filesystem::path& file) const {
  const auto block = loadVrq(file);
  if (!block) return Notice::error(block.error().describe());
  const auto differences = table_.compare(*block);
  if (differences.empty()) {
    return Notice::success(
        filled(say("parameters", "The table and %1 are the same."), {file.filename().string()}));
  }
  std::string text;
  for (const WordDifference& difference : differences) {
    text += filled(say("parameters", "Word %1: here %2, in the file %3"),
                   {hexByte(difference.address),
                    difference.here ? wordText(*difference.here) : say("parameters", "nothing"),
                    wordText(difference.there)}) +
            '\n';
  }
  text.pop_back();
  prompt_.message(text, say("parameters", "Compare"));
  return filled(say("parameters", "%1 of 8 words differ from %2."),
                {std::to_string(differences.size()), file.filename().string()});
}

Notice ParameterEditor::restoreDefaults() {
  const DefaultsRestored outcome = defaults(access_, prompt_, backup_);
  table_.expire();
  // A second time it is the defaults that are replaced: the way back stays the one of the first.
  if (!canUndo() || !undoesDefaults_) {
    undo_ = outcome.before ? wordsOf(*outcome.before) : std::vector<WordValue>();
    undoesDefaults_ = true;
  }
  Notice status =
      outcome.restored
          ? Notice::success(say("parameters", "Defaults restored; press Read to see them."))
          : Notice::error(
                say("parameters", "The controller did not say that its defaults are restored."));
  if (canUndo())
    status.text += ' ' + say("parameters", "Undo puts back the parameters from before.");
  if (!outcome.whyNoBackup.empty())
    status.text +=
        ' ' + filled(say("parameters", "There is no backup: %1."), {outcome.whyNoBackup});
  return status;
}

Notice ParameterEditor::reset() {
  const bool done = resetController(access_, prompt_);
  table_.expire();
  return done ? Notice::success(say("parameters", "The controller is reset."))
              : Notice::error(say("parameters", "The controller did not acknowledge the reset."));
}

std::optional<ParameterWord> ParameterEditor::parameter01() const {
  if (!table_.old()) return std::nullopt;
  return (*table_.old())[1];
}

}  // namespace touch
