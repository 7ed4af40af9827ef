#include "console/parameters/parameter_block.h"

#include "console/parameters/backup.h"
#include "support/prompt.h"
#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

std::string addressesOf(std::span<const WordChange> changes) {
  std::string text;
  for (const WordChange& change : changes) {
    text += (text.empty() ? "" : ", ") + hexByte(change.address);
  }
  return text.empty() ? say("parameters", "none") : text;
}

std::vector<WordChange> changesIn(const ParameterBlock& block, std::span<const WordValue> wanted) {
  std::vector<WordChange> changes;
  for (const auto& [address, word] : wanted) {
    if (address < block.size() && block[address] != word) {
      changes.push_back({address, block[address], word});
    }
  }
  return changes;
}

BlockWrite writeConfirmed(const Access& access, Prompt& prompt, const Backup& backup,
                          std::span<const WordValue> wanted) {
  BlockWrite result;
  const auto block = readBlock(access);
  if (!block) {
    prompt.message(block.error().describe() + ". " + say("parameters", "Nothing was written."));
    result.end = WriteEnd::unreadable;
    return result;
  }
  const auto changes = changesIn(*block, wanted);
  if (changes.empty()) {
    prompt.message(
        say("parameters", "The controller holds these words already. Nothing was written."));
    result.end = WriteEnd::nothingToWrite;
    return result;
  }
  const KeptBlock kept = keepBlock(access, prompt, backup, block);
  if (!kept.goOn) return result;
  result.kept = kept.file;

  result.report = writeChanges(access, backup, changes);
  if (result.report.complete()) {
    result.end = WriteEnd::done;
    prompt.message(access.session.messages[Message::writeOk]);
  } else {
    result.end = WriteEnd::brokenOff;
    // Left without an answer they go back: half a block is what nobody has asked for.
    if (prompt.ask(result.report.describe() + ". " +
                   say("parameters", "Put the old words back?")) != Answer::no) {
      result.putBack = putBack(access, backup, result.report.oldWords());
      prompt.message(result.putBack->complete()
                         ? say("parameters", "The old words are back.")
                         : say("parameters", "The old words are not all back.") + ' ' +
                               result.putBack->describe() + '.');
      if (!result.report.journalError) tellOfJournal(prompt, *result.putBack);
    }
  }
  tellOfJournal(prompt, result.report);
  return result;
}

}  // namespace

Result<ParameterBlock, WordError> readBlock(const Access& access) {
  ParameterBlock block;
  for (std::size_t address = 0; address < block.size(); ++address) {
    const auto word = readWord(access, static_cast<std::uint8_t>(address));
    if (!word) return tl::unexpected(word.error());
    block[address] = *word;
  }
  return block;
}

std::vector<WordValue> wordsOf(const ParameterBlock& block) {
  std::vector<WordValue> words;
  for (std::size_t address = 0; address < block.size(); ++address) {
    words.push_back({static_cast<std::uint8_t>(address), block[address]});
  }
  return words;
}

std::vector<WordValue> WriteReport::oldWords() const {
  std::vector<WordValue> old;
  for (const WordChange& change : written)
    old.push_back({change.address, change.before});
  if (brokenOffAt) old.push_back({brokenOffAt->address, brokenOffAt->before});
  return old;
}

std::string WriteReport::describe() const {
  std::string text = filled(say("parameters", "Written: %1"), {addressesOf(written)});
  if (error) text += ". " + error->describe();
  return text;
}

Result<std::vector<WordChange>, WordError> changesTo(const Access& access,
                                                     std::span<const WordValue> wanted) {
  std::vector<WordChange> changes;
  for (const auto& [address, word] : wanted) {
    const auto held = readWord(access, address);
    if (!held) return tl::unexpected(held.error());
    if (*held != word) changes.push_back({address, *held, word});
  }
  return changes;
}

WriteReport writeChanges(const Access& access, const Backup& backup,
                         std::span<const WordChange> changes) {
  WriteReport report;
  const auto note = [&](const WordChange& change, Backup::Stage stage) {
    const auto noted = backup.note(access.session.controllerName, change, stage);
    // The write goes on: half a block in the controller is worse than a gap in the journal.
    if (!noted && !report.journalError) report.journalError = noted.error();
  };
  for (const WordChange& change : changes) {
    note(change, Backup::Stage::begun);
    const auto written = writeWord(access, {change.address, change.after});
    note(change, written ? Backup::Stage::written : Backup::Stage::failed);
    if (!written) {
      report.error = written.error();
      report.brokenOffAt = change;
      break;
    }
    report.written.push_back(change);
  }
  return report;
}

void tellOfJournal(Prompt& prompt, const WriteReport& report) {
  if (!report.journalError) return;
  prompt.message(filled(say("parameters", "The journal is not complete: %1"),
                        {report.journalError->describe()}));
}

WriteReport putBack(const Access& access, const Backup& backup, std::span<const WordValue> old) {
  WriteReport whole;
  // One after the other: a word that can no longer be read must not keep those before it from
  // coming back.
  for (const WordValue& value : old) {
    const auto change = changesTo(access, std::span(&value, 1));
    if (!change) {
      whole.error = change.error();
      break;
    }
    WriteReport one = writeChanges(access, backup, *change);
    whole.written.insert(whole.written.end(), one.written.begin(), one.written.end());
    if (!whole.journalError) whole.journalError = one.journalError;
    if (!one.complete()) {
      whole.brokenOffAt = one.brokenOffAt;
      whole.error = one.error;
      break;
    }
  }
  return whole;
}

Result<std::filesystem::path, NotKept> keep(const Access& access, const Backup& backup,
                                            const Result<ParameterBlock, WordError>& block) {
  if (!block) return tl::unexpected(NotKept{block.error().describe()});
  const auto file = backup.keep(access.session.controllerName, *block);
  if (!file) return tl::unexpected(NotKept{file.error().describe()});
  return *file;
}

KeptBlock keepBlock(const Access& access, Prompt& prompt, const Backup& backup,
                    const Result<ParameterBlock, WordError>& block) {
  const auto file = keep(access, backup, block);
  if (file) return {true, *file};
  return {
      prompt.goWithoutWayBack(filled(
          say("parameters", "The parameter block cannot be kept. %1. Go on without a way back?"),
          {file.error().why})),
      {}};
}

BlockWrite writeBlock(const Access& access, Prompt& prompt, const Backup& backup,
                      std::span<const WordValue> wanted) {
  if (!prompt.confirm(access.session.messages[Message::areYouSure])) return {};
  return writeConfirmed(access, prompt, backup, wanted);
}

BlockWrite undoBlock(const Access& access, Prompt& prompt, const Backup& backup,
                     std::span<const WordValue> old) {
  return writeConfirmed(access, prompt, backup, old);
}

}  // namespace touch
